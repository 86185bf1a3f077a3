#pragma once

#include <QFrame>
#include <QString>

namespace quenvolta
{

/// One line of plain text that is cut in its middle where it doesn't fit.
class ElidingLabel final : public QFrame
{
    Q_OBJECT

public:
    explicit ElidingLabel(QWidget* parent = nullptr);

    void SetText(const QString& text);
    const QString& Text() const { return m_text; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
};

} // namespace quenvolta
