#pragma once

#include "platform/wbem/class_table.h"
#include "platform/wbem/error_info.h"
#include "platform/wbem/wbem_object.h"
#include "platform/wbem/wbem_services.h"
#include "support/stand_in_data.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>

namespace quenvolta::test
{

enum class Operation { Connect, GetObject, EnumerateInstances, ReadInstances, ExecMethod };

/// A call as the server saw it.
struct RecordedCall {
    Operation operation;
    /// The object path, the class's name, or the namespace's path for Connect.
    QString path;
    /// Empty unless a method was called.
    QString method;
    /// The input parameters that are not null.
    QMap<QString, Variant> in;
    QUuid requestId;
    /// The value "ActivityId" of the call's context.
    QString activityId;
    /// 1 for the first connection that was opened.
    int connection = 0;
};

/// How a call fails.
struct Failure {
    HRESULT code = WBEM_E_FAILED;
    ErrorInfoPtr information = {};
    /// The work is done, and then the answer is lost.
    bool afterWork = false;
};

/// A call of a method on its way to a handler.
struct MethodContext {
    class StandInServer& server;
    /// The value of the target's first key; empty for a static method.
    QString key;
    /// The input parameters, each null unless it was put. Null when the method has none.
    std::shared_ptr<WbemObject> in;
    /// The output parameters to fill. Null when the method has none.
    std::shared_ptr<WbemObject> out;

    /// Null for a parameter that wasn't put or that this version doesn't have.
    Variant Value(const QString& parameter) const;
    // These fail the test when the parameter wasn't put.
    std::int32_t Number(const QString& parameter) const;
    QString Text(const QString& parameter) const;
    QStringList Texts(const QString& parameter) const;
    QList<WbemObjectPtr> Objects(const QString& parameter) const;
};
using MethodHandler = std::function<HRESULT(MethodContext&)>;

/// A call that was made to return at once and that a test ends.
class PendingCall
{
public:
    /// Does the method's work and ends the call with its outcome.
    void Complete();
    /// Ends the call with a failure.
    void Fail(const Failure& failure);
    bool IsComplete() const { return m_status.has_value(); }
    const QString& ActivityId() const { return m_activityId; }

private:
    friend class StandInServices;
    friend class StandInCallResult;
    std::function<HRESULT(WbemObjectPtr*)> m_work;
    QString m_activityId;
    std::optional<HRESULT> m_status;
    WbemObjectPtr m_result;
    ErrorInfoPtr m_information;
};

/// A managed server in memory. It offers the management interfaces for one version and refuses what the class table
/// does not hold for it, keeps simple data, records every call, and fails when it is told to.
///
///     StandInServer server(u"2.6.0"_s);
///     server.data.repositories.append({u"Project"_s});
///     CModel model(server.LocatorFactory(), preferences);
///     server.Fail(Operation::ExecMethod, u"Create"_s, {E_ACCESSDENIED});
///
/// It must outlive every connection to it.
class StandInServer
{
public:
    /// A local server that runs, with the default settings and no repositories.
    explicit StandInServer(const QString& version = QStringLiteral("3.3.1"));
    StandInServer(const StandInServer&) = delete;
    StandInServer& operator=(const StandInServer&) = delete;

    /// Makes the locator (fits WbemLocatorFactory).
    std::function<HRESULT(WbemLocatorPtr*)> LocatorFactory();

    StandInData data;

    // Connecting: what each step answers
    HRESULT locatorCode = S_OK;
    HRESULT queryBlanketCode = S_OK;
    HRESULT setBlanketCode = S_OK;
    HRESULT delegateProbeCode = S_OK;
    HRESULT impersonateProbeCode = S_OK;
    bool hasNamespace = true;
    /// Calls that return at once stay open until a test ends them.
    bool holdAsyncCalls = false;
    /// Handles without IRequestIdentity.
    bool withoutRequestIdentity = false;

    /// Lets the next `count` matching calls fail (-1: all), after `skip` that pass. `name` is the method, the class of
    /// the path, or the namespace's path; empty for any.
    void Fail(Operation operation, const QString& name, const Failure& failure, int count = 1, int skip = 0);
    void ClearFailures() { m_failures.clear(); }
    /// Every open connection is lost, as when the server's process was killed; new ones can be opened.
    void DropConnections() { m_dropped = m_connections; }

    /// Takes the place of a method's own work.
    void Handle(const QString& className, const QString& method, MethodHandler handler);

    const QList<RecordedCall>& Calls() const { return m_calls; }
    /// The recorded calls of one method, or all of one operation.
    QList<RecordedCall> CallsOf(const QString& method) const;
    QList<RecordedCall> CallsOf(Operation operation) const;
    void ClearCalls() { m_calls.clear(); }
    const QList<std::shared_ptr<PendingCall>>& PendingCalls() const { return m_pending; }

    /// An instance with the given properties; those that this version doesn't have are left out.
    std::shared_ptr<WbemObject> Make(const QString& className, const QMap<QString, Variant>& properties) const;
    /// The server's extended error.
    ErrorInfoPtr ExtendedError(const QString& description, const QString& summary = {}, const QString& details = {},
                               std::uint32_t probableReason = 0) const;
    QList<WbemObjectPtr> PermissionObjects(const std::pair<QString, QString>& target) const;
    WbemObjectPtr EntryObject(const StandInRepository& repository, const QString& path) const;

private:
    friend class StandInServices;
    friend class StandInLocator;
    friend class StandInEnumerator;
    friend class StandInCallResult;

    struct FailureRule {
        Operation operation;
        QString name;
        Failure failure;
        int count;
        int skip;
    };

    const ClassTable& Table(const QString& namespacePath) const;
    std::optional<Failure> TakeFailure(Operation operation, const QString& name);
    QList<WbemObjectPtr> Instances(const QString& className) const;
    WbemObjectPtr FindInstance(const ClassDefinition& definition, const QMap<QString, QString>& keys) const;
    WbemObjectPtr RepositoryObject(const StandInRepository& repository) const;
    void AddRepositoryMethods();
    void AddFolderMethods();
    void AddAccountMethods();
    void AddPermissionMethods();
    void AddServiceMethods();
    void AddSettingMethods();
    void AddCertificateMethods();
    void AddHookMethods();
    void AddRoleMethods();
    void AddServerRole(const QString& className, const QString& subject, const QString& parameter,
                       QStringList StandInData::*list);
    void AddRepositoryRole(const QString& subject, const QString& parameter, StandInRole StandInRepository::*role);
    QList<WbemObjectPtr> WindowsAccounts(const QStringList& identifiers) const;
    HRESULT CreateRepository(MethodContext& call, StandInRepository repository);

    ClassTable m_table;
    ClassTable m_standardTable;
    QHash<QString, MethodHandler> m_handlers; // by "Class.Method"
    QList<FailureRule> m_failures;
    QList<RecordedCall> m_calls;
    QList<std::shared_ptr<PendingCall>> m_pending;
    QHash<QUuid, WbemObjectPtr> m_done; // what was done under a request's identifier and whose answer was lost
    int m_connections = 0;
    int m_dropped = 0;
};

} // namespace quenvolta::test
