#include "host/connecting_dlg.h"

#include "ui/string_table.h"
#include "ui_connecting_dlg.h"

namespace quenvolta
{

CConnectingDlg::CConnectingDlg(QWidget* parent, const QString& computer)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::ConnectingDlg>())
{
    m_ui->setupUi(this);
    m_ui->computer->setText(LoadString(StringId::kConnectingTo, computer));
}

CConnectingDlg::~CConnectingDlg() = default;

void CConnectingDlg::ShowSeconds(qint64 seconds)
{
    m_ui->state->setText(LoadString(StringId::kConnectingSince, seconds));
}

} // namespace quenvolta
