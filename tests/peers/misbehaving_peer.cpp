// A provider for tests of the channel: `misbehaving_peer --stdio MODE`. In the mode "server" it behaves; in each of the
// others it fails in one way. Writes its process id to the file named by PEER_PID_FILE.

#include "platform/channel/frame.h"
#include "platform/channel/frame_reader.h"
#include "platform/channel/message_codec.h"
#include "platform/channel/rows_sender.h"
#include "platform/wbem/class_table.h"
#include "platform/wbem/wbem_object.h"

#include <QFile>
#include <QHash>

#include <array>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <poll.h>
#include <unistd.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

void WriteAll(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (count <= 0)
            std::exit(EXIT_FAILURE);
        bytes = bytes.sliced(count);
    }
}

void Send(const Message& message)
{
    WriteAll(STDOUT_FILENO, Encode(message));
}

void SendHello(int version = kProtocolVersion)
{
    WriteAll(STDOUT_FILENO, kMagicLine);
    Send(HelloMessage{version, {}});
}

/// What the client sends.
class Input
{
public:
    /// The next message; ends the program at the end of the input.
    Message Next()
    {
        for (;;) {
            if (const std::optional<QByteArrayView> frame = m_reader.Next())
                return std::get<Message>(Decode(*frame));
            std::array<char, 4096> buffer;
            const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
            if (count <= 0)
                std::exit(EXIT_SUCCESS);
            m_reader.Append(QByteArrayView(buffer.data(), count));
        }
    }

    CallMessage NextCall()
    {
        for (;;) {
            const Message message = Next();
            if (const auto* const call = std::get_if<CallMessage>(&message))
                return *call;
        }
    }

    static bool IsWaiting()
    {
        pollfd polled{STDIN_FILENO, POLLIN, 0};
        return ::poll(&polled, 1, 0) > 0;
    }

private:
    FrameReader m_reader{0};
};

ClassDefinitionPtr Shape(const QString& name, const QList<PropertyDefinition>& properties)
{
    auto shape = std::make_shared<ClassDefinition>();
    shape->name = name;
    shape->properties = properties;
    return shape;
}

const ClassDefinitionPtr& ItemShape()
{
    static const ClassDefinitionPtr kShape =
        Shape(u"Item"_s, {{u"Name"_s, CimType::String, true}, {u"Index"_s, CimType::Uint32, false}});
    return kShape;
}

void SendItems(std::uint32_t callId, const std::optional<QString>& parameter, int count)
{
    RowsSender sender(callId, parameter, ItemShape(), [](const QByteArray& frame) { WriteAll(STDOUT_FILENO, frame); });
    for (int i = 0; i < count; ++i)
        sender.Add({u"item %1"_s.arg(i), static_cast<std::uint32_t>(i)});
    sender.Flush();
}

void AnswerGetObject(const CallMessage& call)
{
    const ClassTable table(u"Quenvolta"_s, {3, 3});
    if (const ClassDefinitionPtr definition = table.Find(call.target)) {
        Send(ResultMessage{call.callId, S_OK, std::make_shared<WbemClassDefinitionObject>(definition), {}});
    } else if (call.target == "missing"_L1) {
        Send(ResultMessage{call.callId, WBEM_E_NOT_FOUND, nullptr, u"There is no such thing"_s});
    } else if (call.target == "refused"_L1) {
        const auto error = std::make_shared<WbemErrorObject>(table.Find(u"Quenvolta_ExtendedError"_s));
        error->Put(u"Description"_s, u"The server says no"_s);
        Send(ResultMessage{call.callId, WBEM_E_FAILED, nullptr, WbemObjectPtr(error)});
    } else if (call.target == "nothing"_L1) {
        Send(ResultMessage{call.callId, S_OK, nullptr, {}});
    } else {
        const auto echo = std::make_shared<WbemObject>(
            Shape(u"Echo"_s, {{u"Path"_s, CimType::String, true},
                              {u"Namespace"_s, CimType::String, false},
                              {u"Request"_s, CimType::String, false},
                              {u"ActivityId"_s, CimType::String, false}}),
            QList<Variant>{call.target, call.namespaceName, call.requestId.toString(), Variant{}});
        Variant activity;
        if (call.context && Succeeded(call.context->GetValue(u"ActivityId"_s, 0, &activity)))
            echo->Put(u"ActivityId"_s, activity);
        Send(ResultMessage{call.callId, S_OK, echo, {}});
    }
}

void AnswerEnumeration(const CallMessage& call)
{
    if (call.target == "Endless"_L1) {
        while (!Input::IsWaiting())
            SendItems(call.callId, std::nullopt, 1000);
        Send(ResultMessage{call.callId, WBEM_E_CALL_CANCELLED, nullptr, {}});
        return;
    }
    QString count = call.target;
    const bool failing = count.endsWith(u'!');
    if (failing)
        count.chop(1);
    SendItems(call.callId, std::nullopt, count.toInt());
    Send(ResultMessage{call.callId, failing ? WBEM_E_FAILED : S_OK, nullptr, {}});
}

void AnswerMethod(const CallMessage& call)
{
    Variant count;
    if (call.input)
        call.input->Get(u"Count"_s, &count);
    const auto* const number = std::get_if<std::uint32_t>(&count);
    const ClassDefinitionPtr out = Shape(kParametersClass.toString(), {{u"Items"_s, CimType::ObjectArray, false},
                                                                       {u"ReturnValue"_s, CimType::Uint32, false}});
    if (number) {
        SendItems(call.callId, u"Items"_s, static_cast<int>(*number));
        // The last one is of another class.
        const ClassDefinitionPtr last = Shape(u"Last"_s, {{u"Name"_s, CimType::String, true}});
        Send(RowsMessage{call.callId, u"Items"_s, last, {QList<Variant>{u"end"_s}}});
    }
    Send(ResultMessage{
        call.callId, S_OK, std::make_shared<WbemObject>(out, QList<Variant>{Variant{}, std::uint32_t{7}}), {}});
}

void Answer(const CallMessage& call)
{
    switch (call.operation) {
    case Operation::OpenNamespace:
        Send(ResultMessage{
            call.callId, call.namespaceName == "Missing"_L1 ? WBEM_E_INVALID_NAMESPACE : S_OK, nullptr, {}});
        break;
    case Operation::GetObject:
        AnswerGetObject(call);
        break;
    case Operation::CreateInstanceEnum:
        AnswerEnumeration(call);
        break;
    case Operation::ExecMethod:
        AnswerMethod(call);
        break;
    }
}

/// Answers calls until one of `operation` comes, and hands that out.
CallMessage ServeUntil(Input* input, Operation operation)
{
    for (;;) {
        const CallMessage call = input->NextCall();
        if (call.operation == operation)
            return call;
        Answer(call);
    }
}

void Serve()
{
    Input input;
    SendHello();
    for (;;)
        Answer(input.NextCall());
}

void WaitForEndOfInput()
{
    Input input;
    for (;;)
        input.Next();
}

[[noreturn]] void Die()
{
    ::raise(SIGKILL);
    std::abort();
}

/// A mode that behaves until the first GetObject and sends `bytes` in answer.
std::function<void()> AnswersWith(QByteArray bytes)
{
    return [bytes] {
        Input input;
        SendHello();
        ServeUntil(&input, Operation::GetObject);
        WriteAll(STDOUT_FILENO, bytes);
        WaitForEndOfInput();
    };
}

/// An answer whose object holds `depth` objects inside each other.
QByteArray DeepAnswer(int depth)
{
    const QByteArray object = QByteArray::fromHex("830084614180f4818361610df481"); // as far as its first property
    return MakeFrame(QByteArray::fromHex("85030200") + object.repeated(depth));
}

const QHash<QString, std::function<void()>>& Modes()
{
    static const QHash<QString, std::function<void()>> kModes{
        {u"server"_s, Serve},
        {u"silence"_s, WaitForEndOfInput},
        {u"stubborn"_s,
         [] {
             std::signal(SIGTERM, SIG_IGN);
             for (;;)
                 ::pause();
         }},
        {u"exit-127"_s, [] { std::exit(127); }},
        {u"exit-126"_s, [] { std::exit(126); }},
        {u"dies-before-hello"_s,
         [] {
             WriteAll(STDERR_FILENO, "out of \x1B[31mcheese\x1B[0m\a\n");
             Die();
         }},
        {u"noise"_s,
         [] {
             WriteAll(STDOUT_FILENO, "Welcome!\nYou have new mail.\nQUENVOLTA-");
             Serve();
         }},
        {u"much-noise"_s,
         [] {
             WriteAll(STDOUT_FILENO, "Read this: " + QByteArray(2 * kMaxNoise, 'x'));
             WaitForEndOfInput();
         }},
        {u"other-version"_s,
         [] {
             SendHello(kProtocolVersion + 1);
             WaitForEndOfInput();
         }},
        {u"no-hello"_s,
         [] {
             WriteAll(STDOUT_FILENO, kMagicLine);
             Send(ResultMessage{1, S_OK, nullptr, {}});
             WaitForEndOfInput();
         }},
        {u"frame-too-long"_s, AnswersWith(QByteArray::fromHex("01000001"))},
        {u"frame-empty"_s, AnswersWith(QByteArray::fromHex("00000000"))},
        {u"garbage"_s, AnswersWith(MakeFrame(QByteArray(100, '\xFF')))},
        {u"too-deep"_s, AnswersWith(DeepAnswer(40))},
        {u"too-many-items"_s,
         AnswersWith(MakeFrame(QByteArray::fromHex("860202f684614180f48183616103f401819a00100000") +
                               QByteArray(1 << 20, '\x80')))},
        {u"wrong-call-id"_s, AnswersWith(Encode(ResultMessage{999, S_OK, nullptr, {}}))},
        {u"wrong-direction"_s, AnswersWith(Encode(StopMessage{1}))},
        {u"rows-for-object"_s, AnswersWith(Encode(RowsMessage{2, std::nullopt, ItemShape(), {}}))},
        {u"closes-output"_s,
         [] {
             Input input;
             SendHello();
             ServeUntil(&input, Operation::GetObject);
             ::close(STDOUT_FILENO);
             WaitForEndOfInput();
         }},
        {u"dies-on-call"_s,
         [] {
             Input input;
             SendHello();
             ServeUntil(&input, Operation::GetObject);
             WriteAll(STDERR_FILENO, "last words");
             Die();
         }},
        {u"dies-mid-list"_s,
         [] {
             Input input;
             SendHello();
             const CallMessage call = ServeUntil(&input, Operation::CreateInstanceEnum);
             SendItems(call.callId, std::nullopt, 600);
             WriteAll(STDOUT_FILENO, QByteArray::fromHex("00001000830102"));
             Die();
         }},
        {u"answers-in-reverse"_s,
         [] {
             Input input;
             SendHello();
             const CallMessage first = ServeUntil(&input, Operation::ExecMethod);
             Answer(ServeUntil(&input, Operation::GetObject));
             Answer(first);
             WaitForEndOfInput();
         }},
        {u"chatty"_s,
         [] {
             for (int i = 0; i < 100; ++i)
                 WriteAll(STDERR_FILENO, QByteArray(64 * 1024, 'e'));
             WriteAll(STDERR_FILENO, "\nthe end of it\n");
             Input input;
             SendHello();
             Answer(ServeUntil(&input, Operation::GetObject));
             input.NextCall();
             Die();
         }},
    };
    return kModes;
}

} // namespace

} // namespace quenvolta

int main(int argc, char** argv)
{
    if (argc != 3 || qstrcmp(argv[1], "--stdio") != 0)
        return EXIT_FAILURE;
    if (const QString name = qEnvironmentVariable("PEER_PID_FILE"); !name.isEmpty()) {
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly))
            return EXIT_FAILURE;
        file.write(QByteArray::number(::getpid()));
    }
    const auto mode = quenvolta::Modes().constFind(QString::fromLatin1(argv[2]));
    if (mode == quenvolta::Modes().constEnd())
        return EXIT_FAILURE;
    (*mode)();
}
