#pragma once

#include "provider/provider_texts.h"

/// The words about the service for distributed repositories.
namespace quenvolta::replicationtexts
{

using replies::Text;

inline constexpr Text kAlreadyRunning{u"The service for distributed repositories is running already."};
inline constexpr Text kNotRunning{u"The service for distributed repositories is not running."};
inline constexpr Text kDisabled{
    u"The service for distributed repositories cannot be started: it is disabled. Change its start mode first."};
inline constexpr Text kNotStarted{u"The service for distributed repositories did not start: %1"};
inline constexpr Text kNotStopped{
    u"The service for distributed repositories did not stop in 30 seconds. It goes on stopping."};

} // namespace quenvolta::replicationtexts
