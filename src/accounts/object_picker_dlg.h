#pragma once

#include "accounts/account_icons.h"
#include "model/computer_directory.h"
#include "ui/base_dialog.h"

#include <QList>
#include <QStandardItemModel>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace Ui
{
class ObjectPickerDlg;
}

namespace quenvolta
{

/// What a picker offers, as one choice of a list.
struct PickerScope {
    int title = 0; ///< a text of the string table
    QList<DirectoryObjectKind> kinds;
};

/// Opens the directory that a picker searches.
using DirectoryOpener = std::function<std::unique_ptr<CComputerDirectory>()>;

/// Picks accounts or computers that the managed computer knows. They are searched there while one types, a bounded
/// number at a time, and the window stays alive meanwhile.
class CObjectPickerDlg : public CBaseDialog
{
    Q_OBJECT

public:
    ~CObjectPickerDlg() override;

    void accept() override;

protected:
    enum class Selection { One, Several };

    /// The scopes in their order, the first one chosen.
    CObjectPickerDlg(QWidget* parent, DirectoryOpener open, int title, const QList<PickerScope>& scopes,
                     Selection selection);

    /// Opens the directory, and the dialog. False when it was cancelled; a directory that can't be opened is a
    /// ComException.
    bool Pick();
    const QList<DirectoryObject>& Picked() const { return m_picked; }

private:
    void AwaitSearch();
    void BeginSearch();
    void AskForAnswer();
    void Show(const DirectoryAnswer& answer);
    void ShowState(int text);
    void KeepSelected();
    void DropSelected();
    void UpdateButtons();
    QList<QStandardItem*> MakeRow(const DirectoryObject& object) const;
    const QIcon& IconOf(DirectoryObjectKind kind) const;

    DirectoryOpener m_open;
    QList<PickerScope> m_scopes;
    bool m_several;
    std::unique_ptr<Ui::ObjectPickerDlg> m_ui;
    AccountIcons m_icons;
    QStandardItemModel m_found;
    QStandardItemModel m_chosen;
    QList<DirectoryObject> m_picked;
    std::unique_ptr<CComputerDirectory> m_directory;
    QIcon m_computerIcon;
    std::optional<DirectorySearch> m_search;
    QString m_searchedText;
    int m_searchedScope = 0;
    QTimer m_typing; // a pause in it begins the search
    QTimer m_polling;
};

} // namespace quenvolta
