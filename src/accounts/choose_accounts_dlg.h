#pragma once

#include "accounts/account_icons.h"
#include "model/account.h"
#include "ui/base_dialog.h"

#include <QList>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QStringList>

#include <memory>

namespace Ui
{
class ChooseAccountsDlg;
}

namespace quenvolta
{

class CModel;

/// "Choose User or Group": accounts of the server under headings, several of which can be chosen. What it shows is read
/// when it is made; that may throw.
class CChooseAccountsDlg : public CBaseDialog
{
    Q_OBJECT

public:
    ~CChooseAccountsDlg() override;

    /// The chosen accounts in the list's order.
    QList<Account> ChosenAccounts() const;

protected:
    /// The title of the one column. `hasCreateUser`: with the button that creates a user, which is then selected.
    CChooseAccountsDlg(QWidget* parent, CModel& model, int columnTitle, bool hasCreateUser);

    /// Fills the list anew: sections by AddSection.
    virtual void AddSections() = 0;
    void AddSection(int title, AccountKind kind, QStringList names);
    CModel& Model() { return m_model; }
    /// To be called at the end of a constructor.
    void Load();

private:
    void CreateUser();
    void UpdateOkButton();
    void Select(const Account& account);
    static Account AccountOf(const QModelIndex& index);

    CModel& m_model;
    std::unique_ptr<Ui::ChooseAccountsDlg> m_ui;
    AccountIcons m_icons;
    QStandardItemModel m_accounts;
    QSortFilterProxyModel m_filtered;
};

} // namespace quenvolta
