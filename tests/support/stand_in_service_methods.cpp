#include "support/stand_in_server.h"

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

const QString kService = u"Quenvolta_Service"_s;
const QString kQdfsService = u"Quenvolta_QdfsService"_s;

/// A method of the web service that stores its parameters as properties.
struct SettingRow {
    QString method;
    /// Parameter -> property. A parameter that the server's version doesn't have changes nothing.
    QMap<QString, QString> properties;
};

const QList<SettingRow>& SettingRows()
{
    static const QList<SettingRow> rows{
        {u"SetAuthenticationOptions"_s,
         {{u"AuthType"_s, u"AuthType"_s},
          {u"WindowsBasic"_s, u"AuthWindowsBasic"_s},
          {u"WindowsIntegrated"_s, u"AuthWindowsIntegrated"_s},
          {u"UseUPNFormat"_s, u"UseUPNFormat"_s}}},
        {u"SetLoggingOptions"_s,
         {{u"EnableAccessLogging"_s, u"AccessLoggingEnabled"_s},
          {u"EnableOperationalLogging"_s, u"OperationalLoggingEnabled"_s}}},
        {u"SetWebInterfaceOptions"_s, {{u"RedirectFromLegacyWebInterface"_s, u"RedirectFromLegacyWebInterface"_s}}},
        {u"SetServerName"_s,
         {{u"UseCustom"_s, u"UseCustomServerName"_s}, {u"CustomServerName"_s, u"CustomServerName"_s}}},
    };
    return rows;
}

const QStringList kSubject{u"Organization"_s, u"OrganizationUnit"_s, u"CountryCode"_s, u"State"_s, u"City"_s};

} // namespace

void StandInServer::AddServiceMethods()
{
    const auto change = [](QMap<QString, Variant>& properties, const QString& property, const Variant& value) {
        return [&properties, property, value](MethodContext&) {
            properties[property] = value;
            return S_OK;
        };
    };
    Handle(kService, u"StartService"_s, change(data.service, u"ServiceState"_s, 4U));
    Handle(kService, u"StopService"_s, change(data.service, u"ServiceState"_s, 1U));
    Handle(kService, u"RestartService"_s, change(data.service, u"ServiceState"_s, 4U));
    Handle(kQdfsService, u"StartService"_s, change(data.qdfsService, u"ServiceState"_s, 4U));
    Handle(kQdfsService, u"StopService"_s, change(data.qdfsService, u"ServiceState"_s, 1U));
    Handle(kQdfsService, u"ChangeStartMode"_s, [this](MethodContext& call) {
        data.qdfsService[u"StartMode"_s] = call.Value(u"StartMode"_s);
        return S_OK;
    });
    Handle(u"Quenvolta_Activity"_s, u"Cancel"_s, [this](MethodContext& call) {
        for (const std::shared_ptr<PendingCall>& pending : m_pending) {
            if (pending->ActivityId() == call.Text(u"Id"_s) && !pending->IsComplete())
                pending->Fail({WBEM_E_CALL_CANCELLED});
        }
        return S_OK;
    });
}

void StandInServer::AddSettingMethods()
{
    for (const SettingRow& row : SettingRows()) {
        Handle(kService, row.method, [this, row](MethodContext& call) {
            for (auto each = row.properties.cbegin(); each != row.properties.cend(); ++each) {
                if (const Variant value = call.Value(each.key()); !IsNullVariant(value))
                    data.service[each.value()] = value;
            }
            return S_OK;
        });
    }
    Handle(kService, u"SetNetworkOptions"_s, [this](MethodContext& call) {
        const Variant secure = call.Value(u"UseSecureConnection"_s);
        const Variant addresses = call.Value(u"ListenIPAddressesArray"_s);
        data.service[u"UseSecureConnection"_s] = secure;
        data.service[secure == Variant{true} ? u"SecurePort"_s : u"UnsecurePort"_s] = call.Value(u"Port"_s);
        data.service[u"ListenAllIPAddresses"_s] = IsNullVariant(addresses);
        if (!IsNullVariant(addresses))
            data.service[u"ListenIPAddressesArray"_s] = addresses;
        return S_OK;
    });
    Handle(kService, u"SetRepositoriesRoot"_s, [this](MethodContext& call) {
        const QString path = call.Text(u"RepositoriesRoot"_s);
        if (data.missingFolders.contains(path) && call.Value(u"ForceCreate"_s) != Variant{true})
            return call.out->Put(u"ReturnValue"_s, 1U);
        data.missingFolders.removeAll(path);
        data.service[u"RepositoriesRoot"_s] = path;
        data.service[u"AdjustRepositoriesRootPermissions"_s] = call.Value(u"AdjustPermissions"_s);
        return call.out->Put(u"ReturnValue"_s, 0U);
    });
}

void StandInServer::AddCertificateMethods()
{
    Handle(kService, u"GetCertificateInformation"_s, [this](MethodContext& call) {
        if (data.certificate.isEmpty())
            return S_OK;
        return call.out->Put(u"ReturnValue"_s, WbemObjectPtr(Make(u"Quenvolta_Certificate"_s, data.certificate)));
    });
    Handle(kService, u"CreateSelfSignedCertificate"_s, [this](MethodContext& call) {
        data.certificate = {{u"IssuedTo"_s, call.Value(u"CommonName"_s)},
                            {u"IssuedBy"_s, call.Value(u"CommonName"_s)},
                            {u"ValidFrom"_s, u"20260101000000.000000+000"_s},
                            {u"ValidTo"_s, u"20351230000000.000000+000"_s},
                            {u"Base64Certificate"_s, u"self-signed"_s}};
        for (const QString& name : kSubject)
            data.certificate.insert(name, call.Value(name));
        return S_OK;
    });
    Handle(kService, u"CreateCertificateRequest"_s, [](MethodContext& call) {
        return call.out->Put(u"ReturnValue"_s, QString(u"request for "_s + call.Text(u"CommonName"_s)));
    });
    Handle(kService, u"ImportCertificate"_s, [this](MethodContext& call) {
        data.certificate.insert(u"Base64Certificate"_s, call.Value(u"Base64Certificate"_s));
        for (const QString& name : kSubject + QStringList{u"IssuedTo"_s, u"IssuedBy"_s})
            data.certificate.insert(name, u"imported"_s);
        for (const QString& name : {u"ValidFrom"_s, u"ValidTo"_s})
            data.certificate.insert(name, u"20260101000000.000000+000"_s);
        return S_OK;
    });
    Handle(kService, u"ValidateCertificate"_s,
           [this](MethodContext& call) { return call.out->Put(u"ReturnValue"_s, data.validation); });
}

} // namespace quenvolta::test
