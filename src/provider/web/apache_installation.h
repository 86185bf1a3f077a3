#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace quenvolta
{

/// A part of httpd that can be loaded.
struct ApacheModule {
    const char* identifier; ///< as LoadModule names it, without "_module"
    const char* package;    ///< the Debian package that brings it
};

/// The web server as it is installed on this computer.
class ApacheInstallation
{
public:
    /// Looks for it; finding nothing is no failure here.
    static ApacheInstallation Find();

    /// One with the program and the folder of modules given; empty when there is none.
    ApacheInstallation(const QString& program, const QString& modulesFolder);

    /// Empty when it isn't installed.
    const QString& Program() const { return m_program; }

    /// The path to load the module from; empty when it is missing or a part of the program.
    QString FileOf(const ApacheModule& module) const;
    bool Has(const ApacheModule& module) const;

    /// ProviderError that names the program or the module that is missing, and its package.
    void Require(const QList<ApacheModule>& modules) const;

private:
    QString m_program;
    QString m_modulesFolder;
    QStringList m_builtIn;
};

} // namespace quenvolta
