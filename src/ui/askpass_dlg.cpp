#include "ui/askpass_dlg.h"

#include "ui/string_table.h"
#include "ui_askpass_dlg.h"

#include <QFontDatabase>
#include <QPushButton>
#include <QStyle>

namespace quenvolta
{

using namespace Qt::StringLiterals;

CAskpassDlg::CAskpassDlg(const AskpassPrompt& prompt, QWidget* parent)
    : QDialog(parent)
    , m_kind(prompt.kind)
    , m_ui(std::make_unique<Ui::AskpassDlg>())
{
    using Kind = AskpassPrompt::Kind;
    m_ui->setupUi(this);
    const int side = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    const auto icon = m_kind == Kind::HostKey ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxQuestion;
    m_ui->icon->setPixmap(style()->standardIcon(icon, nullptr, this).pixmap(side));
    m_ui->prompt->setText(prompt.text);
    m_ui->secretRow->setVisible(m_kind == Kind::Secret);
    m_ui->fingerprintRow->setVisible(!prompt.fingerprint.isEmpty());
    m_ui->fingerprint->setText(prompt.fingerprint);
    m_ui->fingerprint->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_ui->fingerprint->setMinimumWidth(
        m_ui->fingerprint->fontMetrics().horizontalAdvance(prompt.fingerprint + u"  "_s));
    QPushButton* ok = m_ui->buttons->button(QDialogButtonBox::Ok);
    QPushButton* cancel = m_ui->buttons->button(QDialogButtonBox::Cancel);
    if (m_kind == Kind::HostKey)
        ok->setText(LoadString(StringId::kTrustAndConnect));
    if (m_kind == Kind::HostKey || m_kind == Kind::Confirm) {
        cancel->setDefault(true); // trust is given with care
        cancel->setFocus();
    } else {
        m_ui->secret->setFocus();
    }
    cancel->setVisible(m_kind != Kind::Notice);
}

CAskpassDlg::~CAskpassDlg() = default;

QString CAskpassDlg::Answer() const
{
    switch (m_kind) {
    case AskpassPrompt::Kind::Secret:
        return m_ui->secret->text();
    case AskpassPrompt::Kind::HostKey:
        return u"yes"_s;
    case AskpassPrompt::Kind::Confirm:
    case AskpassPrompt::Kind::Notice:
        break;
    }
    return {};
}

} // namespace quenvolta
