#include "platform/channel/message_codec.h"
#include "platform/channel/protocol.h"
#include "platform/wbem/wbem_context.h"
#include "platform/wbem/wbem_object.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

using Table = QMap<QString, QString>;

QString Document()
{
    QFile file(QStringLiteral(QUENVOLTA_SOURCE_DIR "/docs/protocol.md"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

// The first two columns of the table whose head begins with `column`.
Table TableOf(const QString& column)
{
    static const QRegularExpression kRow(u"^\\| ([^|]+) \\| ([^|]+) \\|"_s);
    Table table;
    bool inside = false;
    const QString document = Document();
    for (const QString& line : document.split(u'\n')) {
        const QRegularExpressionMatch row = kRow.match(line);
        if (line.startsWith(u"| %1 |"_s.arg(column)))
            inside = true;
        else if (inside && row.hasMatch())
            table.insert(row.captured(1), row.captured(2));
        else if (inside && !line.startsWith(u"|---"_s))
            break;
    }
    return table;
}

template <typename Enum>
QString Number(Enum value)
{
    return QString::number(static_cast<int>(value));
}

WbemObjectPtr Instance(const QString& className, const QList<PropertyDefinition>& properties,
                       const QList<Variant>& values)
{
    auto shape = std::make_shared<ClassDefinition>();
    shape->name = className;
    shape->properties = properties;
    return std::make_shared<WbemObject>(shape, values);
}

// Small messages that hold every form which the document describes.
QList<std::pair<QString, Message>> Examples()
{
    const WbemContextPtr context = CreateWbemContext();
    context->SetValue(u"ActivityId"_s, 0, u"{1}"_s);
    const WbemObjectPtr input = Instance(kParametersClass.toString(), {{u"Path"_s, CimType::String, false}}, {u"/"_s});
    auto row = std::make_shared<ClassDefinition>();
    row->name = u"Entry"_s;
    row->ancestors = {u"Base"_s};
    row->properties = {{u"Path"_s, CimType::String, true},        {u"Kind"_s, CimType::Uint32, false},
                       {u"Delta"_s, CimType::Sint32, false},      {u"Seen"_s, CimType::Boolean, false},
                       {u"When"_s, CimType::Datetime, false},     {u"Owner"_s, CimType::Object, false},
                       {u"Names"_s, CimType::StringArray, false}, {u"Parts"_s, CimType::ObjectArray, false}};
    const WbemObjectPtr part = Instance(u"Part"_s, {}, {});
    const QList<Variant> values{u"/\u00E4"_s, std::uint32_t{300},  std::int32_t{-2},          true, Variant{},
                                part,         QStringList{u"n"_s}, QList<WbemObjectPtr>{part}};
    QList<Variant> next = values; // which are all as before but one
    next[0] = u"/b"_s;
    auto definition = std::make_shared<ClassDefinition>();
    definition->name = u"Tool"_s;
    definition->singleton = true;
    definition->methods = {{u"Run"_s, true, std::dynamic_pointer_cast<WbemObject>(input)->Definition(), nullptr}};
    return {{u"Hello"_s, HelloMessage{kProtocolVersion, {{u"version"_s, u"3.3.1"_s}}}},
            {u"Call"_s, CallMessage{1, QUuid(u"{00112233-4455-6677-8899-aabbccddeeff}"_s), Operation::ExecMethod,
                                    u"Quenvolta"_s, u"Tool=@"_s, u"Run"_s, input, context}},
            {u"Rows"_s, RowsMessage{1, u"Children"_s, row, values + next}},
            {u"Result"_s, ResultMessage{2, S_OK, std::make_shared<WbemClassDefinitionObject>(definition), {}}},
            {u"Failed result"_s, ResultMessage{3, WBEM_E_NOT_FOUND, nullptr, u"gone"_s}},
            {u"Stop"_s, StopMessage{70000}}};
}

} // namespace

TEST(ChannelProtocol, TheDocumentListsTheNumbersOfTheCode)
{
    EXPECT_TRUE(Document().contains(u"in version %1 of the protocol"_s.arg(kProtocolVersion)));
    EXPECT_TRUE(Document().contains(u'`' + QString::fromLatin1(kMagicLine).trimmed() + u'`'));
    const Table kinds = TableOf(u"kind"_s);
    EXPECT_EQ(static_cast<std::size_t>(kinds.size()), std::variant_size_v<Message>);
    EXPECT_EQ(kinds, (Table{{Number(MessageKind::Hello), u"Hello"_s},
                            {Number(MessageKind::Call), u"Call"_s},
                            {Number(MessageKind::Rows), u"Rows"_s},
                            {Number(MessageKind::Result), u"Result"_s},
                            {Number(MessageKind::Stop), u"Stop"_s}}));
    EXPECT_EQ(TableOf(u"operation"_s), (Table{{Number(Operation::OpenNamespace), u"OpenNamespace"_s},
                                              {Number(Operation::GetObject), u"GetObject"_s},
                                              {Number(Operation::CreateInstanceEnum), u"CreateInstanceEnum"_s},
                                              {Number(Operation::ExecMethod), u"ExecMethod"_s}}));
    EXPECT_EQ(TableOf(u"first item"_s),
              (Table{{Number(ObjectKind::Instance), u"Instance"_s}, {Number(ObjectKind::Class), u"Class"_s}}));
    EXPECT_EQ(TableOf(u"type"_s), (Table{{Number(CimType::Sint32), u"sint32"_s},
                                         {Number(CimType::String), u"string"_s},
                                         {Number(CimType::Boolean), u"boolean"_s},
                                         {Number(CimType::Object), u"object"_s},
                                         {Number(CimType::Uint32), u"uint32"_s},
                                         {Number(CimType::Datetime), u"datetime"_s},
                                         {Number(CimType::StringArray), u"string array"_s},
                                         {Number(CimType::ObjectArray), u"object array"_s}}));
    EXPECT_EQ(TableOf(u"bound"_s), (Table{{u"bytes of a frame"_s, Number(kMaxFrameSize)},
                                          {u"arrays and maps inside each other"_s, Number(kMaxNesting)},
                                          {u"items of a frame"_s, Number(kMaxItems)},
                                          {u"entries of a map"_s, Number(kMaxNamedValues)},
                                          {u"rows of one call's answer"_s, Number(kMaxRowsPerCall)},
                                          {u"bytes before the magic line"_s, Number(kMaxNoise)}}));
    EXPECT_EQ(TableOf(u"batch"_s), (Table{{u"rows"_s, Number(kRowsPerBatch)}, {u"bytes"_s, Number(kBytesPerBatch)}}));
}

TEST(ChannelProtocol, TheDocumentsExamplesAreTheBytesOfTheCode)
{
    const QString document = Document();
    for (const auto& [name, message] : Examples()) {
        const QRegularExpression example(u"^%1:\\s+```\\s+([0-9a-f\\s]+)```"_s.arg(name),
                                         QRegularExpression::MultilineOption);
        const QByteArray documented = QByteArray::fromHex(example.match(document).captured(1).toLatin1());
        EXPECT_EQ(Encode(message).toHex().toStdString(), documented.toHex().toStdString()) << name.toStdString();
        const auto decoded = Decode(QByteArrayView(documented).sliced(std::min(kFrameHeaderSize, documented.size())));
        const auto* const read = std::get_if<Message>(&decoded);
        EXPECT_TRUE(read && Encode(*read) == documented) << name.toStdString();
    }
}

} // namespace quenvolta
