#pragma once

#include "model/tree_position.h"
#include "repositories/create_folder_executor.h"

#include <QStringList>

namespace quenvolta
{

class CModel;

/// Creates folders below a folder, in one commit.
class CFolderExecutorBase : public IcCreateFolderExecutor
{
public:
    bool Execute(const QString& name, const QString& message, QWidget* owner) final;
    QString GetDefaultMessage(const QString& name) const final;

protected:
    /// The texts for a refused name and for the default commit message. The model must outlive the executor.
    CFolderExecutorBase(CModel& model, TreePosition target, int refusal, int defaultMessage);

    /// The paths to create, each after its parent, for the folder of the chosen name.
    virtual QStringList PathsFor(const QString& folder) const = 0;

private:
    CModel& m_model;
    TreePosition m_target;
    int m_refusal;
    int m_defaultMessage;
};

/// Creates one folder.
class CCreateFolderExecutor final : public CFolderExecutorBase
{
public:
    CCreateFolderExecutor(CModel& model, TreePosition target);

protected:
    QStringList PathsFor(const QString& folder) const override;
};

/// Creates a project's folder with trunk, branches and tags in it.
class CCreateProjectExecutor final : public CFolderExecutorBase
{
public:
    CCreateProjectExecutor(CModel& model, TreePosition target);

protected:
    QStringList PathsFor(const QString& folder) const override;
};

} // namespace quenvolta
