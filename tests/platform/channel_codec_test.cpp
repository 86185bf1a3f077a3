#include "platform/channel/cbor_writer.h"
#include "platform/channel/frame.h"
#include "platform/channel/message_codec.h"
#include "platform/channel/rows_sender.h"
#include "platform/wbem/class_table.h"
#include "platform/wbem/wbem_context.h"
#include "platform/wbem/wbem_object.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <gtest/gtest.h>
#include <limits>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

ClassDefinitionPtr EveryTypeShape()
{
    auto shape = std::make_shared<ClassDefinition>();
    shape->name = u"Everything"_s;
    shape->ancestors = {u"Parent"_s, u"Grandparent"_s};
    shape->properties = {{u"Key"_s, CimType::String, true},         {u"Signed"_s, CimType::Sint32, false},
                         {u"Unsigned"_s, CimType::Uint32, false},   {u"Flag"_s, CimType::Boolean, false},
                         {u"When"_s, CimType::Datetime, false},     {u"One"_s, CimType::Object, false},
                         {u"Texts"_s, CimType::StringArray, false}, {u"Many"_s, CimType::ObjectArray, false}};
    return shape;
}

WbemObjectPtr Inner(const QString& name)
{
    auto shape = std::make_shared<ClassDefinition>();
    shape->name = u"Inner"_s;
    shape->singleton = true;
    shape->properties = {{u"Name"_s, CimType::String, false}};
    return std::make_shared<WbemObject>(shape, QList<Variant>{name});
}

QList<Variant> EveryTypeValues()
{
    return {u"k\u00E4y \U0001F600"_s,
            std::numeric_limits<std::int32_t>::min(),
            std::numeric_limits<std::uint32_t>::max(),
            true,
            u"20150601120000.000000+180"_s,
            Inner(u"one"_s),
            QStringList{u"a"_s, QString(300, u'b'), QString(QChar(0))},
            QList<WbemObjectPtr>{Inner(u"x"_s), Inner(u"y"_s)}};
}

// One message of each kind, with every kind of value in them.
QList<Message> EveryMessage()
{
    const WbemContextPtr context = CreateWbemContext();
    context->SetValue(u"ActivityId"_s, 0, u"{1}"_s);
    context->SetValue(u"Number"_s, 0, std::int32_t{-7});
    context->SetValue(u"Names"_s, 0, QStringList{u"n"_s});
    const QUuid id(u"{00112233-4455-6677-8899-aabbccddeeff}"_s);
    const auto object = std::make_shared<WbemObject>(EveryTypeShape(), EveryTypeValues());
    const auto definition =
        std::make_shared<WbemClassDefinitionObject>(ClassTable(u"Quenvolta"_s, {3, 3}).Find(u"Quenvolta_Group"_s));
    const auto error =
        std::make_shared<WbemErrorObject>(ClassTable(u"Quenvolta"_s, {3, 3}).Find(u"Quenvolta_ExtendedError"_s),
                                          QList<Variant>{u"All of it"_s, u"Short"_s, Variant{}, std::uint32_t{3}});
    return {HelloMessage{kProtocolVersion, {{u"product"_s, u"Quenvolta Server"_s}, {u"version"_s, u"3.3.1"_s}}},
            CallMessage{1, id, Operation::ExecMethod, u"Quenvolta"_s, u"Quenvolta_Repository.Name=\"a\""_s,
                        u"GetChildren"_s, object, context},
            RowsMessage{70000,
                        u"Children"_s,
                        EveryTypeShape(),
                        {EveryTypeValues(), QList<Variant>(EveryTypeShape()->properties.size())}},
            ResultMessage{2, S_OK, definition, {}},
            ResultMessage{3, WBEM_E_FAILED, nullptr, WbemObjectPtr(error)},
            ResultMessage{4, WBEM_E_NOT_FOUND, nullptr, u"No such thing"_s},
            StopMessage{std::numeric_limits<std::uint32_t>::max()}};
}

QByteArrayView Body(const QByteArray& frame)
{
    return QByteArrayView(frame).sliced(kFrameHeaderSize);
}

template <typename Kind>
Kind DecodeAs(const QByteArray& frame)
{
    std::variant<Message, DecodeFailure> decoded = Decode(Body(frame));
    if (const auto* const failure = std::get_if<DecodeFailure>(&decoded))
        ADD_FAILURE() << failure->text.toStdString();
    Message* const message = std::get_if<Message>(&decoded);
    return message && std::holds_alternative<Kind>(*message) ? std::get<Kind>(*message) : Kind{};
}

} // namespace

TEST(ChannelCodec, EveryMessageComesBackAsItWas)
{
    for (const Message& message : EveryMessage()) {
        const QByteArray frame = Encode(message);
        ASSERT_FALSE(frame.isEmpty());
        const auto decoded = Decode(Body(frame));
        ASSERT_TRUE(std::holds_alternative<Message>(decoded)) << std::get<DecodeFailure>(decoded).text.toStdString();
        EXPECT_EQ(std::get<Message>(decoded).index(), message.index());
        // What is read is written as the same bytes, so nothing was lost or changed.
        EXPECT_EQ(Encode(std::get<Message>(decoded)).toHex(), frame.toHex());
    }
}

TEST(ChannelCodec, Speed)
{
    auto shape = std::make_shared<ClassDefinition>();
    shape->name = u"Quenvolta_Repository"_s;
    for (int i = 0; i < 7; ++i)
        shape->properties.append({u"P%1"_s.arg(i), i < 4 ? CimType::String : CimType::Uint32, i == 0});
    QList<QList<Variant>> rows;
    for (int i = 0; i < 20000; ++i)
        rows.append({u"repo%1"_s.arg(i), u"http://host/svn/repo%1"_s.arg(i), u"x"_s, u"trunk/lib/abc"_s,
                     std::uint32_t(i), std::uint32_t(1), std::uint32_t(70000)});
    for (int k = 0; k < 3; ++k) {
        QElapsedTimer t;
        t.start();
        QList<QByteArray> frames;
        RowsSender sender(1, std::nullopt, shape, [&](const QByteArray& f) { frames.append(f); });
        for (const auto& r : rows)
            sender.Add(r);
        sender.Flush();
        const auto e = t.nsecsElapsed();
        t.restart();
        ShapeCache cache;
        qsizetype n = 0;
        QList<Message> keep;
        for (const auto& f : frames) {
            auto d = Decode(Body(f), &cache);
            keep.append(std::get<Message>(std::move(d)));
            n += std::get<RowsMessage>(keep.last()).rows.size();
        }
        printf("encode %.1f ms decode %.1f ms n %lld frames %lld\n", double(e) / 1e6, double(t.nsecsElapsed()) / 1e6, n,
               frames.size());
    }
}

} // namespace quenvolta
