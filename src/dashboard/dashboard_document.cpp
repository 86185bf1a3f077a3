#include "dashboard/dashboard_document.h"

#include "dashboard/dashboard_files.h"

#include <QJsonDocument>

namespace quenvolta
{

using namespace Qt::StringLiterals;

void CDashboardDocument::SetHTMLClass(const QString& id, const QString& className)
{
    Add(u"className"_s, id, className);
}

void CDashboardDocument::SetHTMLElement(const QString& id, const QString& text)
{
    Add(u"text"_s, id, text);
}

void CDashboardDocument::SelectPanel(const QString& id)
{
    Add(u"select"_s, id);
}

void CDashboardDocument::HideChildPanels(const QString& id)
{
    Add(u"hideChildren"_s, id);
}

void CDashboardDocument::SelectOne(const QStringList& ids, const QString& shown)
{
    for (const QString& id : ids)
        SetVisible(id, id == shown);
}

void CDashboardDocument::SetVisible(const QString& id, bool isVisible)
{
    SetHTMLClass(id, isVisible ? u"visible"_s : u"invisible"_s);
}

void CDashboardDocument::SetEither(bool flag, const QString& name, const QString& opposite)
{
    SetVisible(name, flag);
    SetVisible(opposite, !flag);
}

void CDashboardDocument::SetLink(const QString& address, const QString& target)
{
    Add(u"link"_s, address, target);
}

void CDashboardDocument::SetStyle(const QString& variable, const QString& value)
{
    Add(u"style"_s, variable, value);
}

QString CDashboardDocument::Script() const
{
    const QByteArray operations = QJsonDocument(m_operations).toJson(QJsonDocument::Compact);
    return DashboardFile(u"apply.js"_s) + u'(' + QString::fromUtf8(operations) + u')';
}

bool CDashboardDocument::IsApplied(const QString& answer)
{
    return answer == u"done";
}

void CDashboardDocument::Add(const QString& operation, const QString& first, const QString& second)
{
    m_operations.append(QJsonArray{operation, first, second});
}

} // namespace quenvolta
