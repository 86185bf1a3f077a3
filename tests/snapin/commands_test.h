#pragma once

#include "platform/mmc/context_menu.h"
#include "snapin/command_id.h"
#include "snapin_test.h"

#include <gtest/gtest.h>

namespace quenvolta::test
{

/// The snap-in with all dialogs there, each of which is only noted.
class CommandsTest : public testing::Test
{
protected:
    using Place = CCM_INSERTIONPOINTID;

    void Load(const QString& version)
    {
        loaded = std::make_unique<LoadedSnapIn>(version);
        loaded->dialogs = &dialogs;
        for (int kind = 1; kind <= static_cast<int>(DialogKind::EditGroup); ++kind)
            dialogs.Add(static_cast<DialogKind>(kind), [this, kind](const DialogRequest& request) {
                opened.append(static_cast<DialogKind>(kind));
                page = request.page;
                position = request.position;
                account = request.account;
                operations = request.operations;
                if (duringDialog)
                    duringDialog(request);
                return dialogAnswer;
            });
    }
    void Open() { loaded->Load(); }
    FakeConsole& Console() { return loaded->console; }
    StandInServer& Server() { return loaded->server; }

    /// The menu of a node or of a listed item: "TOP 32770 text", with " (gray)" behind what is disabled.
    QStringList Menu(const DataObjectPtr& object, std::uint32_t allowed = CCM_INSERTIONALLOWED_ALL)
    {
        struct Collector : IContextMenuCallback {
            HRESULT AddItem(const CONTEXTMENUITEM& item) override
            {
                static const QStringList kPlaces{QStringLiteral("TOP"), QStringLiteral("NEW"), QStringLiteral("TASK"),
                                                 QStringLiteral("VIEW")};
                items.append(QStringLiteral("%1 %2 %3%4")
                                 .arg(kPlaces[static_cast<int>(item.lInsertionPointID)])
                                 .arg(item.lCommandID)
                                 .arg(item.strName, item.isGrayed ? QStringLiteral(" (gray)") : QString()));
                texts.insert(item.lCommandID, item.strStatusBarText);
                return S_OK;
            }
            QStringList items;
            QMap<int, QString> texts;
        } collector;
        loaded->data->AddMenuItems(object, collector, allowed);
        statusTexts = collector.texts;
        return collector.items;
    }
    QStringList Menu(const QString& path) { return Menu(Console().Object(path)); }
    /// The commands of the menu of a node that are offered and enabled.
    QSet<int> Enabled(const QString& path)
    {
        QSet<int> commands;
        for (const QString& item : Menu(path)) {
            if (!item.endsWith(QStringLiteral("(gray)")))
                commands.insert(item.section(u' ', 1, 1).toInt());
        }
        return commands;
    }
    HRESULT Run(const QString& path, int command) { return loaded->data->Command(command, Console().Object(path)); }

    DialogTable dialogs;
    QList<DialogKind> opened;
    int page = -1;
    TreePosition position;
    QString account;
    QList<ServiceOperation> operations;
    std::function<void(const DialogRequest&)> duringDialog;
    bool dialogAnswer = true;
    QMap<int, QString> statusTexts;
    std::unique_ptr<LoadedSnapIn> loaded;
};

} // namespace quenvolta::test
