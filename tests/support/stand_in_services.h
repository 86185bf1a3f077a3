#pragma once

#include "platform/wbem/proxy_blanket.h"
#include "support/stand_in_server.h"

namespace quenvolta::test
{

/// One connection to a namespace of a stand-in server.
class StandInServices : public IWbemServices, public IClientSecurity
{
public:
    StandInServices(StandInServer& server, const QString& namespacePath);

    HRESULT GetObject(const QString& path, int flags, const WbemContextPtr& context, WbemObjectPtr* object) override;
    HRESULT CreateInstanceEnum(const QString& className, int flags, const WbemContextPtr& context,
                               EnumWbemClassObjectPtr* enumerator) override;
    HRESULT ExecMethod(const QString& path, const QString& method, int flags, const WbemContextPtr& context,
                       const WbemObjectPtr& in, WbemObjectPtr* out, WbemCallResultPtr* result) override;

    HRESULT QueryBlanket(ProxyBlanket* blanket) const override;
    HRESULT SetBlanket(const ProxyBlanket& blanket) override;

protected:
    QUuid m_nextRequestId;

private:
    struct Target {
        ClassDefinitionPtr definition;
        QMap<QString, QString> keys;
        bool isInstance = false;
    };

    bool IsDropped() const { return m_connection <= m_server.m_dropped; }
    RecordedCall& Record(Operation operation, const QString& path, const WbemContextPtr& context);
    HRESULT Resolve(const QString& path, Target* target) const;
    HRESULT ReadObject(const QString& path, const Target& target, WbemObjectPtr* object) const;
    HRESULT CheckCall(const Target& target, const QString& method, const WbemObjectPtr& in,
                      std::shared_ptr<WbemObject>* checked) const;
    static HRESULT Work(StandInServer& server, const Target& target, const QString& method,
                        const std::shared_ptr<WbemObject>& in, const QUuid& requestId, WbemObjectPtr* out);

    StandInServer& m_server;
    QString m_namespacePath;
    const ClassTable& m_table;
    int m_connection;
    ProxyBlanket m_blanket;
};

/// The same with requests that carry an identifier.
class IdentifiedStandInServices final : public StandInServices, public IRequestIdentity
{
public:
    using StandInServices::StandInServices;
    void SetNextRequestId(const QUuid& id) override { m_nextRequestId = id; }
};

} // namespace quenvolta::test
