#include "provider/activities/activity_class.h"

#include "provider/activities/activity_texts.h"
#include "provider/provider_error.h"
#include "provider/svn/repository_names.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

void Cancel(MethodCall& call)
{
    const QString id = call.String(u"Id");
    ActivityControl* activities = call.Context().activities;
    if (!activities || !activities->Cancel(id))
        throw ProviderError(WBEM_E_NOT_FOUND, replies::kActivityMissing.arg(RepositoryNames::Show(id)));
}

} // namespace

ActivityClass::ActivityClass()
{
    Handle(u"Cancel"_s, Effect::Reads, &Cancel);
}

} // namespace quenvolta
