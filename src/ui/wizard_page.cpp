#include "ui/wizard_page.h"

namespace quenvolta
{

CWizardPage::CWizardPage(int helpTopic)
    : m_helpTopic(helpTopic)
{
    m_messages.SetParent(this);
}

bool CWizardPage::validatePage()
{
    bool goesOn = false;
    return Run([&] { goesOn = OnNext(); }) && goesOn;
}

} // namespace quenvolta
