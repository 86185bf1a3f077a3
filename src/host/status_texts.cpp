#include "host/status_texts.h"

#include "dashboard/service_state_text.h"
#include "ui/string_table.h"

#include <array>

namespace quenvolta
{

namespace
{

constexpr std::uint32_t kServiceStateStopped = 1;

struct FailureWords {
    int title;
    int advice; ///< 0 for none
};

/// By StatusError; the first one stands for no failure.
constexpr std::array kFailures{
    FailureWords{StringId::kErrorGeneral, 0},
    FailureWords{StringId::kErrorGeneral, 0},
    FailureWords{StringId::kErrorUnreachable, StringId::kAdviceUnreachable},
    FailureWords{StringId::kErrorAccessDenied, StringId::kAdviceAccessDenied},
    FailureWords{StringId::kErrorBrokenManagement, StringId::kAdviceBrokenManagement},
    FailureWords{StringId::kErrorNotInstalled, 0},
};

const FailureWords& WordsOf(StatusError error)
{
    return kFailures[static_cast<std::size_t>(error)];
}

} // namespace

QString QdfsServiceText(const ServiceStatus& service)
{
    if (service.startMode == kStartModeDisabled && service.state == kServiceStateStopped)
        return LoadString(StringId::kServiceDisabled);
    return ServiceStateText(service.state);
}

QString AuthenticationText(const CStatusSnapshot& status)
{
    const ServerSettings& settings = status.settings;
    if (!settings.windowsAuthentication) {
        if (!status.accountsFailure.isEmpty())
            return LoadString(StringId::kSubversionAuthenticationError, status.accountsFailure);
        return LoadString(StringId::kSubversionAuthentication, status.userCount, status.groupCount);
    }
    static constexpr std::array kMethods{
        StringId::kWindowsAuthentication,
        StringId::kWindowsAuthenticationBasic,
        StringId::kWindowsAuthenticationIntegrated,
        StringId::kWindowsAuthenticationBoth,
    };
    return LoadString(
        kMethods[(settings.basicAuthentication ? 1U : 0U) + (settings.integratedAuthentication ? 2U : 0U)]);
}

QString LoggingText(const ServerSettings& settings)
{
    static constexpr std::array kLogs{
        StringId::kLoggingErrors,
        StringId::kLoggingErrorsAccess,
        StringId::kLoggingErrorsOperational,
        StringId::kLoggingAll,
    };
    return LoadString(kLogs[(settings.accessLogging ? 1U : 0U) + (settings.operationalLogging ? 2U : 0U)]);
}

QString RepositoriesText(const CStatusSnapshot& status)
{
    return status.repositoriesFailure.isEmpty() ? QString::number(status.repositoryCount) : status.repositoriesFailure;
}

QString FailureTitle(StatusError error)
{
    return LoadString(WordsOf(error).title);
}

QString FailureAdvice(StatusError error)
{
    const int advice = WordsOf(error).advice;
    return advice != 0 ? LoadString(advice) : QString();
}

} // namespace quenvolta
