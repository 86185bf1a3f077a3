#pragma once

#include "foundation/registry_accessor.h"

#include <QString>
#include <QStringList>

namespace quenvolta
{

/// What the settings say about the web service, as one value.
struct WebSettings {
    QString repositoriesRoot;
    /// The name that clients know the server by: the administrator's, else the computer's.
    QString serverName;
    QString computerName;
    bool secure = false;
    int port = 0;
    /// False: on `addresses` only.
    bool listenOnAll = false;
    QStringList addresses;
    /// False: the users of the htpasswd file sign in. True: the system's.
    bool systemAccounts = false;
    bool basic = true;
    bool integrated = false;
    bool upnFormat = false;
    bool accessLog = false;
    bool operationalLog = false;
    bool redirectLegacy = true;
    /// Of the system's authentication modules.
    QString pamService;
    /// The file with the server's Kerberos keys; empty for the one in the data folder.
    QString keytab;

    /// Win32Exception when the settings can't be read.
    static WebSettings Read(Registry& registry);
};

} // namespace quenvolta
