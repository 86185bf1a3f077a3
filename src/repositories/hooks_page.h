#pragma once

#include "model/hook_info.h"
#include "ui/base_property_page.h"

#include <array>
#include <memory>

class QTreeWidgetItem;

namespace Ui
{
class HooksPage;
}

namespace quenvolta
{

class CModel;

/// "Hooks": the hook scripts of a repository. What is edited or removed is written when the page is applied.
class CHooksPage final : public CBasePropertyPageImpl
{
    Q_OBJECT

public:
    enum class Role { Standalone, Slave };

    /// The model must outlive the page.
    CHooksPage(CModel& model, const QString& repositoryName, Role role = Role::Standalone);
    ~CHooksPage() override;

    void OnCreatePage() override;

protected:
    void OnApply() override;

private:
    struct Record {
        HookInfo hook;
        bool changed = false;
    };

    void AddRows();
    void Load();
    void Edit();
    void Remove();
    void Change(QTreeWidgetItem& row, const HookInfo& hook);
    void ShowState(QTreeWidgetItem& row);
    void UpdateButtons();
    QTreeWidgetItem* SelectedRow() const;
    Record& RecordOf(const QTreeWidgetItem& row);

    CModel& m_model;
    QString m_repositoryName;
    std::array<Record, kHookKindCount> m_records; // by kind
    bool m_needsInterpreter = false;
    std::unique_ptr<Ui::HooksPage> m_ui;
};

} // namespace quenvolta
