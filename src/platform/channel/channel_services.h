#pragma once

#include "platform/channel/channel.h"
#include "platform/wbem/proxy_blanket.h"
#include "platform/wbem/wbem_services.h"

#include <QString>
#include <QUuid>

#include <memory>
#include <optional>

namespace quenvolta
{

/// A namespace that is reached through a channel.
class ChannelServices final : public IWbemServices,
                              public IMethodElements,
                              public IRequestIdentity,
                              public IClientSecurity
{
public:
    /// `namespaceName` is the part behind `root\`.
    ChannelServices(std::shared_ptr<Channel> channel, QString namespaceName);

    /// Asks the provider for the namespace.
    HRESULT Open();

    HRESULT GetObject(const QString& path, int flags, const WbemContextPtr& context, WbemObjectPtr* object) override;
    HRESULT CreateInstanceEnum(const QString& className, int flags, const WbemContextPtr& context,
                               EnumWbemClassObjectPtr* enumerator) override;
    HRESULT ExecMethod(const QString& path, const QString& method, int flags, const WbemContextPtr& context,
                       const WbemObjectPtr& in, WbemObjectPtr* out, WbemCallResultPtr* result) override;

    HRESULT VisitElements(const QString& path, const QString& method, const WbemObjectPtr& in, const QString& parameter,
                          const WbemObjectVisitor& visit) override;

    void SetNextRequestId(const QUuid& id) override { m_nextRequestId = id; }

    HRESULT QueryBlanket(ProxyBlanket* blanket) const override;
    HRESULT SetBlanket(const ProxyBlanket& blanket) override;

private:
    /// Completes the call and sends it; `streamed` is the parameter whose elements are wanted piece by piece.
    /// WBEM_E_INVALID_PARAMETER when it can't travel.
    HRESULT Send(CallMessage call, std::shared_ptr<PendingCall>* pending,
                 const std::optional<QString>& streamed = std::nullopt);
    /// Sends and waits for the answer; its code.
    HRESULT SendAndWait(CallMessage call, std::shared_ptr<PendingCall>* pending);

    std::shared_ptr<Channel> m_channel;
    QString m_namespaceName;
    QUuid m_nextRequestId;
    ProxyBlanket m_blanket;
};

} // namespace quenvolta
