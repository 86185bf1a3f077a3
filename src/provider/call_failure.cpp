#include "provider/call_failure.h"

#include "foundation/win32_exception.h"
#include "platform/registry/registry.h"
#include "platform/wbem/class_table.h"
#include "provider/instance_row.h"
#include "provider/provider_texts.h"
#include "provider/served_version.h"
#include "provider/svn/repository_texts.h"

#include <array>
#include <new>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// Settings that can't be written fail with the system's numbers; the console gets those that other files fail with.
ProviderError ErrorOf(const Win32Exception& failure)
{
    struct Kind {
        HRESULT system;
        HRESULT code;
        QStringView advice;
    };
    constexpr std::array kKinds{
        Kind{HResultFromWin32(ERROR_DISK_FULL), WBEM_E_OUT_OF_DISK_SPACE, texts::kAdviceDisk},
        Kind{HResultFromWin32(ERROR_ACCESS_DENIED), WBEM_E_ACCESS_DENIED, texts::kAdviceAccess},
    };
    for (const Kind& kind : kKinds) {
        if (kind.system == failure.Code())
            return ProviderError(kind.code, failure.GetMessage() + u' ' + kind.advice.toString(), failure.Context());
    }
    return ProviderError(WBEM_E_FAILED, failure.GetMessage());
}

} // namespace

ProviderError CurrentError()
{
    try {
        throw;
    } catch (const ProviderError& error) {
        return error;
    } catch (const Win32Exception& failure) {
        return ErrorOf(failure);
    } catch (const Exception& failure) {
        return ProviderError(WBEM_E_FAILED, failure.GetMessage());
    } catch (const std::bad_alloc&) {
        return ProviderError(E_OUTOFMEMORY, replies::kOutOfMemory.Whole());
    } catch (const std::exception& failure) {
        return ProviderError(WBEM_E_FAILED, replies::kInternalFailure.arg(QString::fromLocal8Bit(failure.what())));
    }
}

ResultMessage FailureResult(std::uint32_t callId, const ProviderError& error)
{
    InstanceRow row(ClassTable(u"Quenvolta"_s, ServedVersion().Table()).Find(u"Quenvolta_ExtendedError"_s));
    row.Set(u"Description", error.Description())
        .Set(u"Summary", error.Summary())
        .Set(u"Details", error.Details())
        .Set(u"ProbableReason", static_cast<std::uint32_t>(error.ProbableReason()));
    ResultMessage result;
    result.callId = callId;
    result.code = error.Code();
    result.error = row.ToObject();
    return result;
}

} // namespace quenvolta
