#include "accounts/reached_users_dlg.h"

#include "accounts/account_icons.h"
#include "ui/filter_field.h"
#include "ui_reached_users_dlg.h"

namespace quenvolta
{

using namespace Qt::StringLiterals;

CReachedUsersDlg::CReachedUsersDlg(QWidget* parent, const QString& groupName, const QList<ReachedUser>& users)
    : CBaseDialog(parent)
    , m_ui(std::make_unique<Ui::ReachedUsersDlg>())
{
    m_ui->setupUi(this);
    setWindowTitle(FormatMessage(windowTitle(), {groupName}));
    m_users.setHorizontalHeaderLabels({LoadString(StringId::kColumnUserName), LoadString(StringId::kColumnThrough)});
    const AccountIcons icons;
    for (const ReachedUser& user : users) {
        const QString way =
            user.through.isEmpty() ? LoadString(StringId::kDirectMember) : user.through.join(u" \u203a "_s);
        m_users.appendRow({new QStandardItem(icons.IconOf(AccountKind::User), user.name), new QStandardItem(way)});
    }
    m_filtered.setSourceModel(&m_users);
    m_ui->list->setModel(&m_filtered);
    m_ui->list->setColumnWidth(0, m_ui->list->minimumWidth() / 2);
    m_ui->count->setText(LoadString(StringId::kReachedUsers, users.size()));
    new FilterField(*m_ui->filter, m_filtered, *m_ui->list);
}

CReachedUsersDlg::~CReachedUsersDlg() = default;

} // namespace quenvolta
