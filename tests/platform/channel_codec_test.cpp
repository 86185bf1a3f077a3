#include "platform/channel/channel_texts.h"
#include "platform/channel/message_codec.h"
#include "platform/channel/rows_sender.h"
#include "platform/wbem/class_table.h"
#include "platform/wbem/wbem_context.h"
#include "platform/wbem/wbem_object.h"

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
            RowsMessage{70000, u"Children"_s, EveryTypeShape(),
                        EveryTypeValues() + QList<Variant>(EveryTypeShape()->properties.size()) + EveryTypeValues() +
                            EveryTypeValues()},
            ResultMessage{2, S_OK, definition, {}},
            ResultMessage{3, WBEM_E_FAILED, nullptr, WbemObjectPtr(error)},
            ResultMessage{4, WBEM_E_NOT_FOUND, nullptr, u"No such thing"_s},
            StopMessage{std::numeric_limits<std::uint32_t>::max()}};
}

QByteArrayView Body(const QByteArray& frame)
{
    return QByteArrayView(frame).sliced(kFrameHeaderSize);
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
        if (const auto* const rows = std::get_if<RowsMessage>(&message)) {
            const QList<Variant>& read = std::get<RowsMessage>(std::get<Message>(decoded)).values;
            for (const qsizetype text : {0, 8, 16, 24})
                EXPECT_EQ(read[text], rows->values[text]);
        }
        // What is read is written as the same bytes, so nothing was lost or changed.
        EXPECT_EQ(Encode(std::get<Message>(decoded)).toHex(), frame.toHex());
    }
}

TEST(ChannelCodec, EveryCutAndEveryFlippedBitIsAFaultOrAMessage)
{
    for (const Message& message : EveryMessage()) {
        const QByteArray frame = Encode(message);
        const QByteArrayView body = Body(frame);
        for (qsizetype length = 0; length < body.size(); ++length) {
            // A copy of exactly this length, so that a sanitizer sees every read behind it.
            const QByteArray cut = body.first(length).toByteArray();
            EXPECT_TRUE(std::holds_alternative<DecodeFailure>(Decode(cut))) << message.index() << " at " << length;
        }
        for (qsizetype bit = 0; bit < body.size() * 8; ++bit) {
            QByteArray flipped = body.toByteArray();
            flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << (bit % 8)));
            const auto decoded = Decode(flipped);
            const auto* const other = std::get_if<Message>(&decoded);
            EXPECT_TRUE(!other || !Encode(*other).isEmpty()) << message.index() << " at bit " << bit;
        }
    }
}

TEST(ChannelCodec, WhatIsNoMessageIsRefusedInWords)
{
    struct Bad {
        const char* hex;
        ChannelText text;
    };
    const Bad kBad[]{
        {"", ChannelText::Malformed},
        {"a0", ChannelText::WrongType},
        {"820500", ChannelText::UnknownKind},
        {"8204", ChannelText::Malformed},
        {"820420", ChannelText::OutOfRange},                 // a negative call
        {"82041b0000000100000000", ChannelText::OutOfRange}, // a call of 33 bits
        {"82041bffffffffffffffff", ChannelText::OutOfRange},
        {"82043bffffffffffffffff", ChannelText::OutOfRange},
        {"8204fa3f800000", ChannelText::WrongType}, // a float
        {"8204c101", ChannelText::WrongType},       // a tag
        {"83040100", ChannelText::WrongLength},     // one part too many
        {"82040100", ChannelText::TrailingBytes},
        {"9f0401ff", ChannelText::IndefiniteLength},
        {"830001bf6161616200", ChannelText::IndefiniteLength},
        {"830001a17f6161ff6162", ChannelText::IndefiniteLength},
        {"830001a1617a62c328", ChannelText::Malformed}, // no UTF-8
        {"830001a1617a62eda0", ChannelText::Malformed},
        {"830001a2617a6162617a6162", ChannelText::NameTwice},
        {"830001a1617a7a7fffffff61", ChannelText::LengthBeyondFrame},
        {"860201f69b7fffffffffffffff", ChannelText::LengthBeyondFrame},
        {"860201f684614180f48183616107f40180", ChannelText::OutOfRange},        // no type 7
        {"860201f684614180f4800180", ChannelText::WrongLength},                 // rows of nothing
        {"860201f684614180f48183616103f40180", ChannelText::WrongLength},       // a column too few
        {"860201f684614180f48183616103f403818201f6", ChannelText::WrongLength}, // two values for three rows
        {"860201f684614180f48183616103f400818101", ChannelText::WrongLength},
        {"860201f684614180f48183616103f4208180", ChannelText::OutOfRange}, // -1 rows
        {"860201f684614180f48183616103f41a00100000818101", ChannelText::TooManyItems},
        {"860201f684614180f48183616103f40181816161", ChannelText::WrongType},
        {"860201f684614180f48183616103f4018181f7", ChannelText::WrongType},
        {"860201f684614180f48183616103f40181811a80000000", ChannelText::OutOfRange},
        {"860201f684614180f48183616113f401818120", ChannelText::OutOfRange},
        {"860201f684614180f48183616103f40281824800000001000000016161", ChannelText::WrongType}, // packed numbers
        {"860201f684614180f48183616108f402818244000000016161", ChannelText::WrongLength},       // one length for two
        {"860201f684614180f48183616108f40281824800000001000000026161", ChannelText::WrongLength},
        {"860201f684614180f48183616108f40281824800000000000000006161", ChannelText::WrongLength},
        {"860201f684614180f48183616108f402818248000000010000000164f09f9880", ChannelText::Malformed}, // half signs
        {"85030100830084614180f48183616103f481f7f6", ChannelText::WrongType},
        {"850301008207f6f6", ChannelText::UnknownKind},
    };
    for (const Bad& bad : kBad) {
        const QByteArray bytes = QByteArray::fromHex(bad.hex);
        const auto decoded = Decode(bytes);
        const auto* const failure = std::get_if<DecodeFailure>(&decoded);
        ASSERT_TRUE(failure) << bad.hex;
        EXPECT_EQ(failure->text, ChannelTextOf(bad.text)) << bad.hex;
    }
}

TEST(ChannelCodec, AnotherVersionsHelloIsReadAsFarAsItsNumber)
{
    const auto decoded = Decode(QByteArray::fromHex("840002f6a0"));
    ASSERT_TRUE(std::holds_alternative<Message>(decoded));
    EXPECT_EQ(std::get<HelloMessage>(std::get<Message>(decoded)).protocolVersion, 2);
}

TEST(ChannelCodec, WhatCannotTravelIsNotEncoded)
{
    const auto shape = EveryTypeShape();
    const auto withValue = [&](int index, const Variant& value) {
        QList<Variant> values(shape->properties.size());
        values[index] = value;
        return Encode(RowsMessage{1, std::nullopt, shape, values});
    };
    EXPECT_FALSE(withValue(1, std::int32_t{1}).isEmpty());
    EXPECT_TRUE(withValue(1, std::uint32_t{1}).isEmpty());
    EXPECT_TRUE(withValue(3, u"true"_s).isEmpty());
    EXPECT_TRUE(withValue(7, QList<WbemObjectPtr>{nullptr}).isEmpty());
    EXPECT_TRUE(withValue(0, QString(QChar(0xDC00))).isEmpty());
    EXPECT_TRUE(Encode(RowsMessage{1, std::nullopt, shape, {u"too short"_s}}).isEmpty());
    EXPECT_TRUE(Encode(ResultMessage{1, E_FAIL, nullptr, QString(kMaxFrameSize, u'x')}).isEmpty());

    // Objects inside objects: as many as the bound of nesting allows, at both ends.
    auto nested = std::make_shared<ClassDefinition>();
    nested->properties = {{u"Inner"_s, CimType::Object, false}};
    WbemObjectPtr object = std::make_shared<WbemObject>(nested);
    int depth = 1;
    for (QByteArray frame = Encode(ResultMessage{1, S_OK, object, {}}); !frame.isEmpty() && depth < 100; ++depth) {
        ASSERT_TRUE(std::holds_alternative<Message>(Decode(Body(frame)))) << depth;
        object = std::make_shared<WbemObject>(nested, QList<Variant>{object});
        frame = Encode(ResultMessage{1, S_OK, object, {}});
    }
    EXPECT_EQ(depth, 31); // which would need 65 levels
}

TEST(ChannelCodec, TextsThatRowsShareTravelOnceAndStaySharedAtTheOtherEnd)
{
    auto shape = std::make_shared<ClassDefinition>();
    shape->properties = {{u"Folder"_s, CimType::String, false}, {u"Name"_s, CimType::String, false}};
    const QString folder(1000, u'f');
    QList<Variant> values;
    for (int i = 0; i < 50; ++i)
        values += {folder, QString::number(i)};
    const QByteArray frame = Encode(RowsMessage{1, std::nullopt, shape, values});
    EXPECT_LT(frame.size(), 1500);
    const auto decoded = Decode(Body(frame));
    const auto& rows = std::get<RowsMessage>(std::get<Message>(decoded));
    EXPECT_EQ(rows.values, values);
    EXPECT_EQ(std::get<QString>(rows.values[0]).constData(), std::get<QString>(rows.values[48]).constData());

    // Objects of a list are changed each for itself.
    WbemObject first(rows.shape, rows.values, 0);
    const WbemObject second(rows.shape, rows.values, 2);
    EXPECT_EQ(first.Put(u"Name"_s, u"changed"_s), S_OK);
    EXPECT_EQ(*first.Find(u"name"_s), Variant(u"changed"_s));
    EXPECT_EQ(*first.Find(u"Folder"_s), Variant(folder));
    EXPECT_EQ(*second.Find(u"Name"_s), Variant(u"1"_s));
    EXPECT_EQ(second.Find(u"__CLASS"_s), nullptr);
}

TEST(ChannelCodec, LongListsAreCutIntoMessagesOfAFairSize)
{
    auto shape = std::make_shared<ClassDefinition>();
    shape->name = u"Row"_s;
    shape->properties = {{u"Text"_s, CimType::String, false}};
    QList<QByteArray> frames;
    RowsSender sender(9, u"Children"_s, shape, [&](const QByteArray& frame) { frames.append(frame); });
    QStringList sent;
    const auto add = [&](const QString& text) {
        sent.append(text);
        return sender.Add({text});
    };
    for (int i = 0; i < 1000; ++i)
        EXPECT_TRUE(add(QString::number(i)));
    EXPECT_TRUE(add(QString(kBytesPerBatch / 2, u'x')));
    EXPECT_TRUE(add(QString(kMaxFrameSize - 100, u'y'))); // goes into a frame of its own
    EXPECT_TRUE(add(u"last"_s));
    EXPECT_FALSE(sender.Add({QString(kMaxFrameSize, u'z')}));
    EXPECT_FALSE(sender.Add({std::uint32_t{1}}));
    EXPECT_FALSE(sender.Add({}));
    sender.Flush();
    sender.Flush();

    ShapeCache shapes;
    QStringList received;
    ClassDefinitionPtr shared;
    for (const QByteArray& frame : std::as_const(frames)) {
        const auto decoded = Decode(Body(frame), &shapes);
        ASSERT_TRUE(std::holds_alternative<Message>(decoded));
        const auto& rows = std::get<RowsMessage>(std::get<Message>(decoded));
        EXPECT_EQ(rows.parameter, u"Children"_s);
        EXPECT_LE(rows.Rows(), kRowsPerBatch);
        EXPECT_EQ(shared ? shared : rows.shape, rows.shape);
        shared = rows.shape;
        for (const Variant& text : rows.values)
            received.append(std::get<QString>(text));
    }
    EXPECT_EQ(frames.size(), 4);
    EXPECT_EQ(received, sent);
}

TEST(ChannelCodec, ARowThatCannotTravelLeavesTheOthersAsTheyWere)
{
    auto shape = std::make_shared<ClassDefinition>();
    shape->properties = {{u"Text"_s, CimType::String, false},
                         {u"Number"_s, CimType::Uint32, false},
                         {u"Note"_s, CimType::String, false}};
    const auto number = [](std::uint32_t value) { return Variant(value); };
    const Variant wrong(true);
    const Variant half(QString(QChar(0xD83D)));
    const Variant smile(u"\U0001F600"_s);
    const QList<QList<Variant>> rows{
        {u"a"_s, number(1), u"n"_s},    {u"b"_s, wrong, Variant()},    {u"a"_s, number(1), u"n"_s},
        {half, number(2), u"m"_s},      {smile, number(2), QString()}, {wrong, wrong, wrong},
        {u"c"_s, number(2), Variant()}, {Variant(), wrong, half},      {QString(), number(3), smile},
        {u"d"_s, number(4), half},      {Variant(), number(4), u"z"_s}};
    QList<QByteArray> frames;
    RowsSender sender(9, std::nullopt, shape, [&](const QByteArray& frame) { frames.append(frame); });
    QList<Variant> sent;
    for (const QList<Variant>& row : rows) {
        const bool canTravel = !row.contains(wrong) && !row.contains(half);
        const qsizetype before = frames.size();
        EXPECT_EQ(sender.Add(row), canTravel);
        EXPECT_LE(frames.size(), before + 1); // what came before may go first
        if (canTravel)
            sent += row;
    }
    sender.Flush();
    QList<Variant> received;
    for (const QByteArray& frame : std::as_const(frames))
        received += std::get<RowsMessage>(std::get<Message>(Decode(Body(frame)))).values;
    EXPECT_EQ(received, sent);
}

} // namespace quenvolta
