#include "snapin/service_rules.h"

namespace quenvolta
{

namespace
{

// The states of a service.
constexpr std::uint32_t kStopped = 1;
constexpr std::uint32_t kStartPending = 2;
constexpr std::uint32_t kStopPending = 3;
constexpr std::uint32_t kRunning = 4;

bool CanStart(std::uint32_t state)
{
    return state != kStartPending && state != kRunning;
}

bool CanStop(std::uint32_t state)
{
    return state != kStopped && state != kStopPending;
}

} // namespace

QList<ServiceOperation> OperationsToStart(const CStatusSnapshot& status)
{
    QList<ServiceOperation> operations;
    if (!status.isRead)
        return operations;
    if (CanStart(status.httpServiceState))
        operations.append({ServiceAction::Start, ServerService::Http});
    if (status.qdfsService && CanStart(status.qdfsService->state) &&
        status.qdfsService->startMode != kStartModeDisabled)
        operations.append({ServiceAction::Start, ServerService::Qdfs});
    return operations;
}

QList<ServiceOperation> OperationsToStop(const CStatusSnapshot& status)
{
    QList<ServiceOperation> operations;
    if (!status.isRead)
        return operations;
    if (CanStop(status.httpServiceState))
        operations.append({ServiceAction::Stop, ServerService::Http});
    if (status.qdfsService && CanStop(status.qdfsService->state))
        operations.append({ServiceAction::Stop, ServerService::Qdfs});
    return operations;
}

QList<ServiceOperation> OperationsToRestart(const CStatusSnapshot& status)
{
    QList<ServiceOperation> operations = OperationsToStop(status);
    if (!status.isRead)
        return operations;
    if (status.qdfsService && status.qdfsService->startMode != kStartModeDisabled)
        operations.append({ServiceAction::Start, ServerService::Qdfs});
    operations.append({ServiceAction::Start, ServerService::Http});
    return operations;
}

} // namespace quenvolta
