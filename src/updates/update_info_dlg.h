#pragma once

#include "model/update_info.h"
#include "ui/base_dialog.h"
#include "updates/update_site.h"

#include <functional>
#include <memory>

namespace Ui
{
class UpdateInfoDlg;
}

namespace quenvolta
{

/// "Software Update": what is installed, what is available, and where to read about it and get it.
class CUpdateInfoDlg final : public CBaseDialog
{
    Q_OBJECT

public:
    using Opener = std::function<void(const QUrl& address)>;

    /// `open` opens an address on the desktop.
    CUpdateInfoDlg(QWidget* parent, const UpdateInfo& info, const QString& installedVersion, UpdateSite site,
                   Opener open);
    ~CUpdateInfoDlg() override;

private:
    void OpenPage(const QString& path);

    UpdateInfo m_info;
    UpdateSite m_site;
    Opener m_open;
    std::unique_ptr<Ui::UpdateInfoDlg> m_ui;
};

} // namespace quenvolta
