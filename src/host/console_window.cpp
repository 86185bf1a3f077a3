#include "host/console_window.h"

#include "host/command_bars.h"
#include "host/file_commands.h"
#include "host/preferences_dlg.h"
#include "host/result_list_pane.h"
#include "host/result_views.h"
#include "host/row_delegate.h"
#include "host/snap_in_catalog.h"
#include "host/view_state.h"
#include "ui/guard.h"
#include "ui/icons.h"
#include "ui/string_table.h"
#include "ui_console_window.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QStyle>

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int kTreeWidth = 270;
constexpr int kHeaderAir = 10;

} // namespace

ConsoleWindow::ConsoleWindow(const ISnapinAbout& about, IcMessages& messages, ViewState* state)
    : m_about(about)
    , m_messages(messages)
    , m_state(state)
    , m_ui(std::make_unique<Ui::ConsoleWindow>())
{
    m_ui->setupUi(this);
    setWindowIcon(IconNamed(u"app"_s));
    m_count = new QLabel(m_ui->statusBar);
    m_views = new ResultViews(*m_ui->resultViews, *m_ui->list, messages, this);
    m_list = std::make_unique<ResultListPane>(m_host, *m_ui->list, *m_ui->filter, state);
    m_ui->statusBar->addPermanentWidget(m_count);
    m_ui->panes->setStretchFactor(1, 1);
    QFont bold = m_ui->itemName->font();
    bold.setBold(true);
    m_ui->itemName->setFont(bold);
    m_ui->tree->setItemDelegate(new RowDelegate(m_ui->tree));
    m_ui->tree->setModel(&m_host.Tree());
    m_host.SetMainWindow(this);
    ConnectHost();
    ConnectPanes();
    ConnectActions();
    ConnectCommands();
    ConnectFileActions();
    AdjustToFont();
    m_ui->panes->setSizes({kTreeWidth, width() - kTreeWidth});
    if (m_state != nullptr)
        m_state->Restore(*this, *m_ui->panes);
    ShowNames();
    ShowVerbs();
}

ConsoleWindow::~ConsoleWindow()
{
    // They look at models of the host, which goes before them.
    m_ui->tree->setModel(nullptr);
    m_list.reset();
}

void ConsoleWindow::SetCatalog(const SnapInCatalog& catalog)
{
    m_catalog = &catalog;
    m_files =
        std::make_unique<FileCommands>(catalog, m_host, m_messages, m_state, *this,
                                       [this](std::unique_ptr<IComponentData> snapIn) { Load(std::move(snapIn)); });
    connect(m_files.get(), &FileCommands::FileNameChanged, this, &ConsoleWindow::ShowNames);
    connect(m_files.get(), &FileCommands::RecentFileChosen, this,
            [this](const QString& fileName) { Run([&] { m_files->OpenFile(fileName); }); });
    for (QAction* action : {m_ui->newAction, m_ui->openAction, m_ui->saveAction, m_ui->saveAsAction,
                            m_ui->preferencesAction, m_ui->recentMenu->menuAction()})
        action->setEnabled(true);
}

void ConsoleWindow::OpenFile(const QString& fileName)
{
    bool isOpen = false;
    Run([&] {
        m_files->OpenFile(fileName);
        isOpen = true;
    });
    if (!isOpen)
        Run([this] { m_files->New(); });
}

template <typename Body>
void ConsoleWindow::Run(Body&& body)
{
    Guarded(m_messages, std::forward<Body>(body));
}

void ConsoleWindow::Load(std::unique_ptr<IComponentData> snapIn)
{
    Run([&] {
        ShowStatusText(LoadString(StringId::kConnecting));
        m_host.Load(std::move(snapIn));
        const ScopeEntry& root = *m_host.Tree().Root();
        m_ui->tree->setCurrentIndex(m_host.Tree().IndexOf(root));
        m_ui->tree->expand(m_host.Tree().IndexOf(root));
        m_ui->tree->setFocus();
        ShowNames();
    });
    ShowStatusText({});
}

void ConsoleWindow::LoadWhenPainted(SnapInFactory factory)
{
    m_whenPainted = [this, factory = std::move(factory)] { Run([&] { Load(factory()); }); };
}

void ConsoleWindow::OpenWhenPainted(const QString& fileName)
{
    m_whenPainted = [this, fileName] { OpenFile(fileName); };
}

bool ConsoleWindow::WaitUntilDrawn(std::chrono::milliseconds limit)
{
    return m_views->WaitUntilDrawn(limit);
}

void ConsoleWindow::ExpandShownItem()
{
    m_ui->tree->expand(m_ui->tree->currentIndex());
}

void ConsoleWindow::paintEvent(QPaintEvent* event)
{
    QMainWindow::paintEvent(event);
    if (m_whenPainted)
        QMetaObject::invokeMethod(this, std::exchange(m_whenPainted, nullptr), Qt::QueuedConnection);
}

void ConsoleWindow::ConnectHost()
{
    m_host.SetResultViews([this](const QString& viewType) { return m_views->ViewOf(viewType); });
    connect(&m_host, &ConsoleHost::ShownItemChanged, this, &ConsoleWindow::ShowItem);
    connect(&m_host, &ConsoleHost::ViewChanged, this, &ConsoleWindow::ShowView);
    connect(&m_host, &ConsoleHost::DescriptionChanged, this,
            [this](const QString& text) { m_ui->itemDescription->SetText(text); });
    connect(&m_host, &ConsoleHost::StatusTextChanged, this, &ConsoleWindow::ShowStatusText);
    connect(&m_host, &ConsoleHost::VerbsChanged, this, &ConsoleWindow::ShowVerbs);
}

void ConsoleWindow::ConnectPanes()
{
    ScopeTreeModel& tree = m_host.Tree();
    connect(m_ui->tree->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& now) {
        if (now.isValid())
            Run([&] { m_host.Show(ScopeTreeModel::EntryOf(now)->id); });
    });
    connect(m_ui->tree, &QTreeView::expanded, this, [this](const QModelIndex& expanded) {
        Run([&] { m_host.Expand(ScopeTreeModel::EntryOf(expanded)->id); });
    });
    connect(m_list.get(), &ResultListPane::Activated, this,
            [this](const ConsoleTarget& target) { Run([&] { m_host.Open(target); }); });
    connect(m_list.get(), &ResultListPane::CountChanged, this, &ConsoleWindow::ShowCount);
    // Later: a selection also changes in the middle of changes of the models.
    connect(m_list.get(), &ResultListPane::SelectionChanged, this, &ConsoleWindow::TakeTarget, Qt::QueuedConnection);
    connect(qApp, &QApplication::focusChanged, this, &ConsoleWindow::TakeTarget, Qt::QueuedConnection);

    const auto rename = [this](HSCOPEITEM item, const QString& name) { Run([&] { m_host.Rename(item, name); }); };
    connect(&tree, &ScopeTreeModel::RenameRequested, this, rename, Qt::QueuedConnection);
    connect(&m_host.List(), &ResultListModel::RenameRequested, this, rename, Qt::QueuedConnection);
    connect(&tree, &QAbstractItemModel::dataChanged, this, &ConsoleWindow::ShowNames);
    connect(&tree, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex& parent) {
        if (parent.isValid() && !parent.parent().isValid())
            m_ui->tree->expand(parent); // the root is no more than its children
    });
    for (QAbstractItemView* view : std::initializer_list<QAbstractItemView*>{m_ui->tree, m_ui->list}) {
        view->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(view, &QWidget::customContextMenuRequested, this,
                [this, view](const QPoint& position) { PopUpActions(*view, position); });
    }
}

void ConsoleWindow::ConnectActions()
{
    m_ui->upAction->setShortcuts({QKeySequence(Qt::ALT | Qt::Key_Up), QKeySequence(Qt::Key_Backspace)});
    connect(m_ui->filterAction, &QAction::triggered, m_ui->filter,
            [this] { m_ui->filter->setFocus(Qt::ShortcutFocusReason); });
    connect(m_ui->helpAction, &QAction::triggered, this, [this] { Run([this] { m_host.ShowHelp(); }); });
    connect(m_ui->toolbarAction, &QAction::toggled, m_ui->commandBar, &QWidget::setVisible);
    m_ui->refreshAction->setIcon(IconNamed(u"refresh"_s));
    m_ui->helpAction->setIcon(IconNamed(u"question"_s));
    connect(m_ui->exitAction, &QAction::triggered, this, &QWidget::close);
    connect(m_ui->refreshAction, &QAction::triggered, this, [this] { Run([this] { m_host.Refresh(); }); });
    connect(m_ui->renameAction, &QAction::triggered, this, &ConsoleWindow::EditName);
    connect(m_ui->deleteAction, &QAction::triggered, this, [this] { Run([this] { m_host.Delete(m_host.Target()); }); });
    connect(m_ui->upAction, &QAction::triggered, this, &ConsoleWindow::GoUp);
    connect(m_ui->nextPaneAction, &QAction::triggered, this, &ConsoleWindow::GoToNextPane);
    connect(m_ui->descriptionBarAction, &QAction::toggled, m_ui->descriptionBar, &QWidget::setVisible);
    connect(m_ui->statusBarAction, &QAction::toggled, m_ui->statusBar, &QWidget::setVisible);
    connect(m_ui->aboutAction, &QAction::triggered, this, [this] { Run([this] { ShowAbout(); }); });
}

void ConsoleWindow::ConnectCommands()
{
    m_commands = new CommandBars(m_host, *m_ui->actionMenu, *m_ui->renameAction, *m_ui->commandBar);
    m_commands->setParent(this);
    connect(m_commands, &CommandBars::CommandChosen, this,
            [this](int command) { Run([&] { m_host.RunCommand(command); }); });
    connect(m_commands, &CommandBars::ButtonPressed, this,
            [this](int command) { Run([&] { m_host.PressButton(command); }); });
    connect(&m_host, &ConsoleHost::ToolbarsChanged, m_commands, &CommandBars::RebuildToolbar);
}

void ConsoleWindow::ConnectFileActions()
{
    connect(m_ui->newAction, &QAction::triggered, this, [this] { Run([this] { m_files->New(); }); });
    connect(m_ui->openAction, &QAction::triggered, this, [this] { Run([this] { m_files->Open(); }); });
    connect(m_ui->saveAction, &QAction::triggered, this, [this] { Run([this] { m_files->Save(); }); });
    connect(m_ui->saveAsAction, &QAction::triggered, this, [this] { Run([this] { m_files->SaveAs(); }); });
    connect(m_ui->preferencesAction, &QAction::triggered, this, [this] { Run([this] { ShowPreferences(); }); });
    connect(m_ui->recentMenu, &QMenu::aboutToShow, this, [this] {
        if (m_files)
            m_files->FillRecentFiles(*m_ui->recentMenu);
    });
    m_ui->recentMenu->menuAction()->setEnabled(false); // like the others, until there is a catalog
}

void ConsoleWindow::ShowView(const QString& viewType)
{
    m_views->Show(viewType);
    m_ui->filter->setVisible(m_views->ShowsList());
    m_ui->filterAction->setEnabled(m_views->ShowsList());
    ShowCount();
}

void ConsoleWindow::ShowItem()
{
    const ScopeEntry* entry = m_host.Tree().Find(m_host.ShownItem());
    m_ui->tree->setCurrentIndex(entry != nullptr ? m_host.Tree().IndexOf(*entry) : QModelIndex());
    m_list->BeginItem();
    ShowNames();
}

void ConsoleWindow::ShowNames()
{
    ScopeTreeModel& tree = m_host.Tree();
    const QString program = LoadString(StringId::kSnapInName);
    const ScopeEntry* root = tree.Root();
    QString title = root != nullptr ? LoadString(StringId::kWindowTitle, tree.NameOf(*root), program) : program;
    if (m_files && !m_files->FileName().isEmpty())
        title = LoadString(StringId::kWindowTitle, QFileInfo(m_files->FileName()).completeBaseName(), title);
    setWindowTitle(title);
    const ScopeEntry* shown = tree.Find(m_host.ShownItem());
    m_ui->itemName->SetText(shown != nullptr ? tree.NameOf(*shown) : QString());
    m_ui->upAction->setEnabled(shown != nullptr && shown != root);
}

void ConsoleWindow::ShowStatusText(const QString& text)
{
    m_ui->statusBar->showMessage(text);
    m_ui->statusBar->repaint(); // now: the window paints nothing else until the server has answered
}

void ConsoleWindow::ShowCount()
{
    m_count->setText(m_views->ShowsList() ? m_list->CountText() : QString());
}

void ConsoleWindow::ShowVerbs()
{
    const VerbAdapter& verbs = m_host.Verbs();
    m_ui->refreshAction->setEnabled(m_host.ShownItem() != 0);
    m_ui->renameAction->setEnabled(verbs.IsEnabled(MMC_CONSOLE_VERB::MMC_VERB_RENAME));
    m_ui->deleteAction->setEnabled(verbs.IsEnabled(MMC_CONSOLE_VERB::MMC_VERB_DELETE));
    m_ui->helpAction->setEnabled(m_host.ShownItem() != 0);
    if (m_commands != nullptr)
        m_commands->RebuildMenu(); // for its keys
}

void ConsoleWindow::ShowPreferences()
{
    CPreferencesDlg(m_catalog->Services().preferences, m_messages, this).exec();
}

void ConsoleWindow::ShowAbout()
{
    QString version;
    QString description;
    QString provider;
    m_about.GetSnapinVersion(&version);
    m_about.GetSnapinDescription(&description);
    m_about.GetProvider(&provider);
    m_messages.ShowMessage({}, StringId::kAboutText, LoadString(StringId::kSnapInName), version, description, provider);
}

void ConsoleWindow::TakeTarget()
{
    const QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr || focus->window() != this || qobject_cast<const QMenuBar*>(focus) != nullptr)
        return; // a menu or a dialog is open: its commands are about what was selected before
    const ConsoleTarget target = SelectedTarget();
    if (!(target == m_host.Target()))
        Run([&] { m_host.SetTarget(target); });
}

ConsoleTarget ConsoleWindow::SelectedTarget() const
{
    if (m_ui->list->hasFocus()) {
        ConsoleTarget selected = m_list->Selected();
        if (!selected.IsEmpty())
            return selected;
    }
    return {.scopeItem = m_host.ShownItem()};
}

void ConsoleWindow::GoUp()
{
    const QModelIndex above = m_ui->tree->currentIndex().parent();
    if (above.isValid())
        m_ui->tree->setCurrentIndex(above);
}

void ConsoleWindow::GoToNextPane()
{
    if (m_ui->tree->hasFocus())
        m_views->Current().setFocus(Qt::TabFocusReason);
    else
        m_ui->tree->setFocus(Qt::TabFocusReason);
}

void ConsoleWindow::EditName()
{
    QAbstractItemView* view = m_ui->tree;
    if (m_ui->list->hasFocus())
        view = m_ui->list;
    view->edit(view->currentIndex().siblingAtColumn(0));
}

void ConsoleWindow::PopUpActions(QAbstractItemView& view, const QPoint& position)
{
    TakeTarget();
    m_ui->actionMenu->popup(view.viewport()->mapToGlobal(position));
}

void ConsoleWindow::AdjustToFont()
{
    const int side = std::max(style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this), fontMetrics().height());
    m_ui->tree->setIconSize({side, side});
    m_ui->list->setIconSize({side, side});
    m_ui->list->header()->setMinimumHeight(fontMetrics().height() + kHeaderAir);
}

void ConsoleWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        AdjustToFont();
}

void ConsoleWindow::closeEvent(QCloseEvent* event)
{
    bool mayLeave = true;
    Run([&] { mayLeave = !m_files || m_files->MayLeave(); });
    if (!mayLeave) {
        event->ignore();
        return;
    }
    m_list->SaveColumns();
    if (m_state != nullptr)
        m_state->Save(*this, *m_ui->panes);
    event->accept();
}

} // namespace quenvolta
