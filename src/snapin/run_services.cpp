#include "snapin/run_services.h"

#include "model/model.h"
#include "ui/wait_cursor.h"

#include <array>

namespace quenvolta
{

namespace
{

using Operation = void (CModel::*)();

// By service, then by action.
constexpr std::array<std::array<Operation, 2>, 2> kOperations{{
    {&CModel::StartHttpService, &CModel::StopHttpService},
    {&CModel::StartQdfsService, &CModel::StopQdfsService},
}};

} // namespace

bool RunServices(CModel& model, const QList<ServiceOperation>& operations)
{
    const WaitCursor cursor;
    for (const ServiceOperation& operation : operations) {
        const auto& ofService = kOperations[static_cast<std::size_t>(operation.service)];
        (model.*ofService[static_cast<std::size_t>(operation.action)])();
    }
    return true;
}

} // namespace quenvolta
