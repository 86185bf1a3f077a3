#include "provider/svn/svn_failure.h"

#include "provider/provider_error.h"
#include "provider/svn/repository_texts.h"

#include <QStringList>

#include <algorithm>
#include <apr_errno.h>
#include <array>
#include <cerrno>
#include <memory>
#include <svn_error.h>
#include <svn_error_codes.h>
#include <vector>

namespace quenvolta
{

namespace
{

struct FailureKind {
    bool (*includes)(apr_status_t);
    HRESULT code;
    QStringView advice;
};

// The first row that includes any error of the chain decides. The system's "no such file" is left out on purpose:
// inside an opened repository it means damage, not that the administrator named something that isn't there.
constexpr std::array kKinds{
    FailureKind{[](apr_status_t s) { return s == SVN_ERR_CANCELLED; }, WBEM_E_CALL_CANCELLED, {}},
    FailureKind{[](apr_status_t s) { return s == ENOSPC || s == EDQUOT; }, WBEM_E_OUT_OF_DISK_SPACE,
                texts::kAdviceDisk},
    FailureKind{[](apr_status_t s) { return s == EACCES || s == EPERM || s == EROFS; }, WBEM_E_ACCESS_DENIED,
                texts::kAdviceAccess},
    FailureKind{[](apr_status_t s) { return s == SVN_ERR_FS_ALREADY_EXISTS || s == EEXIST; }, WBEM_E_ALREADY_EXISTS,
                texts::kAdviceExists},
    FailureKind{[](apr_status_t s) { return s == SVN_ERR_FS_NOT_FOUND; }, WBEM_E_NOT_FOUND, {}},
    FailureKind{[](apr_status_t s) {
                    return s == SVN_ERR_FS_LOCK_OWNER_MISMATCH || s == SVN_ERR_FS_BAD_LOCK_TOKEN ||
                           s == SVN_ERR_FS_PATH_ALREADY_LOCKED;
                },
                WBEM_E_FAILED, texts::kAdviceLocked},
    FailureKind{[](apr_status_t s) { return s == EAGAIN; }, WBEM_E_FAILED, texts::kAdviceBusy},
    FailureKind{[](apr_status_t) { return true; }, WBEM_E_FAILED, {}},
};

const FailureKind& KindOf(const std::vector<apr_status_t>& chain)
{
    return *std::find_if(kKinds.begin(), kKinds.end(), [&chain](const FailureKind& kind) {
        return std::any_of(chain.begin(), chain.end(), kind.includes);
    });
}

QString AsSentence(const QString& text)
{
    return text.isEmpty() || text.endsWith(u'.') ? text : text + u'.';
}

[[noreturn]] void Throw(const QString& what, const std::vector<apr_status_t>& codes, QStringList messages,
                        const QString& details)
{
    messages.removeDuplicates();
    QStringList sentences{what, AsSentence(messages.first())};
    if (messages.size() > 1)
        sentences << AsSentence(messages.last()); // the innermost cause says most
    const FailureKind& kind = KindOf(codes);
    if (!kind.advice.isEmpty())
        sentences << kind.advice.toString();
    throw ProviderError(kind.code, sentences.join(u' '), what, details);
}

} // namespace

void ThrowSvnError(svn_error_t* error, const QString& what)
{
    const std::unique_ptr<svn_error_t, decltype(&svn_error_clear)> owned(svn_error_purge_tracing(error),
                                                                         &svn_error_clear);
    std::vector<apr_status_t> codes;
    QStringList messages;
    QStringList lines;
    for (const svn_error_t* cause = owned.get(); cause != nullptr; cause = cause->child) {
        std::array<char, 2048> buffer{};
        messages << QString::fromUtf8(svn_err_best_message(cause, buffer.data(), buffer.size()));
        lines << texts::kCauseLine.toString().arg(cause->apr_err, 6, 10, QLatin1Char('0')).arg(messages.last());
        codes.push_back(cause->apr_err);
    }
    Throw(what, codes, messages, lines.join(u'\n'));
}

void ThrowSystemError(int error, const QString& what)
{
    const QString message = qt_error_string(error);
    Throw(what, {error}, {message}, message);
}

} // namespace quenvolta
