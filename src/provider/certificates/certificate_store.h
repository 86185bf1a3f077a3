#pragma once

#include "provider/certificates/certificate_bundle.h"
#include "provider/certificates/private_folder.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace quenvolta
{

/// The server's certificate with its key, and the keys of requests that were prepared here, in the folder
/// `certificates` of the server's data (docs/server-data.md shows its files).
///
/// A certificate and its key always change together: they stand in one folder, and one renamed link says which folder
/// counts. Whoever changes something holds the DataLock; failures are ProviderErrors, which never hold a key.
class CertificateStore
{
public:
    explicit CertificateStore(const QString& dataFolder);

    /// The installed certificate with those above it, without its key; empty when none is installed.
    CertificateBundle Installed() const;

    /// The key of the installed certificate or of a request, when one is the certificate's; else null.
    PrivateKeyPtr HeldKey(const X509& certificate) const;

    /// Replaces the installed certificate and its key, and drops the request that the key was made for.
    void Install(const CertificateBundle& bundle, const EVP_PKEY& key) const;

    /// Keeps the key of a request until its certificate comes. The last 20 requests are kept.
    void KeepRequest(const EVP_PKEY& key, const QByteArray& request) const;

    /// Removes what an ended provider left half made.
    void CleanLeftovers() const;

private:
    static QByteArray RequestName(const EVP_PKEY* key);
    void WritePair(const PrivateFolder& folder, const CertificateBundle& bundle, const EVP_PKEY& key) const;
    static void RemoveOtherPairs(const PrivateFolder& folder);
    static void RemoveOldRequests(const PrivateFolder& requests);

    QString m_path;
};

} // namespace quenvolta
