#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace quenvolta::test
{

/// Does something with the next modal window as soon as it is open. `seen` tells afterwards whether there was one.
class ModalDriver
{
public:
    explicit ModalDriver(std::function<void(QWidget&)> action)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, action = std::move(action)] {
            QWidget* modal = QApplication::activeModalWidget();
            if (modal == nullptr || !modal->isVisible())
                return;
            m_timer.stop();
            seen = true;
            action(*modal);
        });
        m_timer.start(1);
    }

    bool seen = false;

private:
    QTimer m_timer;
};

} // namespace quenvolta::test
