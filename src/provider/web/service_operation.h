#pragma once

#include "provider/svn/svn_cancel.h"
#include "provider/unique_fd.h"
#include "provider/web/web_folder.h"

#include <optional>

namespace quenvolta
{

/// Held while the web service is started or stopped, so that one provider does it at a time and the others can tell.
/// It ends with the object, or with the process.
class ServiceOperation
{
public:
    enum class Kind : char { Start = '+', Stop = '-' };

    /// Waits for others, at most half a minute. ProviderError when that was too short, or the wait was cancelled.
    ServiceOperation(const WebFolder& folder, Kind kind, const CancelCheck& cancel);

    /// What is under way now.
    static std::optional<Kind> UnderWay(const WebFolder& folder);

private:
    UniqueFd m_file;
};

} // namespace quenvolta
