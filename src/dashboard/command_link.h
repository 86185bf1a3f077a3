#pragma once

#include <QLatin1StringView>
#include <QString>

#include <array>
#include <optional>

namespace quenvolta
{

/// What the links of the dashboard stand for.
enum class CommandLink {
    Browse,
    CreateUser,
    CreateGroup,
    CreateRepository,
    ImportRepository,
    ProvideFeedback,
    SubscribeForUpdates,
    VersionInfo,
    OpenEventViewer,
    ConfigureLogging,
    ConfigureAuth,
    ServerUpdate,
    ConnectToComputer,
    EnableQdfsService,
};

/// The addresses of the links, by CommandLink.
inline constexpr std::array kCommandLinkAddresses{
    QLatin1StringView("quenvolta://Browse/"),
    QLatin1StringView("quenvolta://CreateUser/"),
    QLatin1StringView("quenvolta://CreateGroup/"),
    QLatin1StringView("quenvolta://CreateRepository/"),
    QLatin1StringView("quenvolta://ImportRepository/"),
    QLatin1StringView("quenvolta://ProvideFeedback/"),
    QLatin1StringView("quenvolta://SubscribeForUpdates/"),
    QLatin1StringView("quenvolta://VersionInfo/"),
    QLatin1StringView("quenvolta://OpenEventViewer/"),
    QLatin1StringView("quenvolta://ConfigureLogging/"),
    QLatin1StringView("quenvolta://ConfigureAuth/"),
    QLatin1StringView("quenvolta://ServerUpdate/"),
    QLatin1StringView("quenvolta://ConnectToComputer/"),
    QLatin1StringView("quenvolta://EnableQdfsService/"),
};

/// The link of a whole address, without regard to case.
std::optional<CommandLink> FindCommandLink(const QString& address);

/// True for an address that the desktop's browser opens.
bool IsWebAddress(const QString& address);

} // namespace quenvolta
