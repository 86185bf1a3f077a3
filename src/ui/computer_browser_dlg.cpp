#include "ui/computer_browser_dlg.h"

#include "platform/directory/known_computers.h"
#include "ui/string_table.h"
#include "ui_computer_browser_dlg.h"

#include <QDir>
#include <QPushButton>
#include <QStandardPaths>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

const QString kBrowseProgram = u"avahi-browse"_s;
const QStringList kBrowseArguments{u"--resolve"_s, u"--parsable"_s, u"--terminate"_s, u"_ssh._tcp"_s};

} // namespace

CComputerBrowserDlg::CComputerBrowserDlg(QWidget* parent, const QString& sshFolder)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::ComputerBrowserDlg>())
{
    m_ui->setupUi(this);
    for (const QString& host : KnownSshHosts(sshFolder.isEmpty() ? QDir::homePath() + "/.ssh"_L1 : sshFolder))
        Add(host, LoadString(StringId::kKnownFromSsh));
    connect(m_ui->filter, &QLineEdit::textChanged, this, &CComputerBrowserDlg::ApplyFilter);
    connect(m_ui->computers, &QTreeWidget::itemSelectionChanged, this, &CComputerBrowserDlg::UpdateButtons);
    connect(m_ui->computers, &QTreeWidget::itemActivated, this, &QDialog::accept);
    UpdateButtons();
    AskNetwork();
    m_ui->computers->resizeColumnToContents(0);
}

CComputerBrowserDlg::~CComputerBrowserDlg()
{
    m_announcements.disconnect(this);
    m_announcements.kill();
    m_announcements.waitForFinished();
}

QString CComputerBrowserDlg::Computer() const
{
    const QList<QTreeWidgetItem*> selected = m_ui->computers->selectedItems();
    return selected.isEmpty() ? QString() : selected.first()->text(0);
}

void CComputerBrowserDlg::Add(const QString& name, const QString& origin)
{
    if (m_ui->computers->findItems(name, Qt::MatchFixedString).isEmpty())
        m_ui->computers->addTopLevelItem(new QTreeWidgetItem({name, origin}));
}

void CComputerBrowserDlg::AskNetwork()
{
    const QString program = QStandardPaths::findExecutable(kBrowseProgram);
    if (program.isEmpty()) {
        m_ui->state->setText(LoadString(StringId::kNoAnnouncements, kBrowseProgram));
        return;
    }
    m_ui->state->setText(LoadString(StringId::kSearchingNetwork));
    connect(&m_announcements, &QProcess::readyReadStandardOutput, this, &CComputerBrowserDlg::TakeAnnouncements);
    connect(&m_announcements, &QProcess::finished, this, [this] {
        TakeAnnouncements();
        m_ui->state->clear();
    });
    connect(&m_announcements, &QProcess::errorOccurred, this,
            [this] { m_ui->state->setText(LoadString(StringId::kNoAnnouncements, kBrowseProgram)); });
    m_announcements.setStandardErrorFile(QProcess::nullDevice());
    m_announcements.start(program, kBrowseArguments, QIODevice::ReadOnly);
}

void CComputerBrowserDlg::TakeAnnouncements()
{
    QByteArray lines;
    while (m_announcements.canReadLine())
        lines += m_announcements.readLine();
    for (const QString& host : HostsOfAnnouncements(lines))
        Add(host, LoadString(StringId::kKnownFromNetwork));
    ApplyFilter(m_ui->filter->text());
}

void CComputerBrowserDlg::ApplyFilter(const QString& text)
{
    for (int row = 0; row < m_ui->computers->topLevelItemCount(); ++row) {
        QTreeWidgetItem* item = m_ui->computers->topLevelItem(row);
        const bool shown = item->text(0).contains(text, Qt::CaseInsensitive);
        item->setHidden(!shown);
        if (!shown)
            item->setSelected(false);
    }
}

void CComputerBrowserDlg::UpdateButtons()
{
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(!Computer().isEmpty());
}

} // namespace quenvolta
