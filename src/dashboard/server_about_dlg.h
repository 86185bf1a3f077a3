#pragma once

#include "model/server_version_info.h"
#include "ui/base_dialog.h"

#include <memory>

namespace Ui
{
class ServerAboutDlg;
}

namespace quenvolta
{

/// "About Quenvolta Server": the versions of the managed server.
class CServerAboutDlg final : public CBaseDialog
{
    Q_OBJECT

public:
    CServerAboutDlg(QWidget* parent, const ServerVersionInfo& versions);
    ~CServerAboutDlg() override;

private:
    std::unique_ptr<Ui::ServerAboutDlg> m_ui;
};

} // namespace quenvolta
