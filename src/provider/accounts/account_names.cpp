#include "provider/accounts/account_names.h"

#include "provider/accounts/account_texts.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"

#include <QString>

#include <algorithm>
#include <array>

namespace quenvolta
{

namespace
{

constexpr qsizetype kMaxNameBytes = 255;
// The hash looks no further: whatever follows would be accepted at sign-in.
constexpr qsizetype kMaxPasswordBytes = 72;

// A byte order mark is lost where a name is read back from UTF-8.
bool IsControl(QChar c)
{
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator ||
           c == QChar::ByteOrderMark;
}

bool IsLonger(QStringView text, qsizetype bytes)
{
    return text.size() > bytes || text.toUtf8().size() > bytes;
}

bool HasReserved(QStringView name)
{
    constexpr QStringView kReserved = u":=,/[]*";
    return std::any_of(name.begin(), name.end(), [&](QChar c) { return kReserved.contains(c); });
}

struct Rule {
    bool (*isBroken)(QStringView);
    accounttexts::Text reason;
};

constexpr std::array kNameRules{
    Rule{[](QStringView n) { return n.isEmpty(); }, accounttexts::kIsEmpty},
    Rule{[](QStringView n) { return IsLonger(n, kMaxNameBytes); }, accounttexts::kIsTooLong},
    Rule{[](QStringView n) { return !n.isValidUtf16(); }, accounttexts::kHasSurrogate},
    Rule{[](QStringView n) { return std::any_of(n.begin(), n.end(), &IsControl); }, accounttexts::kHasControl},
    Rule{[](QStringView n) { return n.front().isSpace() || n.back().isSpace(); }, accounttexts::kHasOuterBlank},
    Rule{&HasReserved, accounttexts::kHasReserved},
    Rule{[](QStringView n) { return QStringView(u"#@&$~").contains(n.front()); }, accounttexts::kHasReservedStart},
};

constexpr std::array kPasswordRules{
    Rule{[](QStringView p) { return IsLonger(p, kMaxPasswordBytes); }, accounttexts::kPasswordTooLong},
    Rule{[](QStringView p) { return !p.isValidUtf16(); }, accounttexts::kHasSurrogate},
    Rule{[](QStringView p) { return p.contains(QChar(u'\0')); }, accounttexts::kPasswordHasNul},
};

template <typename Rules>
const Rule* FindBroken(const Rules& rules, QStringView text)
{
    const auto broken = std::find_if(rules.begin(), rules.end(), [text](const Rule& r) { return r.isBroken(text); });
    return broken == rules.end() ? nullptr : &*broken;
}

void Check(const Rule* broken, QStringView shown, const accounttexts::Text& format)
{
    if (broken)
        throw ProviderError(WBEM_E_INVALID_PARAMETER, format.arg(RepositoryNames::Show(shown), broken->reason.Whole()));
}

} // namespace

void AccountNames::CheckUser(QStringView name)
{
    Check(FindBroken(kNameRules, name), name, accounttexts::kInvalidUserName);
}

void AccountNames::CheckGroup(QStringView name)
{
    Check(FindBroken(kNameRules, name), name, accounttexts::kInvalidGroupName);
}

bool AccountNames::IsPlain(QStringView name)
{
    return FindBroken(kNameRules, name) == nullptr;
}

void AccountNames::CheckPassword(QStringView user, QStringView password)
{
    Check(FindBroken(kPasswordRules, password), user, accounttexts::kInvalidPassword);
}

} // namespace quenvolta
