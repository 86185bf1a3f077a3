#include "provider/activities/running_activities.h"

#include "provider/activities/activity_texts.h"
#include "provider/call_failure.h"
#include "provider/svn/repository_names.h"

#include <algorithm>
#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype kLongestId = 128;
// Each takes a process; more at once would only be slower.
constexpr std::size_t kMostActivities = 16;

// Empty when the call has none.
QString IdOf(const CallMessage& call)
{
    Variant value;
    if (!call.context || Failed(call.context->GetValue(u"ActivityId"_s, 0, &value)) || IsNullVariant(value))
        return {};
    const QString* id = std::get_if<QString>(&value);
    if (!id || id->isEmpty() || id->size() > kLongestId)
        throw ProviderError(WBEM_E_INVALID_PARAMETER, replies::kActivityIdInvalid.arg(kLongestId));
    return *id;
}

} // namespace

RunningActivities::Activity::Activity(const Options& options, const CallMessage& call, const QString& activityId)
    : id(activityId)
    , callId(call.callId)
    , requestId(call.requestId)
    , method(call.method)
    , job(options.program, options.arguments, call)
{
}

RunningActivities::Ended RunningActivities::Activity::End() const
{
    if (job.Answer()) {
        Ended ended{requestId, *job.Answer()};
        ended.result.callId = callId;
        return ended;
    }
    const ProviderError error =
        job.IsStopping() ? ProviderError(WBEM_E_CALL_CANCELLED, replies::kJobCancelled.Whole())
                         : ProviderError(WBEM_E_FAILED, replies::kJobCrashed.arg(method), {}, job.LastWords());
    return {requestId, FailureResult(callId, error), true};
}

RunningActivities::RunningActivities(Options options)
    : m_options(std::move(options))
{
}

void RunningActivities::Start(const CallMessage& call)
{
    const QString id = IdOf(call);
    const bool inUse =
        !id.isEmpty() && std::any_of(m_activities.cbegin(), m_activities.cend(),
                                     [&id](const auto& each) { return each.id.compare(id, Qt::CaseInsensitive) == 0; });
    if (inUse)
        throw ProviderError(WBEM_E_ALREADY_EXISTS, replies::kActivityIdInUse.arg(RepositoryNames::Show(id)));
    if (m_activities.size() >= kMostActivities)
        throw ProviderError(WBEM_E_FAILED, replies::kTooManyActivities.arg(kMostActivities));
    m_activities.emplace_back(m_options, call, id);
}

bool RunningActivities::Cancel(const QString& id)
{
    bool found = false;
    for (Activity& each : m_activities) {
        if (id.isEmpty() || each.id.compare(id, Qt::CaseInsensitive) != 0)
            continue;
        each.job.Stop(m_options.patience);
        found = true;
    }
    return found;
}

void RunningActivities::CancelAll()
{
    for (Activity& each : m_activities)
        each.job.Stop(m_options.patience);
}

void RunningActivities::AddDescriptors(std::vector<pollfd>* watched) const
{
    for (const Activity& each : m_activities)
        each.job.AddDescriptors(watched);
}

int RunningActivities::PollTimeout() const
{
    qint64 timeout = -1;
    for (const Activity& each : m_activities) {
        const qint64 left = each.job.KillTime().remainingTime(); // -1 when it isn't stopping
        if (left >= 0 && (timeout < 0 || left < timeout))
            timeout = left;
    }
    return static_cast<int>(timeout);
}

std::vector<RunningActivities::Ended> RunningActivities::Advance()
{
    std::vector<Ended> ended;
    for (Activity& each : m_activities) {
        each.job.Advance();
        if (each.job.HasEnded())
            ended.push_back(each.End());
    }
    m_activities.remove_if([](const Activity& each) { return each.job.HasEnded(); });
    return ended;
}

} // namespace quenvolta
