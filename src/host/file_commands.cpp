#include "host/file_commands.h"

#include "host/console_host.h"
#include "host/snap_in_catalog.h"
#include "host/view_state.h"
#include "ui/messages.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

const QString kSuffix = u"qvconsole"_s;

/// A text in which nothing is a mnemonic.
QString AsMenuText(QString text)
{
    return text.replace(u'&', "&&"_L1);
}

} // namespace

FileCommands::FileCommands(const SnapInCatalog& catalog, ConsoleHost& host, IcMessages& messages, ViewState* state,
                           QWidget& window, Loader load)
    : m_catalog(catalog)
    , m_host(host)
    , m_messages(messages)
    , m_state(state)
    , m_window(window)
    , m_load(std::move(load))
{
}

void FileCommands::New()
{
    if (!MayLeave())
        return;
    m_load(m_catalog.CreateNew());
    SetFileName({});
}

void FileCommands::Open()
{
    const QString chosen = QFileDialog::getOpenFileName(&m_window, LoadString(StringId::kOpenConsole), m_fileName,
                                                        LoadString(StringId::kConsoleFileFilter), nullptr,
                                                        QFileDialog::DontUseNativeDialog);
    if (!chosen.isEmpty())
        OpenFile(chosen);
}

void FileCommands::OpenFile(const QString& fileName)
{
    const ConsoleFile file = ReadConsoleFile(fileName);
    if (!MayLeave())
        return;
    m_load(m_catalog.Create(file));
    SetFileName(QFileInfo(fileName).absoluteFilePath());
}

bool FileCommands::Save()
{
    if (m_fileName.isEmpty())
        return SaveAs();
    Write(m_fileName);
    return true;
}

bool FileCommands::SaveAs()
{
    QFileDialog dialog(&m_window, LoadString(StringId::kSaveConsole), m_fileName,
                       LoadString(StringId::kConsoleFileFilter));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(kSuffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    const QString fileName = dialog.selectedFiles().first();
    Write(fileName);
    SetFileName(QFileInfo(fileName).absoluteFilePath());
    return true;
}

void FileCommands::Write(const QString& fileName)
{
    if (m_host.SnapIn() == nullptr)
        return;
    WriteConsoleFile(fileName, SnapInCatalog::Describe(*m_host.SnapIn(), false));
    SnapInCatalog::Describe(*m_host.SnapIn(), true); // it is on the disk: no longer changed
}

bool FileCommands::MayLeave()
{
    if (m_fileName.isEmpty() || m_host.SnapIn() == nullptr || !SnapInCatalog::IsDirty(*m_host.SnapIn()))
        return true;
    constexpr int kSave = 1;
    constexpr int kDiscard = 2;
    const int answer = m_messages.Ask(
        {.icon = MessageIcon::Question,
         .content = LoadString(StringId::kAskSaveConsole, QFileInfo(m_fileName).fileName()),
         .buttons = {{kSave, LoadString(StringId::kSaveButton)}, {kDiscard, LoadString(StringId::kDiscardButton)}}});
    return answer == kDiscard || (answer == kSave && Save());
}

void FileCommands::FillRecentFiles(QMenu& menu)
{
    menu.clear();
    const QStringList files = m_state != nullptr ? m_state->RecentFiles() : QStringList();
    for (qsizetype i = 0; i < files.size(); ++i) {
        const QString& fileName = files[i];
        QAction* action = menu.addAction(u"&%1 %2"_s.arg(i + 1).arg(AsMenuText(QFileInfo(fileName).fileName())));
        action->setStatusTip(fileName);
        connect(
            action, &QAction::triggered, this, [this, fileName] { Q_EMIT RecentFileChosen(fileName); },
            Qt::QueuedConnection);
    }
    if (files.isEmpty())
        menu.addAction(LoadString(StringId::kNoRecentFiles))->setEnabled(false);
}

void FileCommands::SetFileName(const QString& fileName)
{
    m_fileName = fileName;
    if (m_state != nullptr && !fileName.isEmpty())
        m_state->AddRecentFile(fileName);
    Q_EMIT FileNameChanged();
}

} // namespace quenvolta
