#include "repositories/hooks_page.h"

#include "model/model.h"
#include "repositories/edit_hook_dlg.h"
#include "repositories/hook_description.h"
#include "repositories/server_paths.h"
#include "ui_hooks_page.h"

#include <QTreeWidgetItemIterator>

namespace quenvolta
{

namespace
{

constexpr int kKindRole = Qt::UserRole;
constexpr int kSlaveHooksTopic = 2062;

HookKind KindOf(const QTreeWidgetItem& row)
{
    return static_cast<HookKind>(row.data(0, kKindRole).toInt());
}

bool IsHook(const QTreeWidgetItem& row)
{
    return row.parent() != nullptr;
}

} // namespace

CHooksPage::CHooksPage(CModel& model, const QString& repositoryName, Role role)
    : m_model(model)
    , m_repositoryName(repositoryName)
    , m_ui(std::make_unique<Ui::HooksPage>())
{
    m_ui->setupUi(this);
    m_ui->slaveNote->setVisible(role == Role::Slave);
    LinkToHelp(*m_ui->slaveNote, kSlaveHooksTopic);
    AddRows();
    connect(m_ui->list, &QTreeWidget::itemSelectionChanged, this, &CHooksPage::UpdateButtons);
    connect(m_ui->list, &QTreeWidget::itemDoubleClicked, this, [this](const QTreeWidgetItem* row) {
        if (IsHook(*row))
            Edit();
    });
    connect(m_ui->edit, &QPushButton::clicked, this, &CHooksPage::Edit);
    connect(m_ui->remove, &QPushButton::clicked, this, &CHooksPage::Remove);
    UpdateButtons();
}

CHooksPage::~CHooksPage() = default;

void CHooksPage::OnCreatePage()
{
    m_needsInterpreter = NamesFilesFromSlash(m_model.GetServerSettings().repositoriesRoot);
    Load();
}

void CHooksPage::OnApply()
{
    for (int i = 0; i < kHookKindCount; ++i) {
        Record& record = m_records[static_cast<std::size_t>(i)];
        if (!record.changed)
            continue;
        const auto kind = static_cast<HookKind>(i);
        if (record.hook.configured)
            m_model.SetHook(m_repositoryName, kind, record.hook.text);
        else
            m_model.DeleteHook(m_repositoryName, kind);
        record.changed = false;
    }
    Load();
}

void CHooksPage::AddRows()
{
    QTreeWidgetItem* group = nullptr;
    for (const HookDescription& hook : HookDescriptions()) {
        if (group == nullptr || group->text(0) != hook.group) {
            group = new QTreeWidgetItem(m_ui->list, {hook.group});
            group->setFlags(Qt::ItemIsEnabled); // a disabled one would disable its hooks
            group->setForeground(0, m_ui->list->palette().placeholderText());
        }
        auto* row = new QTreeWidgetItem(group, {hook.name});
        row->setData(0, kKindRole, static_cast<int>(hook.kind));
        row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    }
    m_ui->list->expandAll();
}

void CHooksPage::Load()
{
    for (int i = 0; i < kHookKindCount; ++i)
        m_records[static_cast<std::size_t>(i)] = {m_model.GetHook(m_repositoryName, static_cast<HookKind>(i))};
    for (QTreeWidgetItemIterator row(m_ui->list); *row != nullptr; ++row)
        ShowState(**row);
    SetModified(false);
    UpdateButtons();
}

void CHooksPage::Edit()
{
    QTreeWidgetItem* row = SelectedRow();
    if (row == nullptr)
        return;
    const HookInfo& hook = RecordOf(*row).hook;
    using Interpreter = CEditHookDlg::Interpreter;
    CEditHookDlg dialog(this, DescriptionOf(KindOf(*row)), hook.configured ? hook.text : QString(),
                        m_needsInterpreter ? Interpreter::Needed : Interpreter::Unneeded);
    if (dialog.exec() == QDialog::Accepted)
        Change(*row, {dialog.Text(), true});
}

void CHooksPage::Remove()
{
    if (QTreeWidgetItem* row = SelectedRow())
        Change(*row, {});
}

void CHooksPage::Change(QTreeWidgetItem& row, const HookInfo& hook)
{
    RecordOf(row) = {hook, true};
    ShowState(row);
    SetModified();
}

void CHooksPage::ShowState(QTreeWidgetItem& row)
{
    if (!IsHook(row))
        return;
    QFont font = m_ui->list->font();
    font.setBold(RecordOf(row).hook.configured);
    row.setFont(0, font);
}

void CHooksPage::UpdateButtons()
{
    const bool selected = SelectedRow() != nullptr;
    m_ui->edit->setEnabled(selected);
    m_ui->remove->setEnabled(selected);
}

QTreeWidgetItem* CHooksPage::SelectedRow() const
{
    return m_ui->list->selectedItems().value(0);
}

CHooksPage::Record& CHooksPage::RecordOf(const QTreeWidgetItem& row)
{
    return m_records[static_cast<std::size_t>(KindOf(row))];
}

} // namespace quenvolta
