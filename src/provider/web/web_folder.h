#pragma once

#include <QString>

namespace quenvolta
{

/// Where the web service's files are in the server's data folder.
class WebFolder
{
public:
    /// The folder's true path counts: a service must be recognised by whatever way its folder is named.
    explicit WebFolder(const QString& dataFolder);

    /// Makes the folders that are missing, for the server's account alone. ProviderError.
    void Make() const;

    QString Path() const { return m_data + QStringLiteral("/web"); }
    QString RunFolder() const { return Path() + QStringLiteral("/run"); }
    QString LogsFolder() const { return Path() + QStringLiteral("/logs"); }

    QString Configuration() const { return Path() + QStringLiteral("/httpd.conf"); }
    /// The configuration that the web service took last.
    QString ProvenConfiguration() const { return Path() + QStringLiteral("/httpd.proven.conf"); }
    /// The addresses that it listened on with that.
    QString ProvenListening() const { return Path() + QStringLiteral("/proven-addresses"); }
    QString OperationLock() const { return Path() + QStringLiteral("/operation"); }
    QString PidFile() const { return RunFolder() + QStringLiteral("/httpd.pid"); }
    /// The addresses that the running service listens on, one a line.
    QString Listening() const { return RunFolder() + QStringLiteral("/listening"); }
    QString ErrorLog() const { return LogsFolder() + QStringLiteral("/error.log"); }
    QString AccessLog() const { return LogsFolder() + QStringLiteral("/access.log"); }
    QString OperationalLog() const { return LogsFolder() + QStringLiteral("/operational.log"); }

    QString Users() const { return m_data + QStringLiteral("/htpasswd"); }
    QString Permissions() const { return m_data + QStringLiteral("/authz"); }
    QString Certificate() const { return m_data + QStringLiteral("/certificates/server.crt"); }
    QString CertificateKey() const { return m_data + QStringLiteral("/certificates/server.key"); }
    /// Where the Kerberos keys are unless the settings name another file.
    QString Keytab() const { return m_data + QStringLiteral("/krb5.keytab"); }

private:
    QString m_data;
};

} // namespace quenvolta
