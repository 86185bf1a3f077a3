#pragma once

#include "dashboard/status_snapshot.h"

#include <QScrollArea>

#include <memory>

namespace Ui
{
class StatusViewPage;
}

class QLabel;

namespace quenvolta
{

/// The status of the server, or why it can't be managed, in plain widgets: what is shown where no web page can be.
class StatusViewPage final : public QScrollArea
{
    Q_OBJECT

public:
    explicit StatusViewPage(QWidget* parent = nullptr);
    ~StatusViewPage() override;

    void ShowStatus(const CStatusSnapshot& status);

private:
    void ShowServer(const CStatusSnapshot& status);
    void ShowFailure(const CStatusSnapshot& status);
    void ShowRow(QLabel& value, const QString& text);

    std::unique_ptr<Ui::StatusViewPage> m_ui;
};

} // namespace quenvolta
