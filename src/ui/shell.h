#pragma once

#include <QString>
#include <QUrl>

namespace quenvolta
{

/// What the console asks of the desktop. What can't be done is an exception that says why.
class IcShell
{
public:
    virtual ~IcShell() = default;
    virtual void OpenAddress(const QUrl& address) const = 0;
    /// Replaces what the clipboard holds.
    virtual void CopyText(const QString& text) const = 0;
    /// A terminal whose shell knows the server's environment.
    virtual void StartCommandPrompt(const QString& workingDirectory) const = 0;
    /// What the server of a computer (empty: the local one) logged.
    virtual void OpenEventViewer(const QString& computer) const = 0;
    /// The passwords and keys that the desktop keeps; nothing happens where there is no program for them.
    virtual void OpenStoredCredentials() const = 0;
};

} // namespace quenvolta
