#include "wmi/object_paths.h"

#include "foundation/com_exception.h"

#include <vector>

namespace quenvolta
{

using namespace Qt::StringLiterals;

QString BuildObjectPath(const QString& className, const QList<PathKey>& keys)
{
    const std::shared_ptr<IWbemPath> path = CreateWbemPath();
    CheckResult(path->SetClassName(className));
    for (const PathKey& key : keys)
        CheckResult(path->SetKey(key.name, 0, CimType::String, key.value));
    std::uint32_t length = 0;
    if (const HRESULT code = path->GetText(0, &length, nullptr); code != WBEM_E_BUFFER_TOO_SMALL)
        CheckResult(code);
    std::vector<char16_t> text(length);
    CheckResult(path->GetText(0, &length, text.data()));
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()) - 1);
}

QString BuildObjectPath(const QString& className, const QString& name)
{
    return BuildObjectPath(className, {{u"Name"_s, name}});
}

} // namespace quenvolta
