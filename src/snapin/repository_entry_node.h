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
                         const RepositoryEntryInfo& entry);

    const QString& Name() const override { return m_name; }
    const QString& Path() const override { return m_path; }

protected:
    int BaseImage() const override;
    QString ReadUrl() override;

private:
    QString m_name;
    QString m_path;
};

} // namespace quenvolta
