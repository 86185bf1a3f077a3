#include "host/command_line.h"

#include "snapin/computer_option.h"
#include "ui/string_table.h"

#include <QCommandLineParser>
#include <QFile>
#include <QRegularExpression>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kLargestPictureSide = 8192;

std::optional<QSize> ParseSize(const QString& text)
{
    static const QRegularExpression form(u"^([1-9][0-9]{0,3})x([1-9][0-9]{0,3})$"_s);
    const QRegularExpressionMatch match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (!match.hasMatch() || size.width() > kLargestPictureSide || size.height() > kLargestPictureSide)
        return {};
    return size;
}

/// The program's options; those of the snap-in were taken out before.
class Options
{
public:
    Options()
    {
        m_parser.setApplicationDescription(LoadString(StringId::kApplicationDescription) + u"\n\n"_s +
                                           LoadString(StringId::kOptionComputer));
        m_parser.addOptions(
            {m_help, m_version, m_picture, m_pictureSelect, m_pictureSize, m_dark, m_extend, m_register, m_unregister});
        m_parser.addPositionalArgument(u"FILE"_s, LoadString(StringId::kArgumentFile), u"[FILE]"_s);
    }

    CommandLine Parse(const QStringList& arguments)
    {
        if (!m_parser.parse(arguments))
            return Refuse(LoadString(StringId::kCommandLineFault, m_parser.errorText()));
        if (m_parser.isSet(m_help))
            return {.task = CommandLine::Task::Print, .text = m_parser.helpText()};
        if (m_parser.isSet(m_version))
            return {.task = CommandLine::Task::Print,
                    .text = LoadString(StringId::kSnapInName) + u' ' + QStringLiteral(QUENVOLTA_VERSION)};
        const QStringList files = m_parser.positionalArguments();
        if (files.size() > 1 || (!files.isEmpty() && !QFile::exists(files.first())))
            return Refuse(LoadString(StringId::kUnexpectedArgument, files.last()));
        if (m_parser.isSet(m_register))
            return {.task = CommandLine::Task::Register};
        if (m_parser.isSet(m_unregister))
            return {.task = CommandLine::Task::Unregister};
        CommandLine line;
        line.dark = m_parser.isSet(m_dark);
        line.consoleFile = files.value(0);
        if (m_parser.isSet(m_extend))
            line.extend = m_parser.value(m_extend) == u"." ? QString() : m_parser.value(m_extend);
        return m_parser.isSet(m_picture) ? ParsePicture(line) : line;
    }

private:
    static CommandLine Refuse(const QString& text) { return {.task = CommandLine::Task::Refuse, .text = text}; }

    CommandLine ParsePicture(CommandLine line)
    {
        line.task = CommandLine::Task::RenderPicture;
        line.pictureFile = m_parser.value(m_picture);
        if (m_parser.isSet(m_pictureSelect))
            line.pictureSelect = m_parser.value(m_pictureSelect).split(u'/', Qt::SkipEmptyParts);
        if (m_parser.isSet(m_pictureSize)) {
            const std::optional<QSize> size = ParseSize(m_parser.value(m_pictureSize));
            if (!size)
                return Refuse(LoadString(StringId::kBadPictureSize, m_parser.value(m_pictureSize)));
            line.pictureSize = *size;
        }
        return line;
    }

    QCommandLineParser m_parser;
    QCommandLineOption m_help{{u"h"_s, u"help"_s}, LoadString(StringId::kOptionHelp)};
    QCommandLineOption m_version{{u"v"_s, u"version"_s}, LoadString(StringId::kOptionVersion)};
    QCommandLineOption m_picture{u"picture"_s, LoadString(StringId::kOptionPicture), u"FILE"_s};
    QCommandLineOption m_pictureSelect{u"picture-select"_s, LoadString(StringId::kOptionPictureSelect), u"ITEMS"_s};
    QCommandLineOption m_pictureSize{u"picture-size"_s, LoadString(StringId::kOptionPictureSize), u"WIDTHxHEIGHT"_s};
    QCommandLineOption m_extend{u"extend"_s, LoadString(StringId::kOptionExtend), u"NAME"_s};
    QCommandLineOption m_register{u"register"_s, LoadString(StringId::kOptionRegister)};
    QCommandLineOption m_unregister{u"unregister"_s, LoadString(StringId::kOptionUnregister)};
    QCommandLineOption m_dark{u"dark"_s, LoadString(StringId::kOptionDark)};
};

} // namespace

CommandLine ParseCommandLine(const QStringList& arguments)
{
    QStringList own = arguments;
    const ComputerOption computer = FindComputerOption(arguments);
    if (computer.index >= 0)
        own.remove(computer.index, computer.count);
    CommandLine line = Options().Parse(own);
    line.arguments = arguments;
    return line;
}

} // namespace quenvolta
