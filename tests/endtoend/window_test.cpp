#include "host/console_window.h"
#include "host/eliding_label.h"
#include "real_model.h"
#include "snapin/mmc_extension_about.h"
#include "snapin/mmc_standalone_data.h"
#include "ssh_server.h"
#include "support/recorded_messages.h"

#include <QLabel>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

namespace quenvolta::test
{

using namespace Qt::StringLiterals;

namespace
{

// The console's window on a true server, used with the mouse and the keyboard.
class RealWindow
{
public:
    explicit RealWindow(const ChannelOptions& options, const QStringList& arguments = {})
        : m_pool(std::make_shared<ChannelPool>(options))
        , m_window(m_about, messages, nullptr)
    {
        const WbemLocatorFactory factory = [this](WbemLocatorPtr* locator) {
            *locator = m_pool->CreateLocator();
            return S_OK;
        };
        m_window.resize(900, 700);
        m_window.show();
        m_window.Load(
            std::make_unique<CMMCStandaloneData>(SnapInServices{factory, m_preferences, messages}, arguments));
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_window));
    }

    QTreeView& Tree() { return *m_window.findChild<QTreeView*>(u"tree"_s); }
    QTreeView& List() { return *m_window.findChild<QTreeView*>(u"list"_s); }
    QString Description() { return m_window.findChild<ElidingLabel*>(u"itemDescription"_s)->Text(); }
    QString StatusPageText()
    {
        QString text;
        for (const QLabel* label : m_window.findChildren<QLabel*>()) {
            if (label->isVisible())
                text += label->text() + u'\n';
        }
        return text;
    }

    // Clicks an item of the tree, given by the names from below the root.
    void Click(const QStringList& names)
    {
        const QModelIndex index = Find(names);
        ASSERT_TRUE(index.isValid()) << names.join(u'/').toStdString();
        Tree().scrollTo(index);
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, Tree().visualRect(index).center());
    }

    // Clicks the item's expand sign.
    void ClickSign(const QStringList& names)
    {
        const QModelIndex index = Find(names);
        ASSERT_TRUE(index.isValid()) << names.join(u'/').toStdString();
        Tree().scrollTo(index);
        const QRect item = Tree().visualRect(index);
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                          {item.left() - Tree().indentation() / 2, item.center().y()});
    }

    void Key(Qt::Key key) { QTest::keyClick(&Tree(), key); }

    QStringList Children(const QStringList& names) { return Names(*Tree().model(), Find(names)); }
    QStringList Listed(int column = 0) { return Names(*List().model(), {}, column); }

    RecordedMessages messages;

private:
    static QStringList Names(const QAbstractItemModel& model, const QModelIndex& parent, int column = 0)
    {
        QStringList names;
        for (int row = 0; row < model.rowCount(parent); ++row)
            names.append(model.index(row, column, parent).data().toString());
        return names;
    }

    QModelIndex Find(const QStringList& names)
    {
        QModelIndex found = Tree().model()->index(0, 0);
        for (const QString& name : names) {
            const qsizetype row = Names(*Tree().model(), found).indexOf(name);
            if (row < 0)
                return {};
            found = Tree().model()->index(static_cast<int>(row), 0, found);
        }
        return found;
    }

    KeptPreferences m_preferences;
    std::shared_ptr<ChannelPool> m_pool;
    CMMCExtensionAbout m_about;
    ConsoleWindow m_window;
};

const QString kRepositories = u"Repositories"_s;

class RealWindowTest : public ::testing::Test
{
protected:
    // A repository of the stock tools with folders and files whose order matters.
    void Fill()
    {
        server.MakeWithSvnadmin(u"Project"_s);
        server.Import(u"Project"_s, {u"file10"_s, u"file9"_s, u"z/inner"_s, u"<b>bold & co/x"_s});
        server.MakeWithSvnadmin(u"Empty"_s);
    }

    RealServer server;
};

TEST_F(RealWindowTest, ClicksLeadFromTheServerToItsFiles)
{
    Fill();
    RealWindow window(LocalOptions(server));
    EXPECT_EQ(window.Children({}), QStringList({kRepositories, u"Users"_s, u"Groups"_s}));
    EXPECT_TRUE(window.StatusPageText().contains(u"3.3.1"_s)) << window.StatusPageText().toStdString();

    window.Click({kRepositories});
    window.ClickSign({kRepositories});
    EXPECT_EQ(window.Children({kRepositories}), QStringList({u"Empty"_s, u"Project"_s}));
    EXPECT_EQ(window.Listed(), QStringList({u"Empty"_s, u"Project"_s}));
    EXPECT_EQ(window.Listed(1), QStringList({u"0"_s, u"1"_s}));
    EXPECT_EQ(window.Listed(2), QStringList({u"FSFS"_s, u"FSFS"_s}));

    window.ClickSign({kRepositories, u"Project"_s});
    const QStringList sorted{u"<b>bold & co"_s, u"z"_s, u"file9"_s, u"file10"_s};
    EXPECT_EQ(window.Children({kRepositories, u"Project"_s}), sorted);
    window.Click({kRepositories, u"Project"_s, u"z"_s});
    EXPECT_TRUE(window.Description().endsWith(u"/svn/Project/z)"_s)) << window.Description().toStdString();
    window.Key(Qt::Key_Right);
    EXPECT_EQ(window.Children({kRepositories, u"Project"_s, u"z"_s}), QStringList{u"inner"_s});
    EXPECT_TRUE(window.messages.errors.isEmpty()) << window.messages.errors.join(u'\n').toStdString();
}

TEST_F(RealWindowTest, RefreshShowsWhatTheStockClientDid)
{
    Fill();
    RealWindow window(LocalOptions(server));
    window.Click({kRepositories});
    window.ClickSign({kRepositories});
    window.ClickSign({kRepositories, u"Project"_s});
    server.Svn({u"mkdir"_s, u"-m"_s, u"m"_s, server.FileUrl(u"Project"_s) + "/added"_L1});
    window.Click({kRepositories, u"Project"_s});
    window.Key(Qt::Key_F5);
    EXPECT_TRUE(window.Children({kRepositories, u"Project"_s}).contains(u"added"_s));

    server.MakeWithSvnadmin(u"Third"_s);
    window.Click({kRepositories});
    window.Key(Qt::Key_F5);
    EXPECT_EQ(window.Listed(), QStringList({u"Empty"_s, u"Project"_s, u"Third"_s}));
    EXPECT_EQ(window.Listed(1), QStringList({u"0"_s, u"2"_s, u"0"_s}));
}

TEST_F(RealWindowTest, AProviderKilledBetweenTwoClicksIsNotNoticed)
{
    Fill();
    RealWindow window(LocalOptions(server));
    window.Click({kRepositories});
    window.ClickSign({kRepositories});
    KillProviders(server);
    window.ClickSign({kRepositories, u"Project"_s});
    EXPECT_EQ(window.Children({kRepositories, u"Project"_s}).size(), 4);
    KillProviders(server);
    window.Click({kRepositories, u"Project"_s, u"z"_s});
    EXPECT_EQ(window.Listed(), QStringList{u"inner"_s});
    EXPECT_TRUE(window.Description().endsWith(u"/svn/Project/z)"_s)) << window.Description().toStdString();
    EXPECT_TRUE(window.messages.errors.isEmpty());
}

TEST_F(RealWindowTest, ABrokenRepositoryShowsItsErrorInPlaceOfItsFolders)
{
    Fill();
    server.Break(u"Project"_s);
    RealWindow window(LocalOptions(server));
    window.Click({kRepositories});
    window.ClickSign({kRepositories});
    EXPECT_EQ(window.Listed(), QStringList({u"Empty"_s, u"Project"_s}));
    EXPECT_EQ(window.Listed(1), QStringList({u"0"_s, u"unavailable"_s}));
    window.Click({kRepositories, u"Project"_s});
    window.ClickSign({kRepositories, u"Project"_s});
    EXPECT_TRUE(window.StatusPageText().contains(u"Unable to access repository"_s))
        << window.StatusPageText().toStdString();
    EXPECT_FALSE(window.List().isVisible());
}

TEST_F(RealWindowTest, ARemoteComputerIsNamedOnTheCommandLine)
{
    SshServer ssh;
    ssh.PutRemoteProgram(u"quenvolta-provider"_s,
                         u"exec '%1' --data '%2' \"$@\""_s.arg(RealServer::ProviderProgram(), server.DataFolder()));
    Fill();
    ChannelOptions options;
    options.sshProgram = ssh.SshProgram();
    options.localProgram = u"/nonexistent/no-local-server"_s;
    RealWindow window(options, {u"/COMPUTER=testhost"_s});
    EXPECT_EQ(window.Tree().model()->index(0, 0).data().toString(), u"Quenvolta Server (testhost)"_s);
    window.Click({kRepositories});
    window.ClickSign({kRepositories});
    window.ClickSign({kRepositories, u"Project"_s});
    EXPECT_EQ(window.Children({kRepositories, u"Project"_s}).size(), 4);
}

} // namespace

} // namespace quenvolta::test
