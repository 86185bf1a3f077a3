#pragma once

#include "model/repository_entry_info.h"
#include "snapin/repository_node.h"

namespace quenvolta
{

/// A folder or file inside a repository.
class CRepositoryEntryNode final : public CRepositoryNode
{
public:
    CRepositoryEntryNode(const NodeServices& services, std::shared_ptr<RepositoryInfo> repository,
                         RepositoryEntryInfo entry);

    const QString& Name() const override { return m_name; }
    const QString& Path() const override { return m_path; }

protected:
    /// Folders can be deleted.
    void SetVerbs(IConsoleVerb& verb) override;
    HRESULT OnDelete(IConsole& console) override;
    int BaseImage() const override;
    QString ReadUrl() override;

private:
    QString m_name;
    QString m_path;
};

} // namespace quenvolta
