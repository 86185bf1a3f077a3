#include "provider/server_namespaces.h"

#include "provider/accounts/account_store.h"
#include "provider/activities/activity_class.h"
#include "provider/activities/import_methods.h"
#include "provider/certificates/certificate_methods.h"
#include "provider/certificates/certificate_store.h"
#include "provider/classes/group_class.h"
#include "provider/classes/qdfs_service_class.h"
#include "provider/classes/repository_class.h"
#include "provider/classes/repository_entry_class.h"
#include "provider/classes/repository_security_methods.h"
#include "provider/classes/security_descriptor_class.h"
#include "provider/classes/service_class.h"
#include "provider/classes/user_class.h"
#include "provider/classes/version_info_class.h"
#include "provider/data_lock.h"
#include "provider/hooks/hook_methods.h"
#include "provider/provider_error.h"
#include "provider/roles/role_methods.h"
#include "provider/server_settings_reader.h"
#include "provider/standard/directory_class.h"
#include "provider/standard/network_adapter_class.h"
#include "provider/standard/system_account_class.h"
#include "provider/svn/repository_store.h"
#include "provider/svn/svn_log.h"
#include "provider/web/web_leftovers.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

std::unique_ptr<ManagementNamespace> MakeServerNamespace(DataFolder& data, const ServedVersion& version)
{
    auto server = std::make_unique<ManagementNamespace>(u"Quenvolta"_s, version.Table());
    const auto accounts = std::make_shared<AccountStore>(data);
    const auto security = std::make_shared<RepositorySecurityMethods>(data, accounts);
    const auto repositories = std::make_shared<RepositoryClass>(data, accounts);
    security->AddTo(*repositories);
    server->Add(u"Quenvolta_VersionInfo"_s, std::make_shared<VersionInfoClass>(version));
    ImportMethods::AddTo(*repositories, data);
    HookMethods::AddTo(*repositories, data);
    server->Add(u"Quenvolta_Repository"_s, repositories);
    server->Add(u"Quenvolta_RepositoryEntry"_s, std::make_shared<RepositoryEntryClass>(data, accounts));
    const auto service = std::make_shared<ServiceClass>(data);
    service->Web().BeforeStart([accounts](const CancelCheck& cancel) { accounts->RenewRules(cancel); });
    CertificateMethods::AddTo(*service, data);
    rolemethods::AddToService(*service, data);
    server->Add(u"Quenvolta_Service"_s, service);
    server->Add(u"Quenvolta_QdfsService"_s, std::make_shared<QdfsServiceClass>(data));
    server->Add(u"Quenvolta_User"_s, std::make_shared<UserClass>(accounts));
    server->Add(u"Quenvolta_Group"_s, std::make_shared<GroupClass>(accounts));
    server->Add(u"Quenvolta_SecurityDescriptor"_s, std::make_shared<SecurityDescriptorClass>(security));
    server->Add(u"Quenvolta_Activity"_s, std::make_shared<ActivityClass>());
    return server;
}

std::unique_ptr<ManagementNamespace> MakeStandardNamespace(const ServedVersion& version)
{
    auto standard = std::make_unique<ManagementNamespace>(u"CIMV2"_s, version.Table());
    standard->Add(u"Win32_NetworkAdapterConfiguration"_s, std::make_shared<NetworkAdapterClass>());
    standard->Add(u"Win32_UserAccount"_s, std::make_shared<SystemAccountClass>(std::make_unique<UserDatabase>()));
    standard->Add(u"Win32_Group"_s, std::make_shared<SystemAccountClass>(std::make_unique<GroupDatabase>()));
    standard->Add(u"Quenvolta_Directory"_s, std::make_shared<DirectoryClass>(std::make_unique<UserDatabase>(),
                                                                             std::make_unique<GroupDatabase>()));
    return standard;
}

namespace
{

// Nobody waits for this: what stays because somebody holds the lock goes at the next start or change.
void CleanCertificatesAndWeb(DataFolder& data)
{
    try {
        const DataLock lock(data.Path(), [] { return true; });
        RemoveWebLeftovers(WebFolder(data.Path()), lock);
        CertificateStore(data.Path()).CleanLeftovers();
    } catch (const ProviderError&) {
        return;
    }
}

void RepairAccounts(DataFolder& data)
{
    try {
        AccountStore(data).Repair([] { return true; });
    } catch (const ProviderError& error) {
        if (error.Code() != WBEM_E_CALL_CANCELLED)
            qCWarning(logSvn) << error.Description();
    }
}

} // namespace

void CleanLeftovers(DataFolder& data)
{
    CleanCertificatesAndWeb(data);
    RepairAccounts(data);
    try {
        RepositoryStore(ServerSettingsReader(data.Settings()).RepositoriesRoot()).CleanLeftovers();
    } catch (const ProviderError&) {
        return;
    }
}

} // namespace quenvolta
