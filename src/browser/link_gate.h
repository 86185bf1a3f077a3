#pragma once

#include <QElapsedTimer>
#include <QObject>

class QWidget;

namespace quenvolta
{

/// Knows whether the administrator has just clicked or pressed Enter in a widget. A link that is followed without that
/// was followed by a script.
class LinkGate final : public QObject
{
    Q_OBJECT

public:
    explicit LinkGate(QWidget& widget);

    /// True once after each click or key.
    bool Pass();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_widget;
    QElapsedTimer m_sinceAct;
};

} // namespace quenvolta
