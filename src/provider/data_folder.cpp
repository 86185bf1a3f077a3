#include "provider/data_folder.h"

#include "foundation/registry_accessor.h"
#include "foundation/registry_changes.h"
#include "foundation/server_data_path.h"
#include "foundation/win32_exception.h"
#include "provider/provider_error.h"
#include "provider/provider_texts.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kFirstPort = 8080;
constexpr int kFirstSecurePort = 8443;

// Makes a folder that only this account can enter; the folders above it as the system makes them.
void MakePrivateFolder(const QString& path)
{
    const QString parent = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(parent) || (::mkdir(QFile::encodeName(path).constData(), S_IRWXU) != 0 && errno != EEXIST)) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        throw ProviderError(errno == EACCES || errno == EROFS ? WBEM_E_ACCESS_DENIED : WBEM_E_FAILED,
                            replies::kCannotMakeDataFolder.arg(path, reason));
    }
    if (!QFileInfo(path).isDir())
        throw ProviderError(WBEM_E_FAILED, replies::kDataFolderIsFile.arg(path));
}

} // namespace

QString DataFolder::DefaultPath()
{
    return ServerDataPath();
}

DataFolder::DataFolder(const QString& path)
    : m_path(path)
    , m_settings(u"HKEY_LOCAL_MACHINE"_s, path + "/registry.db"_L1)
{
    MakePrivateFolder(path);
    try {
        if (m_settings.FindKey(RegistryAccessor::kServerKey.toString()) != ERROR_SUCCESS)
            WriteFirstSettings();
    } catch (const Exception& failure) {
        throw ProviderError(WBEM_E_FAILED, replies::kCannotReadSettings.arg(path, failure.GetMessage()));
    }
}

void DataFolder::WriteFirstSettings()
{
    MakePrivateFolder(m_path + "/repositories"_L1);
    // All of them or none: a server with half of its settings would look like one that was set up so.
    RegistryChanges changes(m_settings);
    const QString key = RegistryAccessor::kServerKey.toString();
    if (m_settings.FindKey(key) == ERROR_SUCCESS)
        return; // another provider was first
    if (const Win32Error error = m_settings.CreateKey(key); error != ERROR_SUCCESS)
        throw Win32Exception(error);
    RegistryAccessor settings(m_settings, key);
    settings.SetRepositoriesRoot(m_path + "/repositories"_L1);
    settings.SetServerPort(false, kFirstPort);
    settings.SetServerPort(true, kFirstSecurePort);
    settings.SetServerBindings({u"127.0.0.1"_s, u"::1"_s});
    settings.SetUseServerBindings(true);
    changes.Commit();
}

} // namespace quenvolta
