#pragma once

#include <QDialog>

#include <memory>

namespace Ui
{
class PreferencesDlg;
}

namespace quenvolta
{

class IcMessages;
class IcPreferences;

/// What the console remembers for the person, and the switch that is theirs.
class CPreferencesDlg final : public QDialog
{
    Q_OBJECT

public:
    CPreferencesDlg(IcPreferences& preferences, IcMessages& messages, QWidget* parent);
    ~CPreferencesDlg() override;

    void accept() override;

private:
    IcPreferences& m_preferences;
    IcMessages& m_messages;
    std::unique_ptr<Ui::PreferencesDlg> m_ui;
};

} // namespace quenvolta
