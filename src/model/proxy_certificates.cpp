#include "model/server_proxy.h"
#include "wmi/server_date_time.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

CertificateInfo CServerProxy::GetCertificateInformation()
{
    const WMIObject out = m_connection.ExecMethod(ServicePath(), u"GetCertificateInformation"_s);
    if (out.IsEmpty() || out.IsNull(u"ReturnValue"_s))
        return {}; // the server has no certificate yet
    const WMIObject certificate = out.GetObject(u"ReturnValue"_s);
    CertificateInfo info;
    info.issuedTo = certificate.GetString(u"IssuedTo"_s);
    info.issuedBy = certificate.GetString(u"IssuedBy"_s);
    info.validFrom = ToLocalDateTime(certificate.GetDateTime(u"ValidFrom"_s));
    info.validTo = ToLocalDateTime(certificate.GetDateTime(u"ValidTo"_s));
    info.organization = certificate.GetString(u"Organization"_s);
    info.organizationUnit = certificate.GetString(u"OrganizationUnit"_s);
    info.countryCode = certificate.GetString(u"CountryCode"_s);
    info.state = certificate.GetString(u"State"_s);
    info.city = certificate.GetString(u"City"_s);
    if (HasCapability(ServerCapability::kCertificateText))
        info.base64Certificate = certificate.GetString(u"Base64Certificate"_s);
    return info;
}

ServerCall CServerProxy::SubjectCall(const QString& method, const CertificateSubjectInfo& subject)
{
    ServerCall call(m_connection, m_classes.service, method);
    call.With(u"CommonName"_s, subject.commonName);
    if (HasCapability(ServerCapability::kCertificateAdditionalNames))
        call.With(u"AdditionalNames"_s, subject.additionalNames);
    call.With(u"Organization"_s, subject.organization)
        .With(u"OrganizationUnit"_s, subject.organizationUnit)
        .With(u"CountryCode"_s, subject.countryCode)
        .With(u"State"_s, subject.state)
        .With(u"City"_s, subject.city);
    return call;
}

void CServerProxy::CreateSelfSignedCertificate(const CertificateSubjectInfo& subject, std::int32_t days)
{
    SubjectCall(u"CreateSelfSignedCertificate"_s, subject).With(u"Days"_s, days).Run(ServicePath());
}

QString CServerProxy::CreateCertificateRequest(const CertificateSubjectInfo& subject)
{
    return SubjectCall(u"CreateCertificateRequest"_s, subject).Run(ServicePath()).GetString(u"ReturnValue"_s);
}

void CServerProxy::ImportCertificate(const QString& base64Certificate)
{
    ServerCall(m_connection, m_classes.service, u"ImportCertificate"_s)
        .With(u"Base64Certificate"_s, base64Certificate)
        .Run(ServicePath());
}

std::uint32_t CServerProxy::ValidateCertificate(const QString& base64Certificate)
{
    return ServerCall(m_connection, m_classes.service, u"ValidateCertificate"_s)
        .With(u"Base64Certificate"_s, base64Certificate)
        .Run(ServicePath())
        .GetUInt32(u"ReturnValue"_s);
}

} // namespace quenvolta
