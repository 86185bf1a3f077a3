#include "provider/certificates/certificate_subject.h"

#include "provider/certificates/certificate_texts.h"
#include "provider/certificates/openssl_failure.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"

#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <array>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kMostAdditionalNames = 100;
constexpr qsizetype kLongestHostName = 253;

struct Field {
    QStringView parameter;
    QString CertificateSubject::*member;
    int kind;
    qsizetype longest; ///< characters, as RFC 5280 bounds the attribute
};

// In the order of the name, from the country down.
constexpr std::array kFields{
    Field{u"CountryCode", &CertificateSubject::countryCode, NID_countryName, 2},
    Field{u"State", &CertificateSubject::state, NID_stateOrProvinceName, 128},
    Field{u"City", &CertificateSubject::city, NID_localityName, 128},
    Field{u"Organization", &CertificateSubject::organization, NID_organizationName, 64},
    Field{u"OrganizationUnit", &CertificateSubject::organizationUnit, NID_organizationalUnitName, 64},
    Field{u"CommonName", &CertificateSubject::commonName, NID_commonName, 64},
};

[[noreturn]] void Refuse(const QString& description)
{
    throw ProviderError(WBEM_E_INVALID_PARAMETER, description);
}

const unsigned char* Bytes(const QByteArray& text)
{
    return static_cast<const unsigned char*>(static_cast<const void*>(text.constData()));
}

void Check(const Field& field, const QString& value)
{
    const QList<uint> characters = value.toUcs4();
    const bool printable =
        QStringView(value).isValidUtf16() &&
        std::all_of(characters.cbegin(), characters.cend(), [](uint each) { return QChar::isPrint(char32_t{each}); });
    if (!printable)
        Refuse(certificatetexts::kFieldInvalid.arg(field.parameter.toString(), RepositoryNames::Show(value)));
    if (characters.size() > field.longest)
        Refuse(certificatetexts::kFieldTooLong.arg(field.parameter.toString(), QString::number(field.longest)));
}

QString CountryOf(const QString& code)
{
    static const QRegularExpression kTwoLetters(u"\\A[A-Za-z]{2}\\z"_s);
    if (!code.isEmpty() && !kTwoLetters.match(code).hasMatch())
        Refuse(certificatetexts::kCountryInvalid.arg(RepositoryNames::Show(code)));
    return code.toUpper();
}

// The address's bytes; empty when it is none.
QByteArray AddressBytes(const QString& text)
{
    const std::unique_ptr<ASN1_OCTET_STRING, OpenSslFree<ASN1_OCTET_STRING_free>> address(
        text.contains(QChar(u'\0')) ? nullptr : a2i_IPADDRESS(text.toUtf8().constData()));
    if (!address)
        return TakeOpenSslErrors(), QByteArray();
    const ASN1_OCTET_STRING* held = address.get();
    return QByteArray(static_cast<const char*>(static_cast<const void*>(ASN1_STRING_get0_data(held))),
                      ASN1_STRING_length(held));
}

// The name as it stands in a certificate, other scripts in their encoding for host names; empty when it is no host
// name.
QByteArray HostNameBytes(const QString& name)
{
    static const QRegularExpression kHostName(u"\\A(\\*\\.)?([A-Za-z0-9_]([A-Za-z0-9_-]{0,61}[A-Za-z0-9_])?\\.)*"
                                              u"(?![0-9]+\\z)[A-Za-z0-9_]([A-Za-z0-9_-]{0,61}[A-Za-z0-9_])?\\z"_s);
    QString host = name.endsWith(u'.') ? name.chopped(1) : name;
    const bool ascii = std::all_of(host.cbegin(), host.cend(), [](QChar each) { return each.unicode() < 0x80; });
    if (!ascii) {
        const bool wildcard = host.startsWith("*."_L1);
        host = QString::fromLatin1(QUrl::toAce(wildcard ? host.sliced(2) : host));
        if (wildcard && !host.isEmpty())
            host.prepend("*."_L1);
    }
    return host.size() <= kLongestHostName && kHostName.match(host).hasMatch() ? host.toLower().toLatin1()
                                                                               : QByteArray();
}

// Adds the name, unless it is there already; false when it is neither a host name nor an address.
bool Add(GENERAL_NAMES& names, const QString& text)
{
    const QByteArray address = AddressBytes(text);
    const QByteArray bytes = address.isEmpty() ? HostNameBytes(text) : address;
    if (bytes.isEmpty())
        return false;
    // Made from its bytes: no text can turn into a name of another kind, or into two.
    const GeneralNamePtr holder(GENERAL_NAME_new());
    ASN1_STRING* value = ASN1_STRING_type_new(address.isEmpty() ? V_ASN1_IA5STRING : V_ASN1_OCTET_STRING);
    RequireOpenSsl(holder && value && ASN1_STRING_set(value, bytes.constData(), static_cast<int>(bytes.size())) == 1,
                   certificatetexts::kCannotMakeCertificate.Whole());
    GENERAL_NAME_set0_value(holder.get(), address.isEmpty() ? GEN_DNS : GEN_IPADD, value);
    for (int place = 0; place < sk_GENERAL_NAME_num(&names); ++place) {
        if (GENERAL_NAME_cmp(sk_GENERAL_NAME_value(&names, place), holder.get()) == 0)
            return true;
    }
    GeneralNamePtr added(GENERAL_NAME_dup(holder.get()));
    RequireOpenSsl(added && sk_GENERAL_NAME_push(&names, added.get()) > 0,
                   certificatetexts::kCannotMakeCertificate.Whole());
    Q_UNUSED(added.release()) // the list owns it
    return true;
}

} // namespace

NamePtr MakeName(const CertificateSubject& subject)
{
    CertificateSubject checked = subject;
    checked.countryCode = CountryOf(subject.countryCode);
    if (subject.commonName.isEmpty())
        Refuse(certificatetexts::kFieldEmpty.arg(u"CommonName"_s));
    NamePtr name(X509_NAME_new());
    RequireOpenSsl(name != nullptr, certificatetexts::kCannotMakeCertificate.Whole());
    for (const Field& field : kFields) {
        const QString& value = checked.*field.member;
        Check(field, value);
        const QByteArray utf8 = value.toUtf8();
        RequireOpenSsl(value.isEmpty() || X509_NAME_add_entry_by_NID(name.get(), field.kind, MBSTRING_UTF8, Bytes(utf8),
                                                                     static_cast<int>(utf8.size()), -1, 0) == 1,
                       certificatetexts::kCannotMakeCertificate.Whole());
    }
    return name;
}

GeneralNamesPtr MakeAlternativeNames(const CertificateSubject& subject)
{
    if (subject.additionalNames.size() > kMostAdditionalNames)
        Refuse(certificatetexts::kTooManyNames.arg(QString::number(kMostAdditionalNames)));
    GeneralNamesPtr names(GENERAL_NAMES_new());
    RequireOpenSsl(names != nullptr, certificatetexts::kCannotMakeCertificate.Whole());
    // The server may be called by a name that isn't a host name; the common name then stands alone.
    Add(*names, subject.commonName);
    for (const QString& each : subject.additionalNames) {
        if (!Add(*names, each))
            Refuse(certificatetexts::kNameInvalid.arg(RepositoryNames::Show(each)));
    }
    if (sk_GENERAL_NAME_num(names.get()) == 0)
        names.reset();
    return names;
}

} // namespace quenvolta
