#pragma once

#include "server_fixture.h"

#include <QDirIterator>
#include <QFile>

namespace quenvolta
{

/// A server whose certificate is changed, and the openssl program as authority and judge.
class CertificatesFixture : public ServerFixture
{
protected:
    static QString Service() { return u"Quenvolta_Service.Name=\"QuenvoltaServer\""_s; }
    QString Certificates() const { return m_data.Path() + "/certificates"_L1; }
    QString PathOf(const QString& name) const { return m_folder.filePath(name); }

    static Parameters Subject(const QString& commonName, const QStringList& additionalNames = {})
    {
        return {{u"CommonName"_s, commonName},  {u"AdditionalNames"_s, additionalNames},
                {u"Organization"_s, QString()}, {u"OrganizationUnit"_s, QString()},
                {u"CountryCode"_s, QString()},  {u"State"_s, QString()},
                {u"City"_s, QString()}};
    }

    QByteArray Tool(const QStringList& arguments) { return Run(u"openssl"_s, arguments); }

    QByteArray Content(const QString& name) const
    {
        QFile file(QDir::isAbsolutePath(name) ? name : PathOf(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    /// A key and a certificate that it signs itself, in files NAME.key and NAME.crt.
    void MakePair(const QString& name, const QStringList& more = {})
    {
        QStringList arguments{u"req"_s,
                              u"-x509"_s,
                              u"-nodes"_s,
                              u"-subj"_s,
                              u"/CN="_s + name,
                              u"-keyout"_s,
                              PathOf(name + ".key"_L1),
                              u"-out"_s,
                              PathOf(name + ".crt"_L1)};
        Tool(arguments +
             (more.isEmpty() ? QStringList{u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:P-256"_s} : more));
    }

    /// The certificate that the authority of MakePair("ca") signs for a request.
    QByteArray Sign(const QString& request, const QStringList& more = {u"-days"_s, u"30"_s})
    {
        return Run(u"openssl"_s,
                   QStringList{u"x509"_s, u"-req"_s, u"-CA"_s, PathOf(u"ca.crt"_s), u"-CAkey"_s, PathOf(u"ca.key"_s),
                               u"-CAcreateserial"_s, u"-copy_extensions"_s, u"copy"_s} +
                       more,
                   request.toLatin1());
    }

    QString Request(const QString& commonName, const QStringList& additionalNames = {})
    {
        return Text(Exec(Service(), u"CreateCertificateRequest"_s, Subject(commonName, additionalNames)),
                    u"ReturnValue"_s);
    }

    static Parameters Imported(const QByteArray& text) { return {{u"Base64Certificate"_s, QString::fromLatin1(text)}}; }
    /// ValidateCertificate's answer.
    std::uint32_t Validate(const QByteArray& text)
    {
        return std::get<std::uint32_t>(
            Value(Exec(Service(), u"ValidateCertificate"_s, Imported(text)), u"ReturnValue"_s));
    }
    HRESULT Import(const QByteArray& text) { return ErrorOf(Service(), u"ImportCertificate"_s, Imported(text)).Code(); }

    /// The installed certificate; null when there is none.
    WbemObjectPtr Information()
    {
        const Variant value = Value(Exec(Service(), u"GetCertificateInformation"_s), u"ReturnValue"_s);
        const WbemObjectPtr* object = std::get_if<WbemObjectPtr>(&value);
        return object ? *object : nullptr;
    }

    /// Expects that the files in use are a certificate and its key, as openssl sees them.
    void ExpectMatchingPair()
    {
        const QString key = Certificates() + "/server.key"_L1;
        const QByteArray ofKey = Tool({u"pkey"_s, u"-in"_s, key, u"-pubout"_s});
        EXPECT_FALSE(ofKey.isEmpty());
        EXPECT_EQ(Tool({u"x509"_s, u"-in"_s, Certificates() + "/server.crt"_L1, u"-noout"_s, u"-pubkey"_s}), ofKey);
        EXPECT_TRUE(Tool({u"pkey"_s, u"-in"_s, key, u"-check"_s, u"-noout"_s}).contains("valid"));
    }

    /// Everything below the folder, without what hides behind links.
    QStringList Files() const
    {
        QStringList files;
        QDirIterator entries(Certificates(), QDir::Files | QDir::System | QDir::Hidden, QDirIterator::Subdirectories);
        while (entries.hasNext())
            files.append(entries.next());
        files.sort();
        return files;
    }
};

} // namespace quenvolta
