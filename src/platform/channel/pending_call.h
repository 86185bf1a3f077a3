#pragma once

#include "platform/channel/message.h"
#include "platform/wbem/error_info.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace quenvolta
{

/// A call that was sent, and what has come of its answer.
class PendingCall
{
public:
    /// The elements of the output parameter `streamed` are handed out by VisitElements while they come.
    explicit PendingCall(Operation operation, const std::optional<QString>& streamed = std::nullopt)
        : m_operation(operation)
        , m_streamed(streamed)
    {
    }

    /// The Result came, or the channel ended.
    bool IsDone() const { return m_done; }
    /// The call's own code; only when done.
    HRESULT Code() const { return m_code; }
    /// True when the answer was lost with the channel.
    bool WasLost() const { return m_lost; }
    const WbemObjectPtr& Object() const { return m_object; }
    /// Instances of an enumeration that came and weren't taken.
    QList<WbemObjectPtr>& Instances() { return m_instances; }
    /// Elements of the streamed parameter came and weren't visited.
    bool HasElements() const { return !m_elements.isEmpty(); }
    void VisitElements(const WbemObjectVisitor& visit);
    /// Gives the failure's information to the thread.
    void PublishError() const { SetErrorInfo(m_error); }

    /// Takes part of the answer. False when such a part can't belong to this call.
    bool Take(const RowsMessage& message);
    /// Takes the end of the answer. False when it lacks what the operation promises.
    bool Take(const ResultMessage& message);
    /// The answer was lost with the channel.
    void Lose(HRESULT code, const ErrorInfoPtr& error);

private:
    bool TakeParameters(const WbemObjectPtr& object);

    Operation m_operation;
    std::optional<QString> m_streamed;
    bool m_done = false;
    bool m_lost = false;
    HRESULT m_code = S_OK;
    WbemObjectPtr m_object;
    ErrorInfoPtr m_error;
    QList<WbemObjectPtr> m_instances;
    QList<RowsMessage> m_elements;
    QHash<QString, QList<WbemObjectPtr>> m_parameters; // of a method, by name
};

} // namespace quenvolta
