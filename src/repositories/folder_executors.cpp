#include "repositories/folder_executors.h"

#include "model/model.h"
#include "repositories/folder_name_rule.h"
#include "ui/message_boxes.h"

#include <utility>

namespace quenvolta
{

using namespace Qt::StringLiterals;

CFolderExecutorBase::CFolderExecutorBase(CModel& model, TreePosition target, int refusal, int defaultMessage)
    : m_model(model)
    , m_target(std::move(target))
    , m_refusal(refusal)
    , m_defaultMessage(defaultMessage)
{
}

bool CFolderExecutorBase::Execute(const QString& name, const QString& message, QWidget* owner)
{
    if (!IsValidFolderName(name)) {
        ShowMessage(owner, {MessageIcon::Error, MessageButtons::Ok}, m_refusal, name);
        return false;
    }
    m_model.CreateFolders(m_target.repositoryName, PathsFor(ChildPath(m_target.path, name)), message);
    return true;
}

QString CFolderExecutorBase::GetDefaultMessage(const QString& name) const
{
    return LoadString(m_defaultMessage, name);
}

CCreateFolderExecutor::CCreateFolderExecutor(CModel& model, TreePosition target)
    : CFolderExecutorBase(model, std::move(target), StringId::kInvalidFolderName, StringId::kCreatedFolder)
{
}

QStringList CCreateFolderExecutor::PathsFor(const QString& folder) const
{
    return {folder};
}

CCreateProjectExecutor::CCreateProjectExecutor(CModel& model, TreePosition target)
    : CFolderExecutorBase(model, std::move(target), StringId::kInvalidProjectName, StringId::kCreateProject)
{
}

QStringList CCreateProjectExecutor::PathsFor(const QString& folder) const
{
    return {folder, ChildPath(folder, u"trunk"_s), ChildPath(folder, u"branches"_s), ChildPath(folder, u"tags"_s)};
}

} // namespace quenvolta
