#include "opened_addresses.h"
#include "repositories/create_folder_dlg.h"
#include "repositories/create_project_dlg.h"
#include "repositories/delete_folder_dlg.h"
#include "repositories_test.h"

#include <QLabel>
#include <QLayout>

namespace quenvolta::test
{

namespace
{

class FoldersTest : public RepositoriesTest
{
protected:
    CCreateFolderDlg folder{nullptr, model, {u"r"_s, u"/apps"_s}};
    CCreateProjectDlg project{nullptr, model, {u"r"_s, u"/"_s}};
};

} // namespace

TEST_F(FoldersTest, TheMessageFollowsTheNameUntilAPersonEditsIt)
{
    Open(folder);
    EXPECT_FALSE(Ok(folder).isEnabled());
    EXPECT_TRUE(HasFocus(folder, "name"));
    Type(folder, "name", u"old%1"_s);
    EXPECT_EQ(Message(folder), u"Created folder 'old%1'.");
    EXPECT_TRUE(Ok(folder).isEnabled());
    Type(folder, "name", u""_s);
    EXPECT_EQ(Message(folder), u"");
    EXPECT_FALSE(Ok(folder).isEnabled());
    Type(folder, "name", u"new"_s);
    Click(ButtonOf(folder, u"&Details"_s));
    QTest::keyClicks(&Part<QPlainTextEdit>(folder, "message"), u"!"_s);
    Type(folder, "name", u"newer"_s);
    EXPECT_EQ(Message(folder), u"!Created folder 'new'.");
    Click(Ok(folder));
    EXPECT_EQ(folder.result(), QDialog::Accepted);
    EXPECT_EQ(Given(u"CreateFolders"_s, u"Folders"_s), QStringList{u"/apps/newer"_s});
    EXPECT_EQ(Given(u"CreateFolders"_s, u"Message"_s), QStringList{u"!Created folder 'new'."_s});
}

TEST_F(FoldersTest, AProjectIsOneCommitOfFourFolders)
{
    Open(project);
    Type(project, "name", u"web"_s);
    Click(Ok(project));
    EXPECT_EQ(MethodCalls(), QStringList{u"Quenvolta_Repository.Name=\"r\".CreateFolders"_s});
    EXPECT_EQ(Given(u"CreateFolders"_s, u"Folders"_s), QStringList{u"/web|/web/trunk|/web/branches|/web/tags"_s});
    EXPECT_EQ(Given(u"CreateFolders"_s, u"Message"_s), QStringList{u"Create project 'web'"_s});

    CCreateProjectDlg below(nullptr, model, {u"r"_s, u"/apps"_s});
    Open(below);
    Type(below, "name", u"web"_s);
    Click(Ok(below));
    EXPECT_EQ(Given(u"CreateFolders"_s, u"Folders"_s).last(),
              u"/apps/web|/apps/web/trunk|/apps/web/branches|/apps/web/tags");
}

TEST_F(FoldersTest, BadNamesAndFailuresKeepTheDialogAndWhatWasTyped)
{
    const QString rule = u"name '%1'. %2 name cannot contain following symbols < > : \" / | and start or end by "
                         "period."_s;
    Open(folder);
    Open(project);
    for (const QString& bad :
         {u".a"_s, u"a."_s, u"."_s, u"a|b"_s, u"a\\b"_s, u"a/b"_s, u"a<b"_s, u"a>b"_s, u"a:b"_s, u"a\"b"_s}) {
        Type(folder, "name", bad);
        Part<QWidget>(folder, "buttons").setFocus();
        EXPECT_EQ(MessageOf([&] { Click(Ok(folder)); }), u"Invalid folder "_s + rule.arg(bad, u"Folder"_s));
        EXPECT_TRUE(HasFocus(folder, "name"));
        Type(project, "name", bad);
        EXPECT_EQ(MessageOf([&] { Click(Ok(project)); }), u"Invalid project "_s + rule.arg(bad, u"Project"_s));
    }
    EXPECT_EQ(MethodCalls(), QStringList());
    Type(folder, "name", u"old"_s);
    EXPECT_EQ(MessageOf([&] { Click(Ok(folder)); }), u"The folder already exists.");
    EXPECT_TRUE(folder.isVisible());
    EXPECT_EQ(Message(folder), u"Created folder 'old'.");
    Type(folder, "name", u"a.b c"_s);
    Click(Ok(folder));
    EXPECT_FALSE(folder.isVisible());
}

TEST_F(FoldersTest, DetailsUnfoldAndFoldTheDialog)
{
    Open(folder);
    auto& message = Part<QPlainTextEdit>(folder, "message");
    QPushButton& details = ButtonOf(folder, u"&Details"_s);
    const int folded = folder.height();
    EXPECT_FALSE(message.isVisible());
    Click(details);
    EXPECT_TRUE(message.isVisible());
    EXPECT_TRUE(details.isChecked());
    EXPECT_GE(folder.height(), folded + message.minimumHeight());
    EXPECT_GE(folder.minimumHeight(), folder.layout()->minimumSize().height());
    Click(details);
    EXPECT_FALSE(message.isVisible());
    EXPECT_EQ(folder.height(), folded);
}

TEST_F(FoldersTest, DeletingAsksForTheNameAndCommitsThePath)
{
    CDeleteFolderDlg dialog(nullptr, model, {u"r"_s, u"/apps/old"_s});
    Open(dialog);
    EXPECT_EQ(Part<QLabel>(dialog, "question").text(), u"Are you sure you want to delete folder 'old'?");
    EXPECT_EQ(Message(dialog), u"Deleted folder '/apps/old'.");
    EXPECT_FALSE(Part<QWidget>(dialog, "message").isVisible());
    EXPECT_TRUE(Button(dialog, QDialogButtonBox::Cancel).isDefault());
    server.Fail(Operation::ExecMethod, u"DeleteFolders"_s, {E_FAIL, server.ExtendedError(u"It is locked."_s)});
    EXPECT_EQ(MessageOf([&] { Click(Ok(dialog)); }), u"It is locked.");
    EXPECT_TRUE(dialog.isVisible());
    Click(Ok(dialog));
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(Given(u"DeleteFolders"_s, u"Folders"_s), QStringList(2, u"/apps/old"_s));
    EXPECT_FALSE(server.data.repositories[0].entries.contains(u"/apps/old"_s));
}

TEST_F(FoldersTest, TheNoteOnHooksLeadsToTheHelp)
{
    OpenedAddresses opened;
    for (QDialog* dialog : {static_cast<QDialog*>(&folder), static_cast<QDialog*>(&project)}) {
        Q_EMIT Part<QLabel>(*dialog, "hooksNote").linkActivated(u"help:"_s);
        EXPECT_TRUE(opened.taken.value(0).endsWith(u"/go/2002/"_s));
        opened.taken.clear();
    }
}

} // namespace quenvolta::test
