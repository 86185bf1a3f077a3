#pragma once

#include "snapin/status_page.h"

#include <QScrollArea>

#include <memory>

namespace Ui
{
class StatusViewPage;
}

class QLabel;

namespace quenvolta
{

/// The root's page: the status of the server, or why it can't be managed.
class StatusViewPage final : public QScrollArea, public IcStatusPage
{
    Q_OBJECT

public:
    explicit StatusViewPage(QWidget* parent = nullptr);
    ~StatusViewPage() override;

    void ShowStatus(const CStatusSnapshot& status) override;

private:
    void ShowServer(const CStatusSnapshot& status);
    void ShowFailure(const CStatusSnapshot& status);
    void ShowRow(QLabel& value, const QString& text);

    std::unique_ptr<Ui::StatusViewPage> m_ui;
};

} // namespace quenvolta
