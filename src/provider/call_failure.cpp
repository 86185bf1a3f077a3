#include "provider/call_failure.h"

#include "foundation/exception.h"
#include "platform/wbem/class_table.h"
#include "provider/instance_row.h"
#include "provider/provider_texts.h"
#include "provider/served_version.h"

#include <new>

namespace quenvolta
{

using namespace Qt::StringLiterals;

ProviderError CurrentError()
{
    try {
        throw;
    } catch (const ProviderError& error) {
        return error;
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
