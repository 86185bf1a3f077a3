#include "support/stand_in_server.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

TableVersion ToTableVersion(const QString& version)
{
    return {version.section(u'.', 0, 0).toInt(), version.section(u'.', 1, 1).toInt()};
}

template <typename Value>
Value Input(const std::shared_ptr<WbemObject>& in, const QString& parameter)
{
    Variant value;
    if (in)
        in->Get(parameter, &value, nullptr);
    const Value* held = std::get_if<Value>(&value);
    if (!held)
        ADD_FAILURE() << "no input parameter " << parameter.toStdString();
    return held ? *held : Value{};
}

QString ParentOf(const QString& path)
{
    return path.left(qMax<qsizetype>(path.lastIndexOf(u'/'), 1));
}

} // namespace

StandInRepository* StandInData::FindRepository(const QString& name)
{
    const auto found = std::find_if(repositories.begin(), repositories.end(),
                                    [&name](const StandInRepository& each) { return each.name == name; });
    return found == repositories.end() ? nullptr : &*found;
}

Variant MethodContext::Value(const QString& parameter) const
{
    Variant value;
    if (in)
        in->Get(parameter, &value, nullptr);
    return value;
}

std::int32_t MethodContext::Number(const QString& parameter) const
{
    return Input<std::int32_t>(in, parameter);
}

QString MethodContext::Text(const QString& parameter) const
{
    return Input<QString>(in, parameter);
}

QStringList MethodContext::Texts(const QString& parameter) const
{
    return Input<QStringList>(in, parameter);
}

QList<WbemObjectPtr> MethodContext::Objects(const QString& parameter) const
{
    return Input<QList<WbemObjectPtr>>(in, parameter);
}

StandInServer::StandInServer(const QString& version)
    : m_table(u"Quenvolta"_s, ToTableVersion(version))
    , m_standardTable(u"CIMV2"_s, ToTableVersion(version))
{
    data.versionInfo = {
        {u"Version"_s, version}, {u"SubversionVersion"_s, u"1.14.2"_s}, {u"ApacheVersion"_s, u"2.4.62"_s}};
    data.service = {{u"Name"_s, u"QuenvoltaServer"_s},
                    {u"ServiceState"_s, 4U},
                    {u"ExitCode"_s, 0U},
                    {u"RepositoriesRoot"_s, u"/srv/repositories"_s},
                    {u"AdjustRepositoriesRootPermissions"_s, true},
                    {u"ServerName"_s, u"srv1"_s},
                    {u"UseCustomServerName"_s, false},
                    {u"CustomServerName"_s, QString(u""_s)},
                    {u"IsDomainController"_s, false},
                    {u"UseSecureConnection"_s, true},
                    {u"UnsecurePort"_s, 80U},
                    {u"SecurePort"_s, 443U},
                    {u"AuthType"_s, 0U},
                    {u"AuthWindowsBasic"_s, true},
                    {u"AuthWindowsIntegrated"_s, true},
                    {u"UseUPNFormat"_s, false},
                    {u"ListenAllIPAddresses"_s, true},
                    {u"ListenIPAddressesArray"_s, QStringList{}},
                    {u"URL"_s, u"https://srv1/svn/"_s},
                    {u"AccessLoggingEnabled"_s, false},
                    {u"OperationalLoggingEnabled"_s, true},
                    {u"RedirectFromLegacyWebInterface"_s, true}};
    data.qdfsService = {{u"Name"_s, u"qdfssvc"_s}, {u"ServiceState"_s, 4U}, {u"StartMode"_s, 2U}, {u"ExitCode"_s, 0U}};
    AddRepositoryMethods();
    AddFolderMethods();
    AddAccountMethods();
    AddPermissionMethods();
    AddServiceMethods();
    AddSettingMethods();
    AddCertificateMethods();
    AddHookMethods();
    AddRoleMethods();
}

void StandInServer::Fail(Operation operation, const QString& name, const Failure& failure, int count, int skip)
{
    m_failures.append({operation, name, failure, count, skip});
}

std::optional<Failure> StandInServer::TakeFailure(Operation operation, const QString& name)
{
    for (FailureRule& rule : m_failures) {
        if (rule.operation != operation || rule.count == 0 || !(rule.name.isEmpty() || rule.name == name))
            continue;
        if (rule.skip > 0) {
            --rule.skip;
            continue;
        }
        if (rule.count > 0)
            --rule.count;
        return rule.failure;
    }
    return std::nullopt;
}

void StandInServer::Handle(const QString& className, const QString& method, MethodHandler handler)
{
    ClassDefinitionPtr definition = ClassTable(u"Quenvolta"_s, {99, 0}).Find(className);
    if (!definition)
        definition = m_standardTable.Find(className);
    ASSERT_TRUE(definition && definition->FindMethod(method)) << className.toStdString() << method.toStdString();
    m_handlers.insert(className + u'.' + method, std::move(handler));
}

QList<RecordedCall> StandInServer::CallsOf(const QString& method) const
{
    QList<RecordedCall> calls;
    std::copy_if(m_calls.cbegin(), m_calls.cend(), std::back_inserter(calls),
                 [&method](const RecordedCall& call) { return call.method == method; });
    return calls;
}

QList<RecordedCall> StandInServer::CallsOf(Operation operation) const
{
    QList<RecordedCall> calls;
    std::copy_if(m_calls.cbegin(), m_calls.cend(), std::back_inserter(calls),
                 [operation](const RecordedCall& call) { return call.operation == operation; });
    return calls;
}

const ClassTable& StandInServer::Table(const QString& namespacePath) const
{
    return namespacePath.endsWith("\\CIMV2"_L1, Qt::CaseInsensitive) ? m_standardTable : m_table;
}

std::shared_ptr<WbemObject> StandInServer::Make(const QString& className,
                                                const QMap<QString, Variant>& properties) const
{
    ClassDefinitionPtr definition = m_table.Find(className);
    if (!definition)
        definition = m_standardTable.Find(className);
    if (!definition) {
        ADD_FAILURE() << "no class " << className.toStdString();
        return nullptr;
    }
    auto object = std::make_shared<WbemObject>(definition);
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        const HRESULT code = object->Put(property.key(), property.value());
        EXPECT_TRUE(Succeeded(code) || code == WBEM_E_NOT_FOUND) << property.key().toStdString();
    }
    return object;
}

ErrorInfoPtr StandInServer::ExtendedError(const QString& description, const QString& summary, const QString& details,
                                          std::uint32_t probableReason) const
{
    auto error = std::make_shared<WbemErrorObject>(m_table.Find(u"Quenvolta_ExtendedError"_s));
    error->Put(u"Description"_s, description);
    error->Put(u"Summary"_s, summary);
    error->Put(u"Details"_s, details);
    error->Put(u"ProbableReason"_s, probableReason);
    return error;
}

WbemObjectPtr StandInServer::RepositoryObject(const StandInRepository& repository) const
{
    const auto number = [](const std::optional<std::uint32_t>& value) { return value ? Variant{*value} : Variant{}; };
    const bool slave = repository.type == 2U;
    return Make(u"Quenvolta_Repository"_s,
                {{u"Name"_s, repository.name},
                 {u"URL"_s, QString(u"https://srv1/svn/"_s + repository.name)},
                 {u"InheritedOnlyPermissions"_s, data.permissions.value({repository.name, u"/"_s}).isEmpty()},
                 {u"Type"_s, number(repository.type)},
                 {u"TotalRevisions"_s, number(repository.revisions)},
                 {u"MasterServer"_s, slave ? Variant{repository.masterServer} : Variant{}},
                 {u"MasterRepository"_s, slave ? Variant{repository.masterRepository} : Variant{}}});
}

WbemObjectPtr StandInServer::EntryObject(const StandInRepository& repository, const QString& path) const
{
    const bool root = path == u"/";
    if (!root && !repository.entries.contains(path))
        return nullptr;
    return Make(u"Quenvolta_RepositoryEntry"_s,
                {{u"RepositoryName"_s, repository.name},
                 {u"Path"_s, path},
                 {u"Kind"_s, root || repository.entries.value(path) ? 1U : 0U},
                 {u"Name"_s, QString(path.sliced(path.lastIndexOf(u'/') + 1))},
                 {u"ParentPath"_s, root ? Variant{} : Variant{ParentOf(path)}},
                 {u"URL"_s, QString(u"https://srv1/svn/"_s + repository.name + path)},
                 {u"InheritedOnlyPermissions"_s, data.permissions.value({repository.name, path}).isEmpty()}});
}

QList<WbemObjectPtr> StandInServer::Instances(const QString& className) const
{
    QList<WbemObjectPtr> objects;
    if (className == u"Quenvolta_Repository") {
        for (const StandInRepository& repository : data.repositories)
            objects.append(RepositoryObject(repository));
    } else if (className == u"Quenvolta_User") {
        for (const QString& user : data.users)
            objects.append(Make(className, {{u"Name"_s, user}}));
    } else if (className == u"Quenvolta_Group") {
        for (const StandInGroup& group : data.groups)
            objects.append(Make(className, {{u"Name"_s, group.name}}));
    } else if (className == u"Quenvolta_Service") {
        objects.append(Make(className, data.service));
    } else if (className == u"Quenvolta_QdfsService") {
        objects.append(Make(className, data.qdfsService));
    } else if (className == u"Quenvolta_VersionInfo" && !data.versionInfo.isEmpty()) {
        objects.append(Make(className, data.versionInfo));
    } else if (className == u"Win32_NetworkAdapterConfiguration") {
        for (qsizetype i = 0; i < data.adapters.size(); ++i) {
            const std::optional<QStringList>& addresses = data.adapters[i];
            objects.append(Make(className, {{u"Index"_s, QString::number(i)},
                                            {u"IPAddress"_s, addresses ? Variant{*addresses} : Variant{}}}));
        }
    }
    return objects;
}

WbemObjectPtr StandInServer::FindInstance(const ClassDefinition& definition, const QMap<QString, QString>& keys) const
{
    if (definition.name == u"Quenvolta_RepositoryEntry") {
        for (const StandInRepository& repository : data.repositories) {
            if (repository.name == keys.value(u"RepositoryName"_s))
                return EntryObject(repository, keys.value(u"Path"_s));
        }
        return nullptr;
    }
    if (definition.name == u"Quenvolta_SecurityDescriptor") {
        const QString secured = keys.value(u"AssociatedObject"_s);
        for (auto list = data.permissions.cbegin(); list != data.permissions.cend(); ++list) {
            const auto& [repository, path] = list.key();
            const WbemObjectPtr object = repository.isEmpty() ? Make(u"Quenvolta_Service"_s, data.service)
                                         : path == u"/" ? Make(u"Quenvolta_Repository"_s, {{u"Name"_s, repository}})
                                                        : Make(u"Quenvolta_RepositoryEntry"_s,
                                                               {{u"RepositoryName"_s, repository}, {u"Path"_s, path}});
            Variant relativePath;
            object->Get(u"__RELPATH"_s, &relativePath);
            if (relativePath == Variant{secured}) {
                return Make(definition.name,
                            {{u"AssociatedObject"_s, secured}, {u"Permissions"_s, PermissionObjects(list.key())}});
            }
        }
        return nullptr;
    }
    const QList<WbemObjectPtr> objects = Instances(definition.name);
    const auto found = std::find_if(objects.cbegin(), objects.cend(), [&keys](const WbemObjectPtr& object) {
        return std::all_of(keys.keyValueBegin(), keys.keyValueEnd(), [&object](const auto& key) {
            Variant value;
            return Succeeded(object->Get(key.first, &value)) && value == Variant{key.second};
        });
    });
    return found == objects.cend() ? nullptr : *found;
}

} // namespace quenvolta::test
