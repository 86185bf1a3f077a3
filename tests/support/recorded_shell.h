#pragma once

#include "ui/shell.h"

#include <QStringList>

namespace quenvolta::test
{

/// A desktop that only notes what is asked of it, as "what argument".
class RecordedShell final : public IcShell
{
public:
    void OpenAddress(const QUrl& address) const override { Note(u"open", address.toString()); }
    void CopyText(const QString& text) const override { Note(u"copy", text); }
    void StartCommandPrompt(const QString& workingDirectory) const override { Note(u"prompt", workingDirectory); }
    void OpenEventViewer(const QString& computer) const override { Note(u"events", computer); }
    void OpenStoredCredentials() const override { Note(u"credentials", {}); }

    mutable QStringList asked;

private:
    void Note(QStringView what, const QString& argument) const { asked.append(what.toString() + u' ' + argument); }
};

} // namespace quenvolta::test
