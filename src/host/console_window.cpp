#include "host/console_window.h"

#include "host/message_view_page.h"
#include "host/row_delegate.h"
#include "host/status_view_page.h"
#include "host/view_state.h"
#include "platform/mmc/result_view_type.h"
#include "ui/guard.h"
#include "ui/icons.h"
#include "ui/string_table.h"
#include "ui_console_window.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QLabel>
#include <QScopedValueRollback>
#include <QStyle>

#include <algorithm>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

// The pixels of a font of ordinary size on a screen of 96 dots an inch.
constexpr double kOrdinaryFontSize = 13.0;
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
    m_messagePage = new MessageViewPage(m_ui->resultViews);
    m_statusPage = new StatusViewPage(m_ui->resultViews);
    m_count = new QLabel(m_ui->statusBar);
    m_ui->resultViews->addWidget(m_messagePage);
    m_ui->resultViews->addWidget(m_statusPage);
    m_ui->statusBar->addPermanentWidget(m_count);
    m_ui->panes->setStretchFactor(1, 1);
    QFont bold = m_ui->itemName->font();
    bold.setBold(true);
    m_ui->itemName->setFont(bold);
    m_ui->tree->setItemDelegate(new RowDelegate(m_ui->tree));
    m_ui->list->setItemDelegate(new RowDelegate(m_ui->list));
    m_ui->tree->setModel(&m_host.Tree());
    m_ui->list->setModel(&m_host.List());
    ConnectHost();
    ConnectPanes();
    ConnectActions();
    AdjustToFont();
    m_ui->panes->setSizes({kTreeWidth, width() - kTreeWidth});
    if (m_state != nullptr)
        m_state->Restore(*this, *m_ui->panes);
    ShowNames();
    ShowVerbs();
}

ConsoleWindow::~ConsoleWindow()
{
    // The views look at models of the host, which goes before them.
    m_ui->tree->setModel(nullptr);
    m_ui->list->setModel(nullptr);
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
    m_snapInFactory = std::move(factory);
}

void ConsoleWindow::ExpandShownItem()
{
    m_ui->tree->expand(m_ui->tree->currentIndex());
}

void ConsoleWindow::paintEvent(QPaintEvent* event)
{
    QMainWindow::paintEvent(event);
    if (!m_snapInFactory)
        return;
    const auto load = [this, factory = std::exchange(m_snapInFactory, nullptr)] { Run([&] { Load(factory()); }); };
    QMetaObject::invokeMethod(this, load, Qt::QueuedConnection);
}

void ConsoleWindow::ConnectHost()
{
    m_host.SetResultViews([this](const QString& viewType) { return ResultViewOf(viewType); });
    connect(&m_host, &ConsoleHost::AboutToLeave, this, &ConsoleWindow::SaveColumns);
    connect(&m_host, &ConsoleHost::ShownItemChanged, this, &ConsoleWindow::ShowItem);
    connect(&m_host, &ConsoleHost::ViewChanged, this, &ConsoleWindow::ShowView);
    connect(&m_host, &ConsoleHost::ColumnInserted, this, &ConsoleWindow::ArrangeColumn);
    connect(&m_host, &ConsoleHost::DescriptionChanged, this,
            [this](const QString& text) { m_ui->itemDescription->SetText(text); });
    connect(&m_host, &ConsoleHost::StatusTextChanged, this, &ConsoleWindow::ShowStatusText);
    connect(&m_host, &ConsoleHost::VerbsChanged, this, &ConsoleWindow::ShowVerbs);
}

void ConsoleWindow::ConnectPanes()
{
    ScopeTreeModel& tree = m_host.Tree();
    ResultListModel& list = m_host.List();
    connect(m_ui->tree->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& now) {
        if (now.isValid())
            Run([&] { m_host.Show(ScopeTreeModel::EntryOf(now)->id); });
    });
    connect(m_ui->tree, &QTreeView::expanded, this, [this](const QModelIndex& expanded) {
        Run([&] { m_host.Expand(ScopeTreeModel::EntryOf(expanded)->id); });
    });
    connect(m_ui->list, &QTreeView::activated, this,
            [this](const QModelIndex& opened) { Run([&] { m_host.Open(m_host.TargetAt(opened.row())); }); });
    // Later: a selection also changes in the middle of changes of the models.
    connect(m_ui->list->selectionModel(), &QItemSelectionModel::currentChanged, this, &ConsoleWindow::TakeTarget,
            Qt::QueuedConnection);
    connect(qApp, &QApplication::focusChanged, this, &ConsoleWindow::TakeTarget, Qt::QueuedConnection);

    const auto rename = [this](HSCOPEITEM item, const QString& name) { Run([&] { m_host.Rename(item, name); }); };
    connect(&tree, &ScopeTreeModel::RenameRequested, this, rename, Qt::QueuedConnection);
    connect(&list, &ResultListModel::RenameRequested, this, rename, Qt::QueuedConnection);
    connect(&tree, &QAbstractItemModel::dataChanged, this, &ConsoleWindow::ShowNames);
    connect(&tree, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex& parent) {
        if (parent.isValid() && !parent.parent().isValid())
            m_ui->tree->expand(parent); // the root is no more than its children
    });
    connect(&list, &QAbstractItemModel::rowsInserted, this, &ConsoleWindow::ShowCount);
    connect(&list, &QAbstractItemModel::rowsRemoved, this, &ConsoleWindow::ShowCount);
    connect(&list, &QAbstractItemModel::modelReset, this, &ConsoleWindow::ShowCount);
    connect(m_ui->list->header(), &QHeaderView::sectionResized, this, [this](int section) {
        if (!m_arrangingColumns && section < m_host.List().columnCount() - 1)
            m_columnsTouched = true;
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
    m_ui->propertiesAction->setEnabled(false);
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

IResultView* ConsoleWindow::ResultViewOf(const QString& viewType)
{
    if (viewType.isEmpty())
        return nullptr;
    if (viewType != CLSID_MessageView)
        return m_statusPage;
    m_messagePage->Clear();
    return m_messagePage;
}

void ConsoleWindow::ShowView(const QString& viewType)
{
    const bool hadFocus = m_ui->resultViews->isAncestorOf(focusWidget());
    QWidget* page = m_statusPage;
    if (viewType.isEmpty())
        page = m_ui->list;
    else if (viewType == CLSID_MessageView)
        page = m_messagePage;
    m_ui->resultViews->setCurrentWidget(page);
    if (hadFocus)
        page->setFocus();
    ShowCount();
}

void ConsoleWindow::ShowItem()
{
    const ScopeEntry* entry = m_host.Tree().Find(m_host.ShownItem());
    m_ui->tree->setCurrentIndex(entry != nullptr ? m_host.Tree().IndexOf(*entry) : QModelIndex());
    m_columnsTouched = false;
    ShowNames();
}

void ConsoleWindow::ShowNames()
{
    ScopeTreeModel& tree = m_host.Tree();
    const QString program = LoadString(StringId::kSnapInName);
    const ScopeEntry* root = tree.Root();
    setWindowTitle(root != nullptr ? LoadString(StringId::kWindowTitle, tree.NameOf(*root), program) : program);
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
    const bool isList = m_ui->resultViews->currentWidget() == m_ui->list;
    m_count->setText(isList ? LoadString(StringId::kCountOfItems, m_host.List().rowCount()) : QString());
}

void ConsoleWindow::ShowVerbs()
{
    const VerbAdapter& verbs = m_host.Verbs();
    m_ui->refreshAction->setEnabled(m_host.ShownItem() != 0);
    m_ui->renameAction->setEnabled(verbs.IsEnabled(MMC_CONSOLE_VERB::MMC_VERB_RENAME));
    m_ui->deleteAction->setEnabled(verbs.IsEnabled(MMC_CONSOLE_VERB::MMC_VERB_DELETE));
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

void ConsoleWindow::ArrangeColumn(int column, int width)
{
    const QScopedValueRollback arranging(m_arrangingColumns, true);
    const QList<int> kept = m_state != nullptr ? m_state->ColumnWidths(m_host.ShownNodeType()) : QList<int>();
    const double scale = std::max(1.0, QFontInfo(font()).pixelSize() / kOrdinaryFontSize);
    m_ui->list->header()->resizeSection(column, column < kept.size() ? kept[column] : qRound(width * scale));
}

void ConsoleWindow::SaveColumns()
{
    if (m_state == nullptr || !m_columnsTouched)
        return;
    QList<int> widths; // the last column takes what is left
    for (int column = 0; column < m_host.List().columnCount() - 1; ++column)
        widths.append(m_ui->list->columnWidth(column));
    m_state->SaveColumnWidths(m_host.ShownNodeType(), widths);
}

void ConsoleWindow::TakeTarget()
{
    ConsoleTarget target{.scopeItem = m_host.ShownItem()};
    if (m_ui->list->hasFocus() && m_ui->list->currentIndex().isValid())
        target = m_host.TargetAt(m_ui->list->currentIndex().row());
    if (!(target == m_host.Target()))
        Run([&] { m_host.SetTarget(target); });
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
        m_ui->resultViews->currentWidget()->setFocus(Qt::TabFocusReason);
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
    SaveColumns();
    if (m_state != nullptr)
        m_state->Save(*this, *m_ui->panes);
    event->accept();
}

} // namespace quenvolta
