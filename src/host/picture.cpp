#include "host/picture.h"

#include "foundation/simple_exception.h"
#include "host/console_window.h"
#include "ui/string_table.h"

#include <QCoreApplication>
#include <QPixmap>

#include <algorithm>

namespace quenvolta
{

namespace
{

constexpr std::chrono::seconds kLongestDrawing(20);

const ScopeEntry& ChildOf(ConsoleHost& host, const ScopeEntry& entry, const QString& name)
{
    host.Expand(entry.id);
    const auto found =
        std::ranges::find_if(entry.children, [&](const auto& child) { return host.Tree().NameOf(*child) == name; });
    if (found == entry.children.end())
        throw SimpleException::FromText(LoadString(StringId::kNoSuchNode, name));
    return **found;
}

} // namespace

void ShowItemAt(ConsoleWindow& window, const QStringList& names)
{
    ConsoleHost& host = window.Host();
    const ScopeEntry* entry = host.Tree().Root();
    for (const QString& name : names)
        entry = &ChildOf(host, *entry, name);
    host.Show(entry->id);
    window.ExpandShownItem();
}

void WritePicture(ConsoleWindow& window, const QSize& size, const QString& fileName)
{
    window.resize(size);
    QCoreApplication::processEvents();      // layouts and the places of items are settled by events
    window.WaitUntilDrawn(kLongestDrawing); // a page that is late is in the picture as it is
    if (!window.grab().save(fileName, "PNG"))
        throw SimpleException::FromText(LoadString(StringId::kPictureNotWritten, fileName));
}

} // namespace quenvolta
