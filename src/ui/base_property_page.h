#pragma once

#include <QWizardPage>

class QLabel;

namespace quenvolta
{

/// The base of every page of a property sheet or a wizard: its title and subtitle (a wizard's header), its tab's text
/// (the window title), help links, and whether something was changed in it.
class CBasePropertyPageImpl : public QWizardPage
{
    Q_OBJECT

public:
    explicit CBasePropertyPageImpl(QWidget* parent = nullptr);

    /// Reads what the page shows. Called before it is shown first, and again after a failure.
    virtual void OnCreatePage() {}
    bool IsModified() const { return m_modified; }
    /// Writes what was changed; a page without changes does nothing. After a failure the page stays modified.
    void Apply();

Q_SIGNALS:
    void ModifiedChanged();

protected:
    virtual void OnApply() {}
    void SetModified(bool modified = true);
    /// The links of the label open the help page of the number.
    void LinkToHelp(QLabel& label, int topic);

private:
    bool m_modified = false;
};

} // namespace quenvolta
