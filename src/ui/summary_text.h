#pragma once

#include <QTextBrowser>

namespace quenvolta
{

/// Shows a plain text in which addresses are links: they open in the browser, and their menu copies them.
class SummaryText final : public QTextBrowser
{
    Q_OBJECT

public:
    explicit SummaryText(QWidget* parent = nullptr);

    void SetText(const QString& text);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QString LinkFor(const QContextMenuEvent& event) const;
};

} // namespace quenvolta
