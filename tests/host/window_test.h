#pragma once

#include "host/console_window.h"
#include "host/eliding_label.h"
#include "host/view_state.h"
#include "snapin/mmc_extension_about.h"
#include "snapin/mmc_standalone_data.h"
#include "support/memory_preferences.h"
#include "support/qt_printers.h"
#include "support/recorded_messages.h"
#include "support/recorded_shell.h"
#include "support/stand_in_server.h"

#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

namespace quenvolta::test
{

/// The window on a stand-in server.
class WindowTest : public testing::Test
{
protected:
    explicit WindowTest(const QString& version = QStringLiteral("3.3.1"))
        : server(version)
    {
    }
    ~WindowTest() override { window.reset(); }

    std::unique_ptr<IComponentData> CreateSnapIn()
    {
        return std::make_unique<CMMCStandaloneData>(Services(), QStringList());
    }
    SnapInServices Services()
    {
        return {server.LocatorFactory(), preferences, messages, shell, *dialogs, updateService};
    }

    /// Opens the window and loads the snap-in; the tree has the focus.
    void Open()
    {
        window = std::make_unique<ConsoleWindow>(about, messages, &state);
        window->show();
        window->activateWindow();
        window->Load(CreateSnapIn());
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        ASSERT_TRUE(QTest::qWaitFor([this] { return Tree().hasFocus(); }));
    }

    /// Closes the window as a person does and opens it again.
    void Reopen()
    {
        window->close();
        Open();
    }

    QTreeView& Tree() { return *window->findChild<QTreeView*>(QStringLiteral("tree")); }
    QTreeView& List() { return *window->findChild<QTreeView*>(QStringLiteral("list")); }
    template <typename Widget>
    Widget& Part(const char* name)
    {
        return *window->findChild<Widget*>(QString::fromLatin1(name));
    }
    QAction& Action(const char* name) { return Part<QAction>(name); }
    QString Description() { return Part<ElidingLabel>("itemDescription").Text(); }

    void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&widget, key, modifiers);
        QCoreApplication::processEvents();
    }

    /// The names along the way to what the tree shows as current.
    QString Current() { return PathOf(Tree().currentIndex()); }
    static QString PathOf(const QModelIndex& index)
    {
        const QModelIndex above = index.parent();
        const QString name = index.data().toString();
        return above.isValid() && above.parent().isValid() ? PathOf(above) + u'/' + name : name;
    }
    /// The names below an item of a view.
    static QStringList Rows(const QAbstractItemModel& model, const QModelIndex& parent = {}, int column = 0)
    {
        QStringList names;
        for (int row = 0; row < model.rowCount(parent); ++row)
            names.append(model.index(row, column, parent).data().toString());
        return names;
    }
    QModelIndex RootIndex() { return Tree().model()->index(0, 0); }
    QModelIndex ItemAt(const QStringList& names)
    {
        QModelIndex found = RootIndex();
        for (const QString& name : names) {
            Tree().expand(found);
            const qsizetype row = Rows(*Tree().model(), found).indexOf(name);
            found = row < 0 ? QModelIndex() : Tree().model()->index(static_cast<int>(row), 0, found);
        }
        return found;
    }
    void Select(const QStringList& names)
    {
        const QModelIndex item = ItemAt(names);
        ASSERT_TRUE(item.isValid()) << names.join(u'/').toStdString();
        Tree().setCurrentIndex(item);
        Tree().setFocus();
        QCoreApplication::processEvents();
    }

    StandInServer server;
    MemoryPreferences preferences;
    RecordedMessages messages;
    RecordedShell shell;
    const DialogTable* dialogs = &DialogTable::BuiltIn();
    UpdateService updateService;
    CMMCExtensionAbout about;
    QTemporaryDir folder;
    ViewState state{folder.filePath(QStringLiteral("console.ini"))};
    std::unique_ptr<ConsoleWindow> window;
};

inline const QString kRepositories = QStringLiteral("Repositories");

} // namespace quenvolta::test
