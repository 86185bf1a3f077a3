#include "dashboard/status_snapshot.h"

#include "foundation/com_exception.h"
#include "foundation/server_not_installed_exception.h"
#include "model/model.h"

#include <algorithm>
#include <array>

namespace quenvolta
{

namespace
{

constexpr std::array kAccessDeniedCodes{RPC_E_ACCESS_DENIED, WBEM_E_ACCESS_DENIED, E_ACCESSDENIED};

bool IsRpcError(HRESULT code)
{
    return code >= MakeHResult(0x80070600) && code <= MakeHResult(0x800706FF);
}

StatusError StatusErrorOfCode(HRESULT code)
{
    if (IsRpcError(code))
        return StatusError::Unreachable;
    if (std::ranges::find(kAccessDeniedCodes, code) != kAccessDeniedCodes.end())
        return StatusError::AccessDenied;
    return code == WBEM_E_PROVIDER_LOAD_FAILURE ? StatusError::BrokenManagement : StatusError::General;
}

/// Runs one reading; the text of its failure, empty after a success.
template <typename Read>
QString FailureOf(Read&& read)
{
    try {
        read();
    } catch (const Exception& exception) {
        return exception.GetMessage();
    }
    return {};
}

} // namespace

StatusError StatusErrorOf(const Exception& exception)
{
    if (const auto* com = dynamic_cast<const ComException*>(&exception))
        return StatusErrorOfCode(com->Code());
    if (dynamic_cast<const ServerNotInstalledException*>(&exception) != nullptr)
        return StatusError::NotInstalled;
    return StatusError::BrokenManagement;
}

CStatusSnapshot CStatusSnapshot::Read(CModel& model)
{
    CStatusSnapshot status;
    try {
        ServerStatus server = model.GetServerStatus();
        status.httpServiceState = server.serviceState;
        status.settings = std::move(server.settings);
        if (model.HasCapability(ServerCapability::kQdfs))
            status.qdfsService = model.GetQdfsServiceState();
        status.versions = model.GetServerVersionInfo();
        status.ReadCounts(model);
        status.isRead = true;
    } catch (const Exception& exception) {
        status.error = StatusErrorOf(exception);
        status.errorText = exception.GetMessage();
    }
    return status;
}

void CStatusSnapshot::ReadCounts(CModel& model)
{
    repositoriesFailure = FailureOf([&] { repositoryCount = model.GetRepositories().size(); });
    if (settings.windowsAuthentication)
        return;
    accountsFailure = FailureOf([&] {
        userCount = model.GetUsers().size();
        groupCount = model.GetGroups().size();
    });
}

} // namespace quenvolta
