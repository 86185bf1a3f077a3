#include "async/message_only_window.h"

#include <QCoreApplication>
#include <QEvent>

namespace quenvolta
{

namespace
{

struct PostedMessage final : QEvent {
    static QEvent::Type TypeOfAll()
    {
        static const int type = registerEventType();
        return static_cast<QEvent::Type>(type);
    }

    PostedMessage(std::uint32_t postedMessage, std::uintptr_t postedWParam, std::uintptr_t postedLParam)
        : QEvent(TypeOfAll())
        , message(postedMessage)
        , wParam(postedWParam)
        , lParam(postedLParam)
    {
    }

    std::uint32_t message;
    std::uintptr_t wParam;
    std::uintptr_t lParam;
};

} // namespace

void CMessageOnlyWindow::PostNotification(std::uint32_t code, std::uintptr_t wParam, std::uintptr_t lParam)
{
    PostMessage(kUserMessage + code, wParam, lParam);
}

void CMessageOnlyWindow::PostMessage(std::uint32_t message, std::uintptr_t wParam, std::uintptr_t lParam)
{
    QCoreApplication::postEvent(this, std::make_unique<PostedMessage>(message, wParam, lParam).release());
}

bool CMessageOnlyWindow::event(QEvent* event)
{
    if (event->type() == PostedMessage::TypeOfAll()) {
        const auto* posted = static_cast<const PostedMessage*>(event);
        return HandleMessage(posted->message, posted->wParam, posted->lParam);
    }
    return QObject::event(event);
}

bool CMessageOnlyWindow::HandleMessage(std::uint32_t message, std::uintptr_t wParam, std::uintptr_t lParam)
{
    if (message < kUserMessage)
        return false;
    m_subscriber.OnMessage(message - kUserMessage, wParam, lParam);
    return true;
}

} // namespace quenvolta
