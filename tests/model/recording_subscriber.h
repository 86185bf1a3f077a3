#pragma once

#include "foundation/simple_exception.h"
#include "model/model_events.h"

#include <QStringList>

#include <functional>

namespace quenvolta::test
{

/// Writes down what the model tells it, and can do something of its own then.
class RecordingSubscriber final : public IcModelEvents
{
public:
    explicit RecordingSubscriber(QStringList& log, const QString& name = {})
        : m_log(log)
        , m_name(name)
    {
    }

    std::function<void()> onEvent;

    void OnRepositoryCreated(const QString& name) override { Note(Format(u"created %s", name)); }
    void OnRepositoryRenamed(const QString& oldName, const QString& newName) override
    {
        Note(Format(u"renamed %s %s", oldName, newName));
    }
    void OnRepositoryDeleted(const QString& name) override { Note(Format(u"deleted %s", name)); }
    void OnRepositoryConverted(const QString& name) override { Note(Format(u"converted %s", name)); }
    void OnSecurityChanged(const TreePosition& target, const PermissionList& entries) override
    {
        Note(Format(u"security %s%s %d", target.repositoryName, target.path, entries.size()));
    }
    void OnUserCreated(const QString& name) override { Note(Format(u"user created %s", name)); }
    void OnUserDeleted(const QString& name) override { Note(Format(u"user deleted %s", name)); }
    void OnGroupCreated(const QString& name) override { Note(Format(u"group created %s", name)); }
    void OnGroupMembersChanged(const QString& name) override { Note(Format(u"members %s", name)); }
    void OnGroupDeleted(const QString& name) override { Note(Format(u"group deleted %s", name)); }
    void OnServerSettingsChanged() override { Note(Format(u"settings")); }
    void OnComputerChanged() override { Note(Format(u"computer")); }

private:
    void Note(const QString& what)
    {
        m_log.append(m_name + what);
        if (onEvent)
            onEvent();
    }

    QStringList& m_log;
    QString m_name;
};

} // namespace quenvolta::test
