#include "provider/svn/repository_names.h"

#include "provider/provider_error.h"
#include "provider/svn/repository_texts.h"

#include <QList>

#include <algorithm>
#include <array>
#include <span>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kMaxNameBytes = 255;
constexpr qsizetype kMaxPathBytes = 4096;

struct Rule {
    bool (*isBroken)(QStringView);
    QStringView reason;
};

// A byte order mark is lost where a name is read back from UTF-8.
bool IsControl(QChar c)
{
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator ||
           c == QChar::ByteOrderMark;
}

bool HasControl(QStringView text)
{
    return std::any_of(text.begin(), text.end(), &IsControl);
}

bool HasLoneSurrogate(QStringView text)
{
    return !text.isValidUtf16();
}

// Counting code units first keeps a huge text from being converted at all.
bool IsLonger(QStringView text, qsizetype bytes)
{
    return text.size() > bytes || text.toUtf8().size() > bytes;
}

template <typename Predicate>
bool AnyElement(QStringView path, Predicate predicate)
{
    const auto elements = path.mid(1).split(u'/');
    return path.size() > 1 && std::any_of(elements.begin(), elements.end(), predicate);
}

constexpr std::array kNameRules{
    Rule{[](QStringView n) { return n.isEmpty(); }, texts::kIsEmpty},
    Rule{[](QStringView n) { return IsLonger(n, kMaxNameBytes); }, texts::kNameTooLong},
    Rule{&HasLoneSurrogate, texts::kHasSurrogate},
    Rule{&HasControl, texts::kHasControl},
    Rule{[](QStringView n) { return n.contains(u'/'); }, texts::kHasSlash},
    Rule{[](QStringView n) { return n.startsWith(u'.'); }, texts::kBeginsWithPeriod},
};

constexpr std::array kNewNameRules{
    Rule{[](QStringView n) { return n.endsWith(u'.'); }, texts::kEndsWithPeriod},
    Rule{[](QStringView n) { return n.front().isSpace() || n.back().isSpace(); }, texts::kHasOuterBlank},
    // Rules can't express a colon and brackets, and httpd's answers don't escape an ampersand: no client could use it.
    Rule{[](QStringView n) { return std::any_of(n.begin(), n.end(), [](QChar c) { return u"\\:&[]"_s.contains(c); }); },
         texts::kHasReserved},
};

constexpr std::array kPathRules{
    Rule{[](QStringView p) { return p.isEmpty(); }, texts::kIsEmpty},
    Rule{[](QStringView p) { return IsLonger(p, kMaxPathBytes); }, texts::kPathTooLong},
    Rule{&HasLoneSurrogate, texts::kHasSurrogate},
    Rule{&HasControl, texts::kHasControl},
    Rule{[](QStringView p) { return !p.startsWith(u'/'); }, texts::kNotAbsolute},
    Rule{[](QStringView p) { return p.contains(u"//"); }, texts::kEmptyElement},
    Rule{[](QStringView p) { return p.size() > 1 && p.endsWith(u'/'); }, texts::kTrailingSlash},
    Rule{[](QStringView p) { return AnyElement(p, [](QStringView e) { return e == u"." || e == u".."; }); },
         texts::kDotElement},
};

constexpr std::array kNewPathRules{
    Rule{[](QStringView p) { return AnyElement(p, [](QStringView e) { return IsLonger(e, kMaxNameBytes); }); },
         texts::kElementTooLong},
};

void Check(QStringView text, std::span<const Rule> rules, QStringView format)
{
    const auto broken =
        std::find_if(rules.begin(), rules.end(), [text](const Rule& rule) { return rule.isBroken(text); });
    if (broken != rules.end())
        throw ProviderError(WBEM_E_INVALID_PARAMETER,
                            format.toString().arg(RepositoryNames::Show(text), broken->reason));
}

} // namespace

void RepositoryNames::CheckName(QStringView name)
{
    Check(name, kNameRules, texts::kInvalidName);
}

void RepositoryNames::CheckNewName(QStringView name)
{
    CheckName(name);
    Check(name, kNewNameRules, texts::kInvalidName);
}

void RepositoryNames::CheckPath(QStringView path)
{
    Check(path, kPathRules, texts::kInvalidPath);
}

void RepositoryNames::CheckNewPath(QStringView path)
{
    CheckPath(path);
    Check(path, kNewPathRules, texts::kInvalidPath);
}

QString RepositoryNames::ParentOf(const QString& path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return path.size() <= 1 ? QString() : slash == 0 ? u"/"_s : path.left(slash);
}

QString RepositoryNames::Show(QStringView text, qsizetype most)
{
    const QStringView start = text.left(most);
    const bool isValid = start.isValidUtf16();
    QString shown;
    for (const QChar c : start) {
        const bool isPrintable = c.isSurrogate() ? isValid : c.isPrint();
        shown += isPrintable ? QString(c) : u"\\u%1"_s.arg(c.unicode(), 4, 16, QLatin1Char('0'));
    }
    return text.size() > start.size() ? shown + u'…' : shown;
}

} // namespace quenvolta
