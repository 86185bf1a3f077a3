#pragma once

#include "platform/mmc/message_view.h"

#include <QWidget>

#include <memory>

namespace Ui
{
class MessageViewPage;
}

namespace quenvolta
{

/// The result pane's message view.
class MessageViewPage final : public QWidget, public IMessageView
{
    Q_OBJECT

public:
    explicit MessageViewPage(QWidget* parent = nullptr);
    ~MessageViewPage() override;

    HRESULT SetTitleText(const QString& title) override;
    HRESULT SetBodyText(const QString& body) override;
    HRESULT SetIcon(IconIdentifier icon) override;
    HRESULT Clear() override;

private:
    std::unique_ptr<Ui::MessageViewPage> m_ui;
};

} // namespace quenvolta
