#pragma once

#include "provider/activities/job_process.h"
#include "provider/method_call.h"

#include <QString>
#include <QUuid>

#include <chrono>
#include <list>
#include <poll.h>
#include <vector>

namespace quenvolta
{

/// The activities of one provider, each in a process of its own.
class RunningActivities final : public ActivityControl
{
public:
    struct Options {
        /// What is started for each, and its arguments.
        QString program;
        QStringList arguments;
        /// How long an activity may take to stop when it is asked to.
        std::chrono::milliseconds patience;
    };

    explicit RunningActivities(Options options);

    /// Starts what `call` asks for. ProviderError when its ActivityId is no identifier or belongs to an activity that
    /// runs, when too many run, or when no process can be started.
    void Start(const CallMessage& call);

    bool Cancel(const QString& id) override;
    void CancelAll();

    bool IsEmpty() const { return m_activities.empty(); }

    void AddDescriptors(std::vector<pollfd>* watched) const;
    /// How long to wait for the descriptors at most, in milliseconds; -1 is without a limit.
    int PollTimeout() const;

    /// An activity that is over.
    struct Ended {
        QUuid requestId;
        ResultMessage result;
        /// It couldn't clean up after itself.
        bool leftThings = false;
    };
    /// Lets all go on, and hands out those that have ended.
    std::vector<Ended> Advance();

private:
    struct Activity {
        Activity(const Options& options, const CallMessage& call, const QString& activityId);
        Ended End() const;

        QString id; // empty when the call had none
        std::uint32_t callId;
        QUuid requestId;
        QString method;
        JobProcess job;
    };

    Options m_options;
    std::list<Activity> m_activities;
};

} // namespace quenvolta
