#include "snapin/repository_root_node.h"

#include "model/model.h"
#include "repositories/repository_name_rule.h"
#include "snapin/command_id.h"
#include "snapin/node_images.h"
#include "snapin/repository_columns.h"
#include "ui/messages.h"

#include <algorithm>
#include <array>
#include <optional>

namespace quenvolta
{

namespace
{

// The pages of the property sheet of a repository.
constexpr int kHooksPage = 1;
constexpr int kDelegationPage = 2;

/// What the server must be able to do, and of what type the repository must be, for a command.
struct CommandRule {
    int command;
    std::uint32_t capability;
    std::optional<std::int32_t> type;
};

constexpr std::array kRules{
    CommandRule{CommandId::kManageDelegation, ServerCapability::kDelegation, {}},
    CommandRule{CommandId::kConvertToQdfs, ServerCapability::kQdfs, kRepositoryTypeFsfs},
    CommandRule{CommandId::kConvertToFsfs, ServerCapability::kQdfs, kRepositoryTypeQdfsMaster},
    CommandRule{CommandId::kConsistencyCheck, ServerCapability::kQdfs, kRepositoryTypeQdfsSlave},
    CommandRule{CommandId::kExportReplicationSeed, ServerCapability::kReplicationSeed, kRepositoryTypeQdfsMaster},
};

} // namespace

CRepositoryRootNode::CRepositoryRootNode(const NodeServices& services, const RepositoryInfo& repository)
    : CRepositoryNode(services, std::make_shared<RepositoryInfo>(repository), true, repository.permissionState,
                      ImageOf(kImageRepository, repository.permissionState))
{
    TakeRecord(repository);
}

QString CRepositoryRootNode::GetResultPaneColInfo(int column)
{
    switch (column) {
    case kRevisionsColumn:
        return RevisionsText();
    case kTypeColumn:
        return TypeText();
    default:
        return Name();
    }
}

void CRepositoryRootNode::SetVerbs(IConsoleVerb& verb)
{
    Enable(verb, MMC_CONSOLE_VERB::MMC_VERB_REFRESH);
    Enable(verb, MMC_CONSOLE_VERB::MMC_VERB_DELETE);
    if (Model().HasCapability(ServerCapability::kRepositoryRename))
        Enable(verb, MMC_CONSOLE_VERB::MMC_VERB_RENAME);
}

HRESULT CRepositoryRootNode::OnRename(IConsole& console, const QString& name)
{
    const QString oldName = Name();
    if (name.isEmpty() || name == oldName)
        return S_FALSE;
    if (!IsValidRepositoryName(name)) {
        Messages().ShowMessage({MessageIcon::Error, MessageButtons::Ok}, StringId::kInvalidRepositoryName);
        return S_FALSE;
    }
    if (Messages().ShowMessage({MessageIcon::Warning, MessageButtons::YesNo}, StringId::kAskRenameRepository, oldName,
                               name) != MessageAnswer::Yes)
        return S_FALSE;
    Model().RenameRepository(oldName, name);
    Repository().name = name;
    ForgetUrls();
    UpdateScopeItem(console, SDI_STR);
    if (IsShown() && !IsInError())
        ShowDescription(console);
    console.UpdateAllViews(GetDataObject(DATA_OBJECT_TYPES::CCT_SCOPE));
    return S_OK;
}

HRESULT CRepositoryRootNode::OnDelete(IConsole& /*console*/)
{
    const int question = GetRepositoryInfo().type == kRepositoryTypeQdfsMaster ? StringId::kAskDeleteMasterRepository
                                                                               : StringId::kAskDeleteRepository;
    if (Messages().ShowMessage({MessageIcon::Warning, MessageButtons::YesNo}, question, Name()) != MessageAnswer::Yes)
        return S_FALSE;
    Model().DeleteRepository(QString(Name())); // its parent drops this node when the model tells of the deletion
    return S_OK;
}

bool CRepositoryRootNode::IsCommandEnabled(int command)
{
    const auto rule = std::ranges::find(kRules, command, &CommandRule::command);
    if (rule == kRules.end())
        return true;
    return Model().HasCapability(rule->capability) && (!rule->type || GetRepositoryInfo().type == rule->type);
}

void CRepositoryRootNode::ManageHooks(IConsole& console)
{
    OpenDialog(DialogKind::RepositoryHooks, OwnRequest(console, kHooksPage));
}

void CRepositoryRootNode::ManageDelegation(IConsole& console)
{
    OpenDialog(DialogKind::RepositoryDelegation, OwnRequest(console, kDelegationPage));
}

void CRepositoryRootNode::ConvertToQdfs(IConsole& console)
{
    OpenDialog(DialogKind::ConvertToQdfs, OwnRequest(console));
}

void CRepositoryRootNode::ConvertToFsfs(IConsole& console)
{
    OpenDialog(DialogKind::ConvertToFsfs, OwnRequest(console));
}

void CRepositoryRootNode::CheckConsistency(IConsole& console)
{
    OpenDialog(DialogKind::ConsistencyCheck, OwnRequest(console));
}

void CRepositoryRootNode::ExportReplicationSeed(IConsole& console)
{
    OpenDialog(DialogKind::ExportReplicationSeed, OwnRequest(console));
}

int CRepositoryRootNode::BaseImage() const
{
    return kImageRepository;
}

void CRepositoryRootNode::ReadState()
{
    TakeRecord(Model().GetRepository(Name()));
}

QString CRepositoryRootNode::ReadUrl()
{
    return Model().GetRepository(Name()).url;
}

void CRepositoryRootNode::TakeRecord(const RepositoryInfo& record)
{
    Repository() = record;
    if (!record.url.isEmpty())
        SetUrl(record.url);
    if (record.permissionState != PermissionState::Unknown)
        SetPermissionState(record.permissionState);
}

QString CRepositoryRootNode::RevisionsText() const
{
    const auto& revisions = GetRepositoryInfo().totalRevisions;
    return revisions ? QString::number(static_cast<std::uint32_t>(*revisions)) : LoadString(StringId::kUnavailable);
}

QString CRepositoryRootNode::TypeText() const
{
    static constexpr std::array kTexts{StringId::kTypeFsfs, StringId::kTypeQdfsMaster, StringId::kTypeQdfsSlave};
    const auto& type = GetRepositoryInfo().type;
    const bool known = type && *type >= 0 && static_cast<std::size_t>(*type) < kTexts.size();
    return LoadString(known ? kTexts[static_cast<std::size_t>(*type)] : StringId::kUnavailable);
}

} // namespace quenvolta
