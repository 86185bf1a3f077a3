#include "model/remote_activity.h"

#include "model/model.h"
#include "platform/wbem/error_info.h"
#include "wmi/wmi_error.h"

#include <utility>

namespace quenvolta
{

CRemoteActivity::CRemoteActivity(CModel& model, StartedActivity started)
    : m_model(model)
    , m_started(std::move(started))
{
}

bool CRemoteActivity::IsComplete()
{
    SetErrorInfo(nullptr);
    HRESULT status = S_OK;
    const HRESULT answer = m_started.result->GetCallStatus(0, &status);
    if (answer == WBEM_S_TIMEDOUT)
        return false;
    RaiseWmiError(answer);
    RaiseWmiError(status);
    return true;
}

void CRemoteActivity::Cancel()
{
    m_model.CancelActivity(m_started.id);
}

} // namespace quenvolta
