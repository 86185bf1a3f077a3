#pragma once

#include "model/async_call.h"
#include "model/started_activity.h"

namespace quenvolta
{

class CModel;

/// A long call of the model's server.
class CRemoteActivity final : public IcAsyncCall
{
public:
    /// The model must outlive the activity.
    CRemoteActivity(CModel& model, StartedActivity started);

    bool IsComplete() override;
    void Cancel() override;

private:
    CModel& m_model;
    StartedActivity m_started;
};

} // namespace quenvolta
