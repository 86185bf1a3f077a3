#include "provider/web/apache_installation.h"

#include "provider/apache_program.h"
#include "provider/provider_error.h"
#include "provider/web/apache_command.h"
#include "provider/web/web_texts.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

QString ModulesOf(const QString& program)
{
    const QString prefix = QFileInfo(QFileInfo(program).absolutePath()).absolutePath();
    for (const QString& folder :
         {u"/usr/lib/apache2/modules"_s, u"/usr/lib64/httpd/modules"_s, u"/usr/lib/httpd/modules"_s,
          u"/usr/lib64/apache2"_s, prefix + "/modules"_L1, prefix + "/lib/apache2/modules"_L1}) {
        if (QFileInfo::exists(folder + "/mod_authz_core.so"_L1))
            return folder;
    }
    return {};
}

} // namespace

ApacheInstallation ApacheInstallation::Find()
{
    const QString program = ApacheProgram::Find();
    return {program, program.isEmpty() ? QString() : ModulesOf(program)};
}

ApacheInstallation::ApacheInstallation(const QString& program, const QString& modulesFolder)
    : m_program(program)
    , m_modulesFolder(modulesFolder)
{
    if (program.isEmpty())
        return;
    static const QRegularExpression kModule(u"\\bmod_([a-z0-9_]+)\\.c\\b"_s);
    const ApacheCommand::Outcome list = ApacheCommand(program, {u"-l"_s}).Run();
    for (const QRegularExpressionMatch& match : kModule.globalMatch(list.output))
        m_builtIn.append(match.captured(1));
}

QString ApacheInstallation::FileOf(const ApacheModule& module) const
{
    const QString name = QLatin1StringView(module.identifier);
    const QString file = m_modulesFolder + "/mod_"_L1 + name + ".so"_L1;
    return !m_builtIn.contains(name) && QFileInfo::exists(file) ? file : QString();
}

bool ApacheInstallation::Has(const ApacheModule& module) const
{
    return m_builtIn.contains(QLatin1StringView(module.identifier)) || !FileOf(module).isEmpty();
}

void ApacheInstallation::Require(const QList<ApacheModule>& modules) const
{
    if (m_program.isEmpty())
        throw ProviderError(WBEM_E_FAILED, webtexts::kNoApache.Whole());
    for (const ApacheModule& module : modules) {
        if (!Has(module))
            throw ProviderError(WBEM_E_FAILED, webtexts::kNoModule.arg(u"mod_"_s + QLatin1StringView(module.identifier),
                                                                       QString::fromLatin1(module.package)));
    }
}

} // namespace quenvolta
