#include "commands_test.h"
#include "snapin/root_item.h"
#include "support/modal_driver.h"

#include <QLabel>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

class DashboardLinksTest : public test::CommandsTest
{
protected:
    bool Follow(const QString& address) { return loaded->data->Root().HandleCommandLink(address, Console()); }
};

} // namespace

TEST_F(DashboardLinksTest, EachRunsItsAction)
{
    Load(u"3.3.1"_s);
    Open();
    EXPECT_TRUE(Follow(u"QUENVOLTA://CREATEUSER/"_s));
    for (const QString& link : {u"CreateGroup"_s, u"CreateRepository"_s, u"ImportRepository"_s, u"ConnectToComputer"_s,
                                u"ConfigureLogging"_s})
        EXPECT_TRUE(Follow(u"quenvolta://%1/"_s.arg(link.toLower())));
    using Kind = DialogKind;
    EXPECT_EQ(opened, QList<Kind>({Kind::CreateUser, Kind::CreateGroup, Kind::CreateRepository, Kind::ImportRepository,
                                   Kind::SelectComputer, Kind::ServerProperties}));
    EXPECT_EQ(page, 5);
    EXPECT_TRUE(Follow(u"quenvolta://ConfigureAuth/"_s));
    EXPECT_EQ(page, 4);

    opened.clear();
    EXPECT_TRUE(Follow(u"quenvolta://EnableQdfsService/"_s)); // answered No
    EXPECT_TRUE(opened.isEmpty());
    loaded->messages.answer = MessageAnswer::Yes;
    EXPECT_TRUE(Follow(u"quenvolta://EnableQdfsService/"_s));
    EXPECT_EQ(operations, (QList<ServiceOperation>{{ServiceAction::Start, ServerService::Qdfs}}));
    EXPECT_EQ(Server().CallsOf(u"ChangeStartMode"_s).size(), 1);

    test::ModalDriver driver([](QWidget& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"About Quenvolta Server");
        EXPECT_TRUE(dialog.findChild<QLabel*>(u"version"_s)->text().startsWith(u"Version 3.3.1 (Subversion "_s));
        dialog.close();
    });
    EXPECT_TRUE(Follow(u"quenvolta://VersionInfo/"_s));
    EXPECT_TRUE(driver.seen);
    for (const QString& address :
         {u"quenvolta://Unknown/"_s, u"quenvolta://CreateUser/more"_s, u"res://x/https://y"_s, u""_s})
        EXPECT_FALSE(Follow(address)) << address.toStdString();
}

TEST_F(DashboardLinksTest, AnOldServerSaysThatItCannotImport)
{
    Load(u"2.7"_s);
    Open();
    EXPECT_TRUE(Follow(u"quenvolta://ImportRepository/"_s));
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_EQ(loaded->messages.texts, QStringList{LoadString(StringId::kImportNotSupported)});
    EXPECT_EQ(loaded->messages.lastStyle.icon, MessageIcon::Error);
}

} // namespace quenvolta
