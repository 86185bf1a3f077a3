#include "repositories/folder_name_rule.h"

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

bool IsValidFolderName(QStringView name)
{
    static constexpr QStringView kRefused = u"<>:\"/\\|";
    return !name.isEmpty() && !name.startsWith(u'.') && !name.endsWith(u'.') &&
           std::ranges::none_of(name, [](QChar c) { return kRefused.contains(c); });
}

QString ChildPath(const QString& folder, const QString& name)
{
    return (folder == u"/" ? QString() : folder) + u'/' + name;
}

} // namespace quenvolta
