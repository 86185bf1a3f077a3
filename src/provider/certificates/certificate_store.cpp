#include "provider/certificates/certificate_store.h"

#include "provider/certificates/certificate_texts.h"
#include "provider/certificates/private_key.h"
#include "provider/provider_error.h"

#include <QRandomGenerator>

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto kCertificateFile = "server.crt";
constexpr auto kKeyFile = "server.key";
// The link to the folder of the pair that counts.
constexpr auto kCurrent = "current";
constexpr auto kPairPrefix = "pair-";
constexpr auto kRequests = "requests";
constexpr auto kRequestSuffix = ".pem";
constexpr qsizetype kMostRequests = 20;

QByteArray InCurrent(const char* file)
{
    return QByteArray(kCurrent) + '/' + file;
}

} // namespace

CertificateStore::CertificateStore(const QString& dataFolder)
    : m_path(dataFolder + "/certificates"_L1)
{
}

QByteArray CertificateStore::RequestName(const EVP_PKEY* key)
{
    return PublicKeyDigest(key) + kRequestSuffix;
}

CertificateBundle CertificateStore::Installed() const
{
    const std::optional<PrivateFolder> folder = PrivateFolder::Find(m_path);
    const std::optional<SecretText> certificate =
        folder ? folder->Read(kCertificateFile, PrivateFolder::Links::Followed) : std::nullopt;
    if (!certificate)
        return {};
    const QString damaged =
        certificatetexts::kInstalledDamaged.arg(m_path + u'/' + QLatin1StringView(kCertificateFile));
    try {
        CertificateBundle bundle = ReadBundle(certificate->View());
        if (bundle.certificate)
            return bundle;
    } catch (const ProviderError& error) {
        throw ProviderError(WBEM_E_FAILED, damaged, {}, error.Description() + u'\n' + error.Details());
    }
    throw ProviderError(WBEM_E_FAILED, damaged);
}

PrivateKeyPtr CertificateStore::HeldKey(const X509& certificate) const
{
    const std::optional<PrivateFolder> folder = PrivateFolder::Find(m_path);
    if (!folder)
        return nullptr;
    const std::optional<PrivateFolder> requests = folder->FindFolder(kRequests);
    std::optional<SecretText> texts[] = {
        folder->Read(kKeyFile, PrivateFolder::Links::Followed),
        requests ? requests->Read(RequestName(X509_get0_pubkey(&certificate))) : std::nullopt,
    };
    for (const std::optional<SecretText>& text : texts) {
        PrivateKeyPtr key = text ? ReadBundle(text->View()).key : nullptr;
        if (key && KeyFits(*key, certificate))
            return key;
    }
    return nullptr;
}

void CertificateStore::Install(const CertificateBundle& bundle, const EVP_PKEY& key) const
{
    const PrivateFolder folder = PrivateFolder::Make(m_path);
    const QByteArray pair = kPairPrefix + QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    try {
        WritePair(folder.MakeFolder(pair), bundle, key);
        folder.Sync();
        folder.PointTo(kCurrent, pair);
    } catch (...) {
        folder.Remove(pair);
        throw;
    }
    // The names that others know lead through that link. At the first time they are missing; the certificate's comes
    // last, for without it there is none.
    for (const char* file : {kKeyFile, kCertificateFile}) {
        if (folder.TargetOf(file) != InCurrent(file))
            folder.PointTo(file, InCurrent(file));
    }
    folder.Sync();
    RemoveOtherPairs(folder);
    if (const std::optional<PrivateFolder> requests = folder.FindFolder(kRequests))
        requests->Remove(RequestName(&key));
}

void CertificateStore::WritePair(const PrivateFolder& folder, const CertificateBundle& bundle,
                                 const EVP_PKEY& key) const
{
    SecretText keyText;
    AppendPem(keyText, key);
    folder.Write(kKeyFile, keyText.View());
    QByteArray certificates = ToPem(*bundle.certificate);
    for (const CertificatePtr& each : bundle.chain)
        certificates += ToPem(*each);
    folder.Write(kCertificateFile, certificates);
    folder.Sync();
}

void CertificateStore::KeepRequest(const EVP_PKEY& key, const QByteArray& request) const
{
    const PrivateFolder requests = PrivateFolder::Make(m_path).MakeFolder(kRequests);
    const QByteArray name = RequestName(&key);
    const QByteArray hidden = '.' + name;
    SecretText text;
    AppendPem(text, key);
    text.Append(request);
    try {
        requests.Write(hidden, text.View());
        requests.Move(hidden, name);
    } catch (...) {
        requests.Remove(hidden);
        throw;
    }
    requests.Sync();
    RemoveOldRequests(requests);
}

void CertificateStore::RemoveOtherPairs(const PrivateFolder& folder)
{
    const QByteArray current = folder.TargetOf(kCurrent);
    for (const QByteArray& name : folder.Names()) {
        if (name.startsWith('.') || (name.startsWith(kPairPrefix) && name != current))
            folder.Remove(name);
    }
}

void CertificateStore::RemoveOldRequests(const PrivateFolder& requests)
{
    QByteArrayList names = requests.Names();
    if (names.size() <= kMostRequests)
        return;
    std::sort(names.begin(), names.end(), [&requests](const QByteArray& left, const QByteArray& right) {
        return requests.WrittenAt(left) > requests.WrittenAt(right);
    });
    for (const QByteArray& name : names.sliced(kMostRequests))
        requests.Remove(name);
}

void CertificateStore::CleanLeftovers() const
{
    const std::optional<PrivateFolder> folder = PrivateFolder::Find(m_path);
    if (!folder)
        return;
    RemoveOtherPairs(*folder);
    const std::optional<PrivateFolder> requests = folder->FindFolder(kRequests);
    for (const QByteArray& name : requests ? requests->Names() : QByteArrayList()) {
        if (name.startsWith('.'))
            requests->Remove(name);
    }
}

} // namespace quenvolta
