#include "ui/base_property_page.h"

#include "ui/help_site.h"

namespace quenvolta
{

CBasePropertyPageImpl::CBasePropertyPageImpl(QWidget* parent)
    : QWizardPage(parent)
{
}

void CBasePropertyPageImpl::Apply()
{
    if (!m_modified)
        return;
    OnApply();
    SetModified(false);
}

void CBasePropertyPageImpl::SetModified(bool modified)
{
    if (m_modified == modified)
        return;
    m_modified = modified;
    Q_EMIT ModifiedChanged();
}

void CBasePropertyPageImpl::LinkToHelp(QLabel& label, int topic)
{
    quenvolta::LinkToHelp(label, topic);
}

} // namespace quenvolta
