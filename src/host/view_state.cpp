#include "host/view_state.h"

#include <QFile>
#include <QMainWindow>
#include <QSplitter>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

const auto kGeometry = "window/geometry"_L1;
const auto kPanes = "window/panes"_L1;
const auto kRecentFiles = "files/recent"_L1;
constexpr qsizetype kMostRecentFiles = 9;

QString ColumnsKey(const QString& nodeType)
{
    return u"columns/"_s + nodeType;
}

} // namespace

ViewState::ViewState()
    : m_settings(QSettings::IniFormat, QSettings::UserScope, u"quenvolta"_s, u"console"_s)
{
}

ViewState::ViewState(const QString& fileName)
    : m_settings(fileName, QSettings::IniFormat)
{
}

void ViewState::Restore(QMainWindow& window, QSplitter& panes) const
{
    window.restoreGeometry(m_settings.value(kGeometry).toByteArray());
    panes.restoreState(m_settings.value(kPanes).toByteArray());
}

void ViewState::Save(const QMainWindow& window, const QSplitter& panes)
{
    m_settings.setValue(kGeometry, window.saveGeometry());
    m_settings.setValue(kPanes, panes.saveState());
}

QList<int> ViewState::ColumnWidths(const QString& nodeType) const
{
    QList<int> widths;
    for (const QVariant& width : m_settings.value(ColumnsKey(nodeType)).toList())
        widths.append(width.toInt());
    return widths;
}

void ViewState::SaveColumnWidths(const QString& nodeType, const QList<int>& widths)
{
    m_settings.setValue(ColumnsKey(nodeType), QVariantList(widths.begin(), widths.end()));
}

QStringList ViewState::RecentFiles() const
{
    QStringList files = m_settings.value(kRecentFiles).toStringList();
    files.removeIf([](const QString& file) { return !QFile::exists(file); });
    return files;
}

void ViewState::AddRecentFile(const QString& fileName)
{
    QStringList files = m_settings.value(kRecentFiles).toStringList();
    files.removeAll(fileName);
    files.prepend(fileName);
    m_settings.setValue(kRecentFiles, files.mid(0, kMostRecentFiles));
}

} // namespace quenvolta
