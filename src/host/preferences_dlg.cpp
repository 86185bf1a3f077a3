#include "host/preferences_dlg.h"

#include "foundation/preferences.h"
#include "ui/guard.h"
#include "ui_preferences_dlg.h"

namespace quenvolta
{

CPreferencesDlg::CPreferencesDlg(IcPreferences& preferences, IcMessages& messages, QWidget* parent)
    : QDialog(parent)
    , m_preferences(preferences)
    , m_messages(messages)
    , m_ui(std::make_unique<Ui::PreferencesDlg>())
{
    m_ui->setupUi(this);
    m_ui->updateCheck->setChecked(!preferences.IsUpdateCheckDisabled());
    m_ui->servers->addItems(preferences.GetRecentServers());
    m_ui->masters->addItems(preferences.GetRecentQdfsServers());
}

CPreferencesDlg::~CPreferencesDlg() = default;

void CPreferencesDlg::accept()
{
    const bool isDisabled = !m_ui->updateCheck->isChecked();
    const bool isKept = Guarded(m_messages, [&] {
        if (m_preferences.IsUpdateCheckDisabled() != isDisabled)
            m_preferences.SetUpdateCheckDisabled(isDisabled);
    });
    if (isKept)
        QDialog::accept();
}

} // namespace quenvolta
