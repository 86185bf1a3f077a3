#include "platform/directory/known_computers.h"

#include "platform/channel/computer_name.h"
#include "platform/natural_collator.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// A file of a person is far smaller; what is larger is something else.
constexpr qint64 kLargestFile = 16 * 1024 * 1024;
constexpr int kDeepestInclude = 8;

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(kLargestFile) : QByteArray();
}

void AddHost(QStringList& hosts, const QString& host)
{
    if (!host.isEmpty() && ParseComputerName(host) && !hosts.contains(host, Qt::CaseInsensitive))
        hosts.append(host);
}

/// "[host]:port" as a computer is named; a port that is the usual one is left out.
QString WithoutBrackets(const QString& name)
{
    static const QRegularExpression form(u"^\\[([^\\]]+)\\](?::([0-9]+))?$"_s);
    const QRegularExpressionMatch match = form.match(name);
    if (!match.hasMatch())
        return name;
    const QString host = match.captured(1).contains(u':') ? u'[' + match.captured(1) + u']' : match.captured(1);
    const QString port = match.captured(2);
    return port.isEmpty() || port == u"22" ? host : host + u':' + port;
}

void ReadConfig(const QString& folder, const QString& path, int depth, QStringList& hosts)
{
    if (depth > kDeepestInclude)
        return;
    QStringList includes;
    for (const QString& host : HostsOfSshConfig(ReadFile(path), &includes))
        AddHost(hosts, host);
    for (QString pattern : includes) {
        if (pattern.startsWith("~/"_L1))
            pattern = QDir::homePath() + pattern.sliced(1);
        else if (!pattern.startsWith(u'/'))
            pattern = folder + u'/' + pattern;
        const QFileInfo place(pattern);
        for (const QFileInfo& file : QDir(place.path()).entryInfoList({place.fileName()}, QDir::Files))
            ReadConfig(folder, file.filePath(), depth + 1, hosts);
    }
}

QString Unescape(const QString& text)
{
    static const QRegularExpression escape(u"\\\\([0-9]{3})"_s);
    QString result;
    qsizetype last = 0;
    for (auto matches = escape.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        result += text.mid(last, match.capturedStart() - last) + QChar(match.captured(1).toUShort());
        last = match.capturedEnd();
    }
    return result + text.mid(last);
}

} // namespace

QStringList HostsOfSshConfig(const QByteArray& config, QStringList* includes)
{
    static const QRegularExpression line(u"^\\s*(Host|Include)(?:\\s*=\\s*|\\s+)(.+?)\\s*$"_s,
                                         QRegularExpression::CaseInsensitiveOption |
                                             QRegularExpression::MultilineOption);
    static const QRegularExpression blanks(u"\\s+"_s);
    QStringList hosts;
    for (auto matches = line.globalMatch(QString::fromUtf8(config)); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const bool isHost = match.captured(1).compare("host"_L1, Qt::CaseInsensitive) == 0;
        for (QString word : match.captured(2).split(blanks, Qt::SkipEmptyParts)) {
            word.remove(u'"');
            if (word.startsWith(u'#'))
                break;
            if (!isHost)
                includes->append(word);
            else if (!word.contains(u'*') && !word.contains(u'?') && !word.startsWith(u'!'))
                hosts.append(word);
        }
    }
    return hosts;
}

QStringList HostsOfKnownHosts(const QByteArray& file)
{
    QStringList hosts;
    for (const QByteArray& raw : file.split('\n')) {
        const QString line = QString::fromUtf8(raw).trimmed();
        if (line.isEmpty() || line.startsWith(u'#') || line.startsWith(u'@') || line.startsWith(u'|'))
            continue;
        const QString names = line.section(u' ', 0, 0);
        for (const QString& name : names.split(u',', Qt::SkipEmptyParts)) {
            if (!name.contains(u'*') && !name.contains(u'?') && !name.startsWith(u'!'))
                AddHost(hosts, WithoutBrackets(name));
        }
    }
    return hosts;
}

QStringList KnownSshHosts(const QString& sshFolder)
{
    QStringList hosts;
    ReadConfig(sshFolder, sshFolder + "/config"_L1, 0, hosts);
    for (const QString& host : HostsOfKnownHosts(ReadFile(sshFolder + "/known_hosts"_L1)))
        AddHost(hosts, host);
    const QCollator collator = NaturalCollator();
    std::ranges::sort(hosts, [&](const QString& a, const QString& b) { return collator.compare(a, b) < 0; });
    return hosts;
}

QStringList HostsOfAnnouncements(const QByteArray& output)
{
    constexpr qsizetype kHostField = 6;
    QStringList hosts;
    for (const QByteArray& raw : output.split('\n')) {
        const QStringList fields = QString::fromUtf8(raw).split(u';');
        if (fields.size() > kHostField && fields.first() == u"=")
            AddHost(hosts, Unescape(fields[kHostField]));
    }
    return hosts;
}

} // namespace quenvolta
