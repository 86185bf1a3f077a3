#include "accounts/object_picker_dlg.h"

#include "foundation/com_exception.h"
#include "ui/icons.h"
#include "ui_object_picker_dlg.h"

#include <QPushButton>

#include <algorithm>
#include <utility>

Q_DECLARE_METATYPE(quenvolta::DirectoryObject)

namespace quenvolta
{

namespace
{

constexpr std::int32_t kMostObjects = 100;
constexpr int kTypingPauseMs = 200;
constexpr int kPollingMs = 20;
constexpr int kComputerIcon = 202;
constexpr int kObjectRole = Qt::UserRole;

DirectoryObject ObjectAt(const QAbstractItemModel& model, int row)
{
    return model.index(row, 0).data(kObjectRole).value<DirectoryObject>();
}

QList<int> SelectedRows(const QTreeView& list)
{
    QList<int> rows;
    for (const QModelIndex& index : list.selectionModel()->selectedRows())
        rows.append(index.row());
    std::ranges::sort(rows);
    return rows;
}

} // namespace

CObjectPickerDlg::CObjectPickerDlg(QWidget* parent, DirectoryOpener open, int title, const QList<PickerScope>& scopes,
                                   Selection selection)
    : CBaseDialog(parent)
    , m_open(std::move(open))
    , m_scopes(scopes)
    , m_several(selection == Selection::Several)
    , m_ui(std::make_unique<Ui::ObjectPickerDlg>())
    , m_computerIcon(IconResource(kComputerIcon))
{
    m_ui->setupUi(this);
    setWindowTitle(LoadString(title));
    for (const PickerScope& scope : m_scopes)
        m_ui->scope->addItem(LoadString(scope.title));
    m_ui->scopeRow->setVisible(m_scopes.size() > 1);
    m_ui->chosenPart->setVisible(m_several);
    const QStringList columns{LoadString(StringId::kColumnName), LoadString(StringId::kColumnFullName)};
    for (const auto& [list, model] : {std::pair(m_ui->found, &m_found), std::pair(m_ui->chosen, &m_chosen)}) {
        model->setHorizontalHeaderLabels(columns);
        list->setModel(model);
        list->setColumnWidth(0, list->minimumWidth() / 2);
        connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CObjectPickerDlg::UpdateButtons);
    }
    if (!m_several)
        m_ui->found->setSelectionMode(QAbstractItemView::SingleSelection);
    m_typing.setSingleShot(true);
    m_typing.setInterval(kTypingPauseMs);
    m_polling.setInterval(kPollingMs);
    connect(&m_typing, &QTimer::timeout, this, [this] { Run([this] { BeginSearch(); }); });
    connect(&m_polling, &QTimer::timeout, this, [this] { Run([this] { AskForAnswer(); }); });
    connect(m_ui->text, &QLineEdit::textChanged, this, &CObjectPickerDlg::AwaitSearch);
    connect(m_ui->scope, &QComboBox::currentIndexChanged, this, &CObjectPickerDlg::AwaitSearch);
    connect(m_ui->add, &QPushButton::clicked, this, &CObjectPickerDlg::KeepSelected);
    connect(m_ui->remove, &QPushButton::clicked, this, &CObjectPickerDlg::DropSelected);
    connect(m_ui->found, &QTreeView::doubleClicked, this, [this] { m_several ? KeepSelected() : accept(); });
    m_ui->text->setFocus();
    ShowState(StringId::kTypePartOfName);
    UpdateButtons();
}

CObjectPickerDlg::~CObjectPickerDlg() = default;

bool CObjectPickerDlg::Pick()
{
    if (!m_directory) {
        try {
            m_directory = m_open();
        } catch (const ComException& failure) {
            throw ComException(failure.Code(), failure.ErrorInformation(), u"Cannot create DsObjectPicker");
        }
    }
    return exec() == Accepted;
}

void CObjectPickerDlg::AwaitSearch()
{
    m_ui->found->clearSelection(); // it was found for another text
    if (m_ui->text->text().trimmed().isEmpty()) {
        m_typing.stop();
        m_found.removeRows(0, m_found.rowCount());
        ShowState(StringId::kTypePartOfName);
    } else {
        ShowState(StringId::kSearching);
        m_typing.start();
    }
}

void CObjectPickerDlg::BeginSearch()
{
    const QString text = m_ui->text->text().trimmed();
    if (text.isEmpty() || m_search)
        return; // the next search begins when this one has ended
    m_search = m_directory->Search(text, m_scopes[m_ui->scope->currentIndex()].kinds, kMostObjects);
    m_searchedText = m_ui->text->text();
    m_searchedScope = m_ui->scope->currentIndex();
    m_polling.start();
}

void CObjectPickerDlg::AskForAnswer()
{
    std::optional<DirectoryAnswer> answer;
    try {
        answer = m_search->TakeAnswer();
    } catch (...) {
        m_search.reset();
        m_polling.stop();
        ShowState(StringId::kSearchFailed);
        throw;
    }
    if (!answer)
        return;
    m_search.reset();
    m_polling.stop();
    if (m_searchedText == m_ui->text->text() && m_searchedScope == m_ui->scope->currentIndex())
        Show(*answer);
    else if (!m_typing.isActive())
        BeginSearch(); // for what was typed meanwhile
}

void CObjectPickerDlg::Show(const DirectoryAnswer& answer)
{
    m_found.removeRows(0, m_found.rowCount());
    for (const DirectoryObject& object : answer.objects)
        m_found.appendRow(MakeRow(object));
    if (answer.objects.size() == 1)
        m_ui->found->setCurrentIndex(m_found.index(0, 0));
    ShowState(answer.objects.isEmpty() ? StringId::kNothingFound
              : answer.complete        ? StringId::kFoundAll
                                       : StringId::kFoundMore);
}

void CObjectPickerDlg::ShowState(int text)
{
    m_ui->state->setText(LoadString(text, m_found.rowCount()));
}

QList<QStandardItem*> CObjectPickerDlg::MakeRow(const DirectoryObject& object) const
{
    auto* name = new QStandardItem(IconOf(object.kind), object.name);
    name->setData(QVariant::fromValue(object), kObjectRole);
    name->setToolTip(object.sid);
    return {name, new QStandardItem(object.fullName.isEmpty() ? object.dnsHostName : object.fullName)};
}

const QIcon& CObjectPickerDlg::IconOf(DirectoryObjectKind kind) const
{
    switch (kind) {
    case DirectoryObjectKind::User:
        return m_icons.IconOf(AccountKind::User);
    case DirectoryObjectKind::Group:
        return m_icons.IconOf(AccountKind::Group);
    case DirectoryObjectKind::Computer:
    case DirectoryObjectKind::Host:
        break;
    }
    return m_computerIcon;
}

void CObjectPickerDlg::KeepSelected()
{
    for (const int row : SelectedRows(*m_ui->found)) {
        const DirectoryObject object = ObjectAt(m_found, row);
        bool isKept = false;
        for (int kept = 0; kept < m_chosen.rowCount(); ++kept)
            isKept = isKept || ObjectAt(m_chosen, kept) == object;
        if (!isKept)
            m_chosen.appendRow(MakeRow(object));
    }
    m_ui->found->clearSelection();
    m_ui->text->setFocus();
    m_ui->text->selectAll();
    UpdateButtons();
}

void CObjectPickerDlg::DropSelected()
{
    const QList<int> rows = SelectedRows(*m_ui->chosen);
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        m_chosen.removeRow(*row);
    UpdateButtons();
}

void CObjectPickerDlg::UpdateButtons()
{
    const bool isFound = m_ui->found->selectionModel()->hasSelection();
    m_ui->add->setEnabled(isFound);
    m_ui->remove->setEnabled(m_ui->chosen->selectionModel()->hasSelection());
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(isFound || m_chosen.rowCount() > 0);
}

void CObjectPickerDlg::accept()
{
    KeepSelected();
    m_picked.clear();
    for (int row = 0; row < m_chosen.rowCount(); ++row)
        m_picked.append(ObjectAt(m_chosen, row));
    CBaseDialog::accept();
}

} // namespace quenvolta
