#include "snapin/users_check.h"

#include "model/model.h"
#include "snapin/dialogs.h"
#include "snapin/node_services.h"
#include "ui/messages.h"

namespace quenvolta
{

namespace
{

constexpr int kContinue = 1001;
constexpr int kCreateUser = 1014;

} // namespace

bool CheckForUsers(const NodeServices& services, const DialogRequest& request)
{
    if (services.model.GetServerSettings().windowsAuthentication || !services.model.GetUsers().isEmpty())
        return true;
    const TaskQuestion question{.icon = MessageIcon::Warning,
                                .content = LoadString(StringId::kNoUsersForUrl),
                                .buttons = {{kCreateUser, LoadString(StringId::kCreateUserButton),
                                             services.dialogs.Has(DialogKind::CreateUser)},
                                            {kContinue, LoadString(StringId::kContinueButton)}}};
    const int chosen = services.messages.Ask(question);
    if (chosen == kCreateUser)
        services.dialogs.Open(DialogKind::CreateUser, request);
    return chosen == kContinue;
}

} // namespace quenvolta
