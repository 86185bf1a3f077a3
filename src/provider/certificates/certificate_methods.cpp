#include "provider/certificates/certificate_methods.h"

#include "provider/certificates/certificate_maker.h"
#include "provider/certificates/certificate_name.h"
#include "provider/certificates/certificate_texts.h"
#include "provider/certificates/private_key.h"
#include "provider/data_lock.h"
#include "provider/provider_error.h"

#include <QScopeGuard>

#include <ctime>
#include <memory>
#include <openssl/crypto.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// The management standard's date-time of a moment in UTC; null when the certificate has none that can be read.
Variant DateTimeText(const ASN1_TIME* time)
{
    constexpr int kFirstYear = 1900;
    std::tm fields{};
    if (ASN1_TIME_to_tm(time, &fields) != 1)
        return {};
    return QString::asprintf("%04d%02d%02d%02d%02d%02d.000000+000", fields.tm_year + kFirstYear, fields.tm_mon + 1,
                             fields.tm_mday, fields.tm_hour, fields.tm_min, fields.tm_sec);
}

CertificateSubject SubjectOf(const MethodCall& call)
{
    const auto text = [&call](QStringView name) { return call.Optional<QString>(name).value_or(QString()); };
    return {call.String(u"CommonName"),
            call.Optional<QStringList>(u"AdditionalNames").value_or(QStringList()),
            text(u"Organization"),
            text(u"OrganizationUnit"),
            text(u"CountryCode"),
            text(u"State"),
            text(u"City")};
}

InstanceRow Describe(const ClassDefinitionPtr& definition, X509& certificate)
{
    const X509_NAME* subject = X509_get_subject_name(&certificate);
    InstanceRow row(definition);
    row.Set(u"IssuedTo", CommonNameOrWhole(subject))
        .Set(u"IssuedBy", CommonNameOrWhole(X509_get_issuer_name(&certificate)))
        .Set(u"ValidFrom", DateTimeText(X509_get0_notBefore(&certificate)))
        .Set(u"ValidTo", DateTimeText(X509_get0_notAfter(&certificate)))
        .Set(u"Organization", NameAttribute(subject, NID_organizationName))
        .Set(u"OrganizationUnit", NameAttribute(subject, NID_organizationalUnitName))
        .Set(u"CountryCode", NameAttribute(subject, NID_countryName))
        .Set(u"State", NameAttribute(subject, NID_stateOrProvinceName))
        .Set(u"City", NameAttribute(subject, NID_localityName))
        .Set(u"Base64Certificate", QString::fromLatin1(ToPem(certificate)));
    return row;
}

} // namespace

CertificateMethods::CertificateMethods(DataFolder& data)
    : m_data(data)
    , m_store(data.Path())
{
}

void CertificateMethods::AddTo(ManagementClass& service, DataFolder& data)
{
    using Effect = ManagementClass::Effect;
    const auto methods = std::make_shared<CertificateMethods>(data);
    service.Handle(u"GetCertificateInformation"_s, Effect::Reads,
                   [methods](MethodCall& call) { methods->Describe(call); });
    service.Handle(u"CreateSelfSignedCertificate"_s, Effect::Changes,
                   [methods](MethodCall& call) { methods->CreateSelfSigned(call); });
    service.Handle(u"CreateCertificateRequest"_s, Effect::Changes,
                   [methods](MethodCall& call) { methods->CreateRequest(call); });
    service.Handle(u"ImportCertificate"_s, Effect::Changes, [methods](MethodCall& call) { methods->Import(call); });
    service.Handle(u"ValidateCertificate"_s, Effect::Reads, [methods](MethodCall& call) { methods->Validate(call); });
}

CertificateBundle CertificateMethods::BundleOf(const MethodCall& call)
{
    QByteArray text = call.String(u"Base64Certificate").toUtf8();
    const auto wipe = qScopeGuard([&text] { OPENSSL_cleanse(text.data(), static_cast<std::size_t>(text.size())); });
    CertificateBundle bundle = ReadBundle(text);
    RequireUsable(bundle);
    return bundle;
}

CertificateMethods::Match CertificateMethods::MatchOf(const CertificateBundle& bundle, const PrivateKeyPtr& heldKey)
{
    if (heldKey)
        return Match::HeldKey;
    if (bundle.keyUnreadable)
        return Match::OwnKeyUnreadable;
    if (!bundle.key)
        return Match::NoKey;
    return KeyFits(*bundle.key, *bundle.certificate) ? Match::OwnKey : Match::OwnKeyDoesNotFit;
}

void CertificateMethods::Describe(MethodCall& call) const
{
    const CertificateBundle installed = m_store.Installed();
    if (!installed.certificate)
        return; // null: there is none yet
    const ClassDefinitionPtr definition = call.Context().classes.Find(u"Quenvolta_Certificate"_s);
    call.Return(u"ReturnValue", quenvolta::Describe(definition, *installed.certificate).ToObject());
}

void CertificateMethods::CreateSelfSigned(MethodCall& call) const
{
    const CertificateMaker maker(SubjectOf(call));
    const qint32 days = call.Int32(u"Days");
    CertificateMaker::CheckDays(days);
    const PrivateKeyPtr key = MakePrivateKey();
    CertificateBundle bundle;
    bundle.certificate = maker.SelfSigned(*key, days);
    const DataLock lock(m_data.Path(), call.Context().cancel);
    m_store.Install(bundle, *key);
}

void CertificateMethods::CreateRequest(MethodCall& call) const
{
    const CertificateMaker maker(SubjectOf(call));
    const PrivateKeyPtr key = MakePrivateKey();
    const QByteArray request = maker.Request(*key);
    const DataLock lock(m_data.Path(), call.Context().cancel);
    m_store.KeepRequest(*key, request);
    call.Return(u"ReturnValue", QString::fromLatin1(request));
}

void CertificateMethods::Import(MethodCall& call) const
{
    const CertificateBundle bundle = BundleOf(call);
    const DataLock lock(m_data.Path(), call.Context().cancel);
    const PrivateKeyPtr heldKey = m_store.HeldKey(*bundle.certificate);
    switch (MatchOf(bundle, heldKey)) {
    case Match::HeldKey:
        return m_store.Install(bundle, *heldKey);
    case Match::OwnKey:
        return m_store.Install(bundle, *bundle.key);
    case Match::OwnKeyDoesNotFit:
        throw ProviderError(WBEM_E_INVALID_PARAMETER, certificatetexts::kKeyDoesNotFit.Whole());
    case Match::NoKey:
        throw ProviderError(WBEM_E_INVALID_PARAMETER, certificatetexts::kNoFittingKey.Whole());
    case Match::OwnKeyUnreadable:
        throw ProviderError(WBEM_E_INVALID_PARAMETER, certificatetexts::kKeyUnreadable.Whole());
    }
}

void CertificateMethods::Validate(MethodCall& call) const
{
    const CertificateBundle bundle = BundleOf(call);
    const DataLock lock(m_data.Path(), call.Context().cancel);
    const Match match = MatchOf(bundle, m_store.HeldKey(*bundle.certificate));
    call.Return(u"ReturnValue", static_cast<std::uint32_t>(match));
}

} // namespace quenvolta
