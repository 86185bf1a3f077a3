#pragma once

#include "snapin/repository_node.h"

namespace quenvolta
{

/// A repository.
class CRepositoryRootNode final : public CRepositoryNode
{
public:
    CRepositoryRootNode(const NodeServices& services, const RepositoryInfo& repository);

    const QString& Name() const override { return GetRepositoryInfo().name; }
    const QString& Path() const override { return m_path; }

protected:
    QString GetResultPaneColInfo(int column) override;
    void SetVerbs(IConsoleVerb& verb) override;
    HRESULT OnRename(IConsole& console, const QString& name) override;
    HRESULT OnDelete(IConsole& console) override;
    bool IsCommandEnabled(int command) override;
    void ManageHooks(IConsole& console) override;
    void ManageDelegation(IConsole& console) override;
    void ConvertToQdfs(IConsole& console) override;
    void ConvertToFsfs(IConsole& console) override;
    void CheckConsistency(IConsole& console) override;
    void ExportReplicationSeed(IConsole& console) override;
    int BaseImage() const override;
    void ReadState() override;
    QString ReadUrl() override;

private:
    void TakeRecord(const RepositoryInfo& record);
    QString RevisionsText() const;
    QString TypeText() const;

    const QString m_path;
};

} // namespace quenvolta
