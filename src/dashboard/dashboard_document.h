#pragma once

#include <QJsonArray>
#include <QString>
#include <QStringList>

namespace quenvolta
{

/// Collects what is to be changed in the page, to be done there in one go. Elements that the page doesn't have are
/// passed over.
class CDashboardDocument
{
public:
    void SetHTMLClass(const QString& id, const QString& className);
    /// The text is shown as it is; it is never read as markup.
    void SetHTMLElement(const QString& id, const QString& text);
    /// Shows the element and none of its siblings.
    void SelectPanel(const QString& id);
    void HideChildPanels(const QString& id);
    /// The class "visible" for one of the elements, "invisible" for the others.
    void SelectOne(const QStringList& ids, const QString& shown);
    void SetVisible(const QString& id, bool isVisible);
    /// `name` is visible when the flag is set, `opposite` otherwise.
    void SetEither(bool flag, const QString& name, const QString& opposite);
    /// Lets all links of an address lead to `target`; without one they are not shown.
    void SetLink(const QString& address, const QString& target);
    /// A variable of the style sheet ("--text").
    void SetStyle(const QString& variable, const QString& value);

    /// What a page runs; IsApplied tells of its answer whether the page has what it takes.
    QString Script() const;
    static bool IsApplied(const QString& answer);

private:
    void Add(const QString& operation, const QString& first, const QString& second = {});

    QJsonArray m_operations;
};

} // namespace quenvolta
