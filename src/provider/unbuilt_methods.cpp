#include "provider/unbuilt_methods.h"

#include "provider/provider_error.h"
#include "provider/provider_texts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quenvolta
{

namespace
{

using Method = std::pair<QStringView, QStringView>;

#define UNBUILT(className, method) Method{u"" #className, u"" #method},
const Method kUnbuilt[] = {
#include "provider/unbuilt_methods.def"
};
#undef UNBUILT

} // namespace

bool IsUnbuilt(QStringView className, QStringView method)
{
    return std::find(std::begin(kUnbuilt), std::end(kUnbuilt), Method{className, method}) != std::end(kUnbuilt);
}

void RefuseUnbuilt(const QString& className, const QString& method)
{
    throw ProviderError(WBEM_E_NOT_SUPPORTED, replies::kMethodNotBuilt.arg(className, method),
                        replies::kMethodNotBuiltSummary.Whole());
}

} // namespace quenvolta
