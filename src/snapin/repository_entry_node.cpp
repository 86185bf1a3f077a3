#include "snapin/repository_entry_node.h"

#include "model/model.h"
#include "snapin/node_images.h"

#include <utility>

namespace quenvolta
{

CRepositoryEntryNode::CRepositoryEntryNode(const NodeServices& services, std::shared_ptr<RepositoryInfo> repository,
                                           RepositoryEntryInfo entry)
    : CRepositoryNode(services, std::move(repository), entry.kind == EntryKind::Folder, entry.permissionState,
                      ImageOf(entry.kind == EntryKind::Folder ? kImageFolder : kImageFile, entry.permissionState))
    , m_name(std::move(entry.name))
    , m_path(std::move(entry.path))
{
    if (!entry.url.isEmpty())
        SetUrl(std::move(entry.url));
}

void CRepositoryEntryNode::SetVerbs(IConsoleVerb& verb)
{
    CRepositoryNode::SetVerbs(verb);
    if (IsFolder() && Services().dialogs.Has(DialogKind::DeleteFolder))
        Enable(verb, MMC_CONSOLE_VERB::MMC_VERB_DELETE);
}

HRESULT CRepositoryEntryNode::OnDelete(IConsole& console)
{
    if (!IsFolder() || !OpenDialog(DialogKind::DeleteFolder, OwnRequest(console)))
        return S_FALSE;
    return console.NameSpace().DeleteItem(ScopeItem(), true);
}

int CRepositoryEntryNode::BaseImage() const
{
    return IsFolder() ? kImageFolder : kImageFile;
}

QString CRepositoryEntryNode::ReadUrl()
{
    return Model().GetUrl(Position());
}

} // namespace quenvolta
