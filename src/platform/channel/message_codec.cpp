#include "platform/channel/message_codec.h"

#include "platform/channel/frame.h"
#include "platform/channel/object_reader.h"
#include "platform/channel/object_writer.h"
#include "platform/channel/row_columns.h"
#include "platform/channel/rows_sender.h"
#include "platform/wbem/wbem_context.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <utility>

namespace quenvolta
{

namespace
{

constexpr qsizetype kRequestIdSize = 16;

void EnterMessage(CborWriter* out, MessageKind kind, qsizetype length)
{
    out->EnterArray(length);
    out->Integer(static_cast<std::uint8_t>(kind));
}

// Contexts have no class that knows their types.
struct ContextValueWriter {
    CborWriter* out;

    void operator()(std::monostate) const { out->Null(); }
    void operator()(bool value) const { out->Bool(value); }
    void operator()(std::int32_t value) const { out->Integer(value); }
    void operator()(std::uint32_t value) const { out->Integer(value); }
    void operator()(const QString& value) const { out->Text(value); }
    void operator()(const QStringList& value) const { ObjectWriter(out).Value(CimType::StringArray, value); }
    void operator()(const WbemObjectPtr&) const { out->Fail(); }
    void operator()(const QList<WbemObjectPtr>&) const { out->Fail(); }
};

void WriteContext(CborWriter* out, const WbemContextPtr& context)
{
    QStringList names;
    if (context && Failed(context->GetNames(0, &names)))
        out->Fail();
    if (names.size() > kMaxNamedValues)
        out->Fail();
    out->EnterMap(names.size());
    for (const QString& name : std::as_const(names)) {
        Variant value;
        if (Failed(context->GetValue(name, 0, &value)))
            out->Fail();
        out->Text(name);
        std::visit(ContextValueWriter{out}, value);
    }
    out->Leave();
}

struct MessageWriter {
    CborWriter* out;

    void operator()(const HelloMessage& hello) const
    {
        EnterMessage(out, MessageKind::Hello, 3);
        out->Integer(hello.protocolVersion);
        if (hello.about.size() > kMaxNamedValues)
            out->Fail();
        out->EnterMap(hello.about.size());
        for (auto each = hello.about.cbegin(); each != hello.about.cend(); ++each) {
            out->Text(each.key());
            out->Text(each.value());
        }
        out->Leave();
        out->Leave();
    }

    void operator()(const CallMessage& call) const
    {
        EnterMessage(out, MessageKind::Call, 9);
        out->Integer(call.callId);
        out->Bytes(call.requestId.toRfc4122());
        out->Integer(static_cast<std::uint8_t>(call.operation));
        out->Text(call.namespaceName);
        out->Text(call.target);
        out->Text(call.method);
        ObjectWriter(out).Object(call.input);
        WriteContext(out, call.context);
        out->Leave();
    }

    void operator()(const RowsMessage& message) const
    {
        EnterMessage(out, MessageKind::Rows, kRowsMessageLength);
        WriteRowsHead(out, message.callId, message.parameter, *message.shape);
        RowColumns columns(*message.shape);
        const qsizetype length = message.shape->properties.size();
        if (length == 0)
            out->Fail();
        for (qsizetype first = 0; first < message.values.size() && out->Ok(); first += length) {
            const std::span values(message.values.constData() + first,
                                   static_cast<std::size_t>(std::min(length, message.values.size() - first)));
            if (!columns.Add(values, out->Items(), out->Data().size()))
                out->Fail();
        }
        columns.Write(out);
        out->Leave();
    }

    void operator()(const ResultMessage& result) const
    {
        ObjectWriter writer(out);
        EnterMessage(out, MessageKind::Result, 5);
        out->Integer(result.callId);
        out->Integer(result.code);
        writer.Object(result.object);
        if (const QString* const text = std::get_if<QString>(&result.error))
            out->Text(*text);
        else if (const WbemObjectPtr* const object = std::get_if<WbemObjectPtr>(&result.error))
            writer.Object(*object);
        else
            out->Null();
        out->Leave();
    }

    void operator()(const StopMessage& stop) const
    {
        EnterMessage(out, MessageKind::Stop, 2);
        out->Integer(stop.callId);
        out->Leave();
    }
};

std::uint32_t TakeUint32(CborReader* in)
{
    return static_cast<std::uint32_t>(in->TakeInteger(0, std::numeric_limits<std::uint32_t>::max()));
}

void ExpectLength(CborReader* in, qsizetype length, qsizetype expected)
{
    if (length != expected)
        in->Fail(ChannelText::WrongLength);
}

Variant TakeContextValue(CborReader* in, ShapeCache* shapes)
{
    if (in->TakeNull())
        return {};
    switch (in->NextType()) {
    case QCborStreamReader::SimpleType:
        return in->TakeBool();
    case QCborStreamReader::String:
        return in->TakeText();
    case QCborStreamReader::Array:
        return ObjectReader(in, shapes).Texts();
    default:
        break;
    }
    const std::int64_t number =
        in->TakeInteger(std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::uint32_t>::max());
    if (number <= std::numeric_limits<std::int32_t>::max())
        return static_cast<std::int32_t>(number);
    return static_cast<std::uint32_t>(number);
}

WbemContextPtr TakeContext(CborReader* in, ShapeCache* shapes)
{
    const qsizetype count = in->EnterMap(kMaxNamedValues);
    WbemContextPtr context = count > 0 ? CreateWbemContext() : nullptr;
    for (qsizetype i = 0; i < count && in->Ok(); ++i) {
        const QString name = in->TakeText();
        const Variant value = TakeContextValue(in, shapes);
        Variant known;
        if (Succeeded(context->GetValue(name, 0, &known)))
            in->Fail(ChannelText::NameTwice);
        if (Failed(context->SetValue(name, 0, value)))
            in->Fail(ChannelText::OutOfRange);
    }
    in->Leave();
    return context;
}

Message TakeHello(CborReader* in, ShapeCache*, qsizetype length)
{
    HelloMessage hello;
    hello.protocolVersion = static_cast<int>(in->TakeInteger(0, std::numeric_limits<int>::max()));
    if (!in->Ok() || hello.protocolVersion != kProtocolVersion)
        return hello;
    ExpectLength(in, length, 3);
    const qsizetype count = in->EnterMap(kMaxNamedValues);
    for (qsizetype i = 0; i < count && in->Ok(); ++i) {
        const QString name = in->TakeText();
        if (hello.about.contains(name))
            in->Fail(ChannelText::NameTwice);
        hello.about.insert(name, in->TakeText());
    }
    in->Leave();
    return hello;
}

Message TakeCall(CborReader* in, ShapeCache* shapes, qsizetype length)
{
    ExpectLength(in, length, 9);
    CallMessage call;
    call.callId = TakeUint32(in);
    call.requestId = QUuid::fromRfc4122(in->TakeBytes(kRequestIdSize));
    call.operation = static_cast<Operation>(in->TakeInteger(0, static_cast<int>(Operation::ExecMethod)));
    call.namespaceName = in->TakeText();
    call.target = in->TakeText();
    call.method = in->TakeText();
    call.input = ObjectReader(in, shapes).OptionalObject();
    call.context = TakeContext(in, shapes);
    return call;
}

Message TakeRows(CborReader* in, ShapeCache* shapes, qsizetype length)
{
    ExpectLength(in, length, kRowsMessageLength);
    ObjectReader reader(in, shapes);
    RowsMessage message;
    message.callId = TakeUint32(in);
    if (!in->TakeNull())
        message.parameter = in->TakeText();
    message.shape = reader.Shape();
    message.values = reader.Rows(*message.shape);
    return message;
}

Message TakeResult(CborReader* in, ShapeCache* shapes, qsizetype length)
{
    ExpectLength(in, length, 5);
    ObjectReader reader(in, shapes);
    ResultMessage result;
    result.callId = TakeUint32(in);
    result.code =
        static_cast<HRESULT>(in->TakeInteger(std::numeric_limits<HRESULT>::min(), std::numeric_limits<HRESULT>::max()));
    result.object = reader.OptionalObject();
    if (in->TakeNull())
        return result;
    if (in->NextType() == QCborStreamReader::String)
        result.error = in->TakeText();
    else
        result.error = reader.ErrorObject();
    return result;
}

Message TakeStop(CborReader* in, ShapeCache*, qsizetype length)
{
    ExpectLength(in, length, 2);
    return StopMessage{TakeUint32(in)};
}

} // namespace

QByteArray Encode(const Message& message)
{
    CborWriter out;
    std::visit(MessageWriter{&out}, message);
    return out.Ok() ? MakeFrame(out.Data()) : QByteArray{};
}

std::variant<Message, DecodeFailure> Decode(QByteArrayView frame, ShapeCache* shapes)
{
    using Take = Message (*)(CborReader*, ShapeCache*, qsizetype);
    static constexpr std::array<Take, std::variant_size_v<Message>> kTake{TakeHello, TakeCall, TakeRows, TakeResult,
                                                                          TakeStop};
    CborReader in(frame);
    const qsizetype length = in.EnterArray();
    const auto kind = static_cast<std::size_t>(in.TakeInteger(0, std::numeric_limits<std::int32_t>::max()));
    if (in.Ok() && kind >= kTake.size())
        in.Fail(ChannelText::UnknownKind);
    if (!in.Ok())
        return DecodeFailure{ChannelTextOf(in.Fault())};
    Message message = kTake.at(kind)(&in, shapes, length);
    const auto* const hello = std::get_if<HelloMessage>(&message);
    // What another version's hello goes on with is its own business.
    if (!hello || hello->protocolVersion == kProtocolVersion) {
        in.Leave();
        in.ExpectEnd();
    }
    if (!in.Ok())
        return DecodeFailure{ChannelTextOf(in.Fault())};
    return message;
}

std::variant<Message, DecodeFailure> Decode(QByteArrayView frame)
{
    ShapeCache shapes;
    return Decode(frame, &shapes);
}

} // namespace quenvolta
