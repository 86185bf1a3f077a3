#include "repositories/hook_description.h"
#include "repositories/hooks_page.h"
#include "repositories/script_lines.h"
#include "repositories_test.h"
#include "ui/property_sheet.h"

#include <QLabel>
#include <QTreeWidget>

namespace quenvolta::test
{

namespace
{

class HooksTest : public RepositoriesTest
{
protected:
    HooksTest()
    {
        server.data.repositories[0].hooks = {{0, u"#!/bin/sh\r\necho a\r\n"_s}, {8, u"#!/bin/sh\n"_s}};
        auto made = std::make_unique<CHooksPage>(model, u"r"_s);
        page = made.get();
        sheet.AddPage(std::move(made));
        sheet.show();
        QCoreApplication::processEvents();
        server.ClearCalls();
    }

    QTreeWidgetItem& Row(const QString& name)
    {
        return *list().findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }
    QTreeWidget& list() { return Part<QTreeWidget>(*page, "list"); }
    QStringList BoldRows()
    {
        QStringList names;
        for (QTreeWidgetItemIterator row(&list()); *row != nullptr; ++row) {
            if ((*row)->font(0).bold())
                names.append((*row)->text(0));
        }
        return names;
    }
    /// Edits a hook: what the editor offers. The text is typed in its place; a null one cancels.
    QString Edit(const QString& name, const QString& text)
    {
        list().setCurrentItem(&Row(name));
        QString offered;
        const ModalDriver driver([&](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), name);
            auto& script = Part<QPlainTextEdit>(dialog, "script");
            offered = script.toPlainText();
            if (text.isNull()) {
                dialog.close();
                return;
            }
            script.selectAll();
            script.insertPlainText(text);
            Click(Ok(dialog));
        });
        Click(*page, "edit");
        EXPECT_TRUE(driver.seen);
        return offered;
    }
    void Remove(const QString& name)
    {
        list().setCurrentItem(&Row(name));
        Click(*page, "remove");
    }
    QPushButton& Apply() { return Button(sheet, QDialogButtonBox::Apply); }
    /// The writing calls so far: "SetHook 4", ...
    QStringList Writes() const
    {
        QStringList writes;
        for (const RecordedCall& call : server.Calls()) {
            if (call.method == u"SetHook"_s || call.method == u"DeleteHook"_s)
                writes.append(call.method + u' ' + QString::number(std::get<std::int32_t>(call.in[u"Kind"_s])));
        }
        return writes;
    }

    CPropertySheet sheet{nullptr, u"Properties"_s};
    CHooksPage* page = nullptr;
};

} // namespace

TEST_F(HooksTest, NineHooksInGroupsAndTheConfiguredOnesBold)
{
    EXPECT_EQ(Rows(list()),
              (QStringList{u"Commit"_s, u"  Start commit hook"_s, u"  Pre-commit hook"_s, u"  Post-commit hook"_s,
                           u"Locks"_s, u"  Pre-lock hook"_s, u"  Post-lock hook"_s, u"  Pre-unlock hook"_s,
                           u"  Post-unlock hook"_s, u"Revision property change"_s,
                           u"  Pre-revision property change hook"_s, u"  Post-revision property change hook"_s}));
    EXPECT_EQ(BoldRows(), (QStringList{u"Start commit hook"_s, u"Post-commit hook"_s}));
    EXPECT_FALSE(Part<QWidget>(*page, "edit").isEnabled());
    EXPECT_FALSE(Part<QWidget>(*page, "slaveNote").isVisibleTo(page));
    EXPECT_FALSE(Row(u"Locks"_s).flags() & Qt::ItemIsSelectable);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualItemRect(&Row(u"Pre-lock hook"_s)).center());
    EXPECT_TRUE(Part<QWidget>(*page, "edit").isEnabled());
    EXPECT_TRUE(Part<QWidget>(*page, "remove").isEnabled());
    CHooksPage slave(model, u"r"_s, CHooksPage::Role::Slave);
    EXPECT_TRUE(Part<QWidget>(slave, "slaveNote").isVisibleTo(&slave));
}

TEST_F(HooksTest, EachDescriptionListsItsArguments)
{
    const QMap<HookKind, int> arguments{{HookKind::StartCommit, 2},
                                        {HookKind::PreCommit, 2},
                                        {HookKind::PostCommit, 2},
                                        {HookKind::PreLock, 3},
                                        {HookKind::PostLock, 2},
                                        {HookKind::PreUnlock, 3},
                                        {HookKind::PostUnlock, 2},
                                        {HookKind::PreRevisionPropertyChange, 6},
                                        {HookKind::PostRevisionPropertyChange, 6}};
    for (const HookDescription& hook : HookDescriptions()) {
        const QString& text = hook.description;
        const QString intro = text.section(u"\n  ["_s, 0, 0).simplified();
        EXPECT_TRUE(intro.endsWith(u"ubversion runs this hook with the following ordered arguments:"_s))
            << intro.toStdString();
        EXPECT_EQ(text.count(u"\n  ["_s), arguments.value(hook.kind)) << hook.name.toStdString();
        EXPECT_TRUE(text.contains(u"\n  [1] REPOS-PATH"_s));
    }
}

TEST_F(HooksTest, EditsAreWrittenInTheOrderOfTheKindsWhenApplied)
{
    EXPECT_EQ(Edit(u"Pre-commit hook"_s, u"#!/bin/sh\nexit 1\n"_s), u"");
    EXPECT_EQ(Edit(u"Post-commit hook"_s, u"#!/bin/sh\necho b\n"_s), u"#!/bin/sh\necho a\n");
    EXPECT_EQ(Edit(u"Pre-lock hook"_s, {}), u"");
    EXPECT_EQ(BoldRows(), (QStringList{u"Start commit hook"_s, u"Pre-commit hook"_s, u"Post-commit hook"_s}));
    EXPECT_EQ(MethodCalls(), QStringList());
    Click(Apply());
    EXPECT_EQ(Writes(), (QStringList{u"SetHook 0"_s, u"SetHook 4"_s}));
    EXPECT_EQ(Given(u"SetHook"_s, u"Hook"_s)[0], u"#!/bin/sh\r\necho b\r\n"); // its own line endings
    EXPECT_EQ(server.CallsOf(u"GetHook"_s).size(), kHookKindCount);
    EXPECT_FALSE(Apply().isEnabled());
    server.ClearCalls();
    Click(Ok(sheet));
    EXPECT_EQ(MethodCalls(), QStringList());
}

TEST_F(HooksTest, ARemovedHookIsEditedAnewFromNothing)
{
    Remove(u"Post-commit hook"_s);
    Remove(u"Pre-unlock hook"_s); // which isn't there
    EXPECT_EQ(BoldRows(), QStringList{u"Start commit hook"_s});
    EXPECT_EQ(Edit(u"Start commit hook"_s, {}), u"#!/bin/sh\n");
    Remove(u"Start commit hook"_s);
    EXPECT_EQ(Edit(u"Start commit hook"_s, u"#!/bin/sh\nexit 0"_s), u"");
    Click(Apply());
    EXPECT_EQ(Writes(), (QStringList{u"DeleteHook 0"_s, u"DeleteHook 7"_s, u"SetHook 8"_s}));
    EXPECT_EQ(server.data.repositories[0].hooks, (QMap<int, QString>{{8, u"#!/bin/sh\nexit 0"_s}}));
}

TEST_F(HooksTest, AFailureKeepsWhatIsNotWrittenForALaterApply)
{
    Edit(u"Post-commit hook"_s, u"#!/bin/sh\n#0\n"_s);
    Edit(u"Pre-commit hook"_s, u"#!/bin/sh\n#4\n"_s);
    Remove(u"Start commit hook"_s);
    server.Fail(Operation::ExecMethod, u"SetHook"_s, {E_FAIL, server.ExtendedError(u"The disk is full."_s)}, 1, 1);
    EXPECT_EQ(MessageOf([&] { Click(Apply()); }), u"The disk is full.");
    EXPECT_EQ(Writes(), (QStringList{u"SetHook 0"_s, u"SetHook 4"_s}));
    EXPECT_TRUE(page->IsModified());
    EXPECT_EQ(Edit(u"Pre-commit hook"_s, {}), u"#!/bin/sh\n#4\n");
    server.ClearCalls();
    Click(Ok(sheet));
    EXPECT_EQ(Writes(), (QStringList{u"SetHook 4"_s, u"DeleteHook 8"_s}));
    EXPECT_FALSE(sheet.isVisible());
}

TEST_F(HooksTest, AScriptWithoutAnInterpreterIsAskedAboutWhereScriptsNeedOne)
{
    const auto answer = [this](MessageAnswer which) {
        list().setCurrentItem(&Row(u"Pre-lock hook"_s));
        bool stayed = false;
        const ModalDriver driver([&](QWidget& dialog) {
            Part<QPlainTextEdit>(dialog, "script").insertPlainText(u"exit 1\n"_s);
            const ModalDriver question([&](QWidget& modal) {
                auto& box = dynamic_cast<QMessageBox&>(modal);
                EXPECT_TRUE(box.text().contains(u"interpreter"_s));
                EXPECT_EQ(box.icon(), QMessageBox::Warning);
                EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
                Click(*box.button(which == MessageAnswer::Yes ? QMessageBox::Yes : QMessageBox::No));
            });
            Click(Ok(dialog));
            EXPECT_TRUE(question.seen);
            stayed = dialog.isVisible();
            EXPECT_TRUE(!stayed || HasFocus(dialog, "script"));
            dialog.close();
        });
        Click(*page, "edit");
        return stayed;
    };
    EXPECT_TRUE(answer(MessageAnswer::No));
    EXPECT_FALSE(page->IsModified());
    EXPECT_FALSE(answer(MessageAnswer::Yes));
    EXPECT_TRUE(BoldRows().contains(u"Pre-lock hook"_s));

    server.data.service[u"RepositoriesRoot"_s] = u"C:\\Repositories"_s; // where names of files tell it
    page->OnCreatePage();
    EXPECT_EQ(Edit(u"Pre-lock hook"_s, u"exit 1"_s), u"");
    EXPECT_TRUE(page->IsModified());
}

TEST(ScriptLinesTest, EveryLineKeepsItsEnding)
{
    const auto edited = [](const QString& original, const QString& text) { return WithLineEndingsOf(original, text); };
    EXPECT_EQ(edited(u"a\r\nb\r\n"_s, u"a\nb\nc\n"_s), u"a\r\nb\r\nc\r\n");
    EXPECT_EQ(edited(u"a\nb\n"_s, u"a\n"_s), u"a\n");
    EXPECT_EQ(edited(u"a\r\nb\nc\nd"_s, u"a\nx\ny\nd"_s), u"a\r\nx\ny\nd");
    EXPECT_EQ(edited(u"a\r\nb\nc"_s, u"a\nb\nc\nd"_s), u"a\r\nb\nc\nd");
    EXPECT_EQ(edited(u"a\nb\r\nc\r\nd\r\n"_s, u"a\nc\nd\n"_s), u"a\nc\r\nd\r\n");
    EXPECT_EQ(edited(u"a\rb\r"_s, u"a\nb\nb\n"_s), u"a\rb\rb\r");
    EXPECT_EQ(edited(u""_s, u"a\nb"_s), u"a\nb");
    EXPECT_TRUE(HasInterpreterLine(u"#!/bin/sh\n"));
    for (const QStringView bad : {u"", u"#!", u"#! \n", u" #!/bin/sh", u"\n#!/bin/sh"})
        EXPECT_FALSE(HasInterpreterLine(bad.toString()));
}

} // namespace quenvolta::test
