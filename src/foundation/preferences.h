#pragma once

#include "foundation/file_time.h"

#include <QString>
#include <QStringList>

namespace quenvolta
{

/// What the console remembers for the person who runs it. Failures are exceptions.
class IcPreferences
{
public:
    virtual ~IcPreferences() = default;
    /// The computers connected to, the most recent first.
    virtual QStringList GetRecentServers() const = 0;
    virtual void AddRecentServer(const QString& name, FileTime time) = 0;
    /// The master servers named for slave repositories, the most recent first.
    virtual QStringList GetRecentQdfsServers() const = 0;
    virtual void AddRecentQdfsServer(const QString& name) = 0;
    virtual bool IsUpdateCheckDisabled() const = 0;
    virtual void SetUpdateCheckDisabled(bool disabled) = 0;
};

} // namespace quenvolta
