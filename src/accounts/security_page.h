#pragma once

#include "accounts/permission_list_model.h"
#include "ui/base_property_page.h"
#include "ui/message_boxes.h"

#include <QSortFilterProxyModel>

#include <memory>

class QButtonGroup;

namespace Ui
{
class SecurityPage;
}

namespace quenvolta
{

class IcSecurityPageHost;

/// "Security": who has access to one object, set there or inherited, and which.
class CSecurityPage final : public CBasePropertyPageImpl
{
    Q_OBJECT

public:
    enum class Mode { Editable, ReadOnly };

    /// The host must outlive the page. Read-only is for repositories whose permissions come from a master.
    explicit CSecurityPage(IcSecurityPageHost& host, Mode mode = Mode::Editable);
    /// The page owns its host.
    explicit CSecurityPage(std::unique_ptr<IcSecurityPageHost> host, Mode mode = Mode::Editable);
    ~CSecurityPage() override;

    void OnCreatePage() override;

protected:
    void OnApply() override;

private:
    void Load();
    void Add();
    void Remove();
    QList<Account> ChooseAccounts();
    void ChooseLevel(int option);
    void UpdateOptions();
    void CheckOption(int option);
    QList<int> SelectedRows() const;
    /// Selects the accounts' rows; the first row when there are none.
    void Select(const QList<Account>& accounts);

    std::unique_ptr<IcSecurityPageHost> m_ownedHost;
    IcSecurityPageHost& m_host;
    Mode m_mode;
    std::unique_ptr<Ui::SecurityPage> m_ui;
    CMessageBoxes m_messages;
    QButtonGroup* m_options;
    PermissionListModel m_items;
    QSortFilterProxyModel m_filtered;
};

} // namespace quenvolta
