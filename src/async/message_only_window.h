#pragma once

#include <QObject>

#include <cstdint>

namespace quenvolta
{

/// Receives what was posted to a CMessageOnlyWindow, on the thread that made the window. Must not throw.
class IcMsgOnlyWindowSubscriber
{
public:
    virtual ~IcMsgOnlyWindowSubscriber() = default;
    virtual void OnMessage(std::uint32_t code, std::uintptr_t wParam, std::uintptr_t lParam) = 0;
};

/// A hidden receiver of messages: any thread posts them, the thread that made it gets them from its event loop. What is
/// still queued when the receiver goes is lost.
class CMessageOnlyWindow final : public QObject
{
    Q_OBJECT

public:
    /// The first message of the program's own; those below are the system's.
    static constexpr std::uint32_t kUserMessage = 0x0400;

    /// The subscriber outlives the window.
    explicit CMessageOnlyWindow(IcMsgOnlyWindowSubscriber& subscriber)
        : m_subscriber(subscriber)
    {
    }

    /// Posts the message of a notification: kUserMessage + `code`. Returns at once; any thread may call it.
    void PostNotification(std::uint32_t code, std::uintptr_t wParam, std::uintptr_t lParam);
    /// Posts any message; one below kUserMessage reaches nobody.
    void PostMessage(std::uint32_t message, std::uintptr_t wParam, std::uintptr_t lParam);

protected:
    bool event(QEvent* event) override;

private:
    /// True when the message was handled.
    bool HandleMessage(std::uint32_t message, std::uintptr_t wParam, std::uintptr_t lParam);

    IcMsgOnlyWindowSubscriber& m_subscriber;
};

} // namespace quenvolta
