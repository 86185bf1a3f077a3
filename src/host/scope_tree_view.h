#pragma once

#include <QTreeView>

namespace quenvolta
{

/// The view of the scope tree.
class ScopeTreeView final : public QTreeView
{
    Q_OBJECT

public:
    explicit ScopeTreeView(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace quenvolta
