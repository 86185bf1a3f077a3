#include "repositories/commit_details.h"

#include "ui/help_site.h"
#include "ui/string_table.h"

#include <QDialogButtonBox>
#include <QPushButton>

namespace quenvolta
{

QAbstractButton& AddDetailsButton(QDialogButtonBox& buttons, QLabel& hooksNote)
{
    constexpr int kHooksTopic = 2002;
    LinkToHelp(hooksNote, kHooksTopic);
    QPushButton* details = buttons.addButton(LoadString(StringId::kDetailsButton), QDialogButtonBox::ResetRole);
    details->setAutoDefault(false);
    return *details;
}

} // namespace quenvolta
