#include "repositories/script_lines.h"

#include <QList>
#include <QMap>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

struct Lines {
    QStringList texts;
    QStringList endings; // that of the last line is empty
};

Lines Split(const QString& text)
{
    static const QRegularExpression ending(u"\r\n|\r|\n"_s);
    Lines lines;
    qsizetype begin = 0;
    for (auto matches = ending.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        lines.texts.append(text.sliced(begin, match.capturedStart() - begin));
        lines.endings.append(match.captured());
        begin = match.capturedEnd();
    }
    lines.texts.append(text.sliced(begin));
    lines.endings.append(QString());
    return lines;
}

QString MostFrequentEnding(const Lines& lines)
{
    QMap<QString, int> counts;
    for (const QString& ending : lines.endings.first(lines.endings.size() - 1))
        ++counts[ending];
    const auto most = std::ranges::max_element(counts);
    return most == counts.end() ? u"\n"_s : most.key();
}

} // namespace

QString WithLineEndingsOf(const QString& original, const QString& edited)
{
    const Lines old = Split(original);
    const QStringList lines = edited.split(u'\n');
    const QString usual = MostFrequentEnding(old);
    const qsizetype most = std::min(lines.size(), old.texts.size());
    qsizetype same = 0;
    while (same < most && lines[same] == old.texts[same])
        ++same;
    qsizetype sameAtEnd = 0;
    while (sameAtEnd < most - same &&
           lines[lines.size() - 1 - sameAtEnd] == old.texts[old.texts.size() - 1 - sameAtEnd])
        ++sameAtEnd;

    QString result;
    for (qsizetype i = 0; i < lines.size() - 1; ++i) {
        QString ending = usual;
        if (i < same)
            ending = old.endings[i];
        else if (i >= lines.size() - sameAtEnd)
            ending = old.endings[old.texts.size() - (lines.size() - i)];
        result += lines[i] + (ending.isEmpty() ? usual : ending);
    }
    return result + lines.last();
}

bool HasInterpreterLine(QStringView script)
{
    return script.startsWith(u"#!") && !script.sliced(2).trimmed().isEmpty();
}

} // namespace quenvolta
