#include "repositories/hook_description.h"

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

QList<HookDescription> ReadDescriptions()
{
    QList<HookDescription> descriptions;
    QString group;
#define HOOK_GROUP(title) group = u"" title##_s;
#define HOOK(kind, name, description) descriptions.append({HookKind::kind, group, u"" name##_s, u"" description##_s});
#include "resources/hooks.def"
#undef HOOK
#undef HOOK_GROUP
    return descriptions;
}

} // namespace

const QList<HookDescription>& HookDescriptions()
{
    static const QList<HookDescription> descriptions = ReadDescriptions();
    return descriptions;
}

const HookDescription& DescriptionOf(HookKind kind)
{
    return *std::ranges::find(HookDescriptions(), kind, &HookDescription::kind);
}

} // namespace quenvolta
