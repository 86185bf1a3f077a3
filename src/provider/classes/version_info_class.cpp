#include "provider/classes/version_info_class.h"

#include "provider/apache_program.h"

#include <svn_version.h>
#include <utility>

namespace quenvolta
{

VersionInfoClass::VersionInfoClass(ServedVersion version)
    : m_version(std::move(version))
{
}

std::optional<InstanceRow> VersionInfoClass::Get(const ClassDefinitionPtr& definition, const Keys&, CallContext&)
{
    return Row(definition);
}

void VersionInfoClass::Enumerate(const ClassDefinitionPtr& definition, CallContext& context)
{
    context.rows.AddInstance(Row(definition));
}

InstanceRow VersionInfoClass::Row(const ClassDefinitionPtr& definition)
{
    const svn_version_t* subversion = svn_subr_version();
    InstanceRow row(definition);
    row.Set(u"Version", m_version.Text());
    row.Set(u"SubversionVersion",
            QStringLiteral("%1.%2.%3").arg(subversion->major).arg(subversion->minor).arg(subversion->patch));
    row.Set(u"ApacheVersion", ApacheProgram::ReadVersion());
    return row;
}

} // namespace quenvolta
