#pragma once

#include "ui/shell.h"

#include <QStringList>

namespace quenvolta
{

/// The desktop as it is.
class CDesktopShell final : public IcShell
{
public:
    static const CDesktopShell& Instance();

    void OpenAddress(const QUrl& address) const override;
    void CopyText(const QString& text) const override;
    void StartCommandPrompt(const QString& workingDirectory) const override;
    void OpenEventViewer(const QString& computer) const override;
    void OpenStoredCredentials() const override;

private:
    static void StartInTerminal(const QStringList& command, const QString& workingDirectory);
};

} // namespace quenvolta
