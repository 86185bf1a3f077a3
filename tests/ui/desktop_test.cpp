#include "foundation/exception.h"
#include "support/qt_printers.h"
#include "ui/computer_browser_dlg.h"
#include "ui/desktop_shell.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

/// A desktop with the programs that the test puts there: each notes its working folder and its arguments.
class DesktopTest : public testing::Test
{
protected:
    DesktopTest()
    {
        qputenv("PATH", QFile::encodeName(folder.path()));
        qputenv("QUENVOLTA_SERVER_DATA", QFile::encodeName(folder.filePath(u"data"_s)));
    }
    ~DesktopTest() override
    {
        qputenv("PATH", m_path);
        qunsetenv("QUENVOLTA_SERVER_DATA");
    }

    void Install(const QString& program, const QByteArray& script = {})
    {
        const QByteArray note = "#!/bin/sh\n{ pwd; printf '%s\\n' \"$@\"; } > \"" + QFile::encodeName(Noted()) +
                                ".part\" && /bin/mv \"" + QFile::encodeName(Noted()) + ".part\" \"" +
                                QFile::encodeName(Noted()) + "\"\n";
        Write(program, script.isEmpty() ? note : script);
        QFile::setPermissions(folder.filePath(program), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    void Write(const QString& name, const QByteArray& text)
    {
        QDir().mkpath(QFileInfo(folder.filePath(name)).path());
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    /// What the program noted that was started last.
    QStringList Started()
    {
        if (!QTest::qWaitFor([this] { return QFile::exists(Noted()); }))
            return {};
        QFile file(Noted());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
        file.remove();
        return lines;
    }
    QString Noted() const { return folder.filePath(u"noted"_s); }
    static QString FailureOf(const std::function<void()>& body)
    {
        try {
            body();
            return {};
        } catch (const Exception& exception) {
            return exception.GetMessage();
        }
    }

    QTemporaryDir folder;
    const CDesktopShell& shell = CDesktopShell::Instance();

private:
    const QByteArray m_path = qgetenv("PATH");
};

} // namespace

TEST_F(DesktopTest, TheCommandPromptKnowsTheServersEnvironment)
{
    EXPECT_TRUE(FailureOf([&] { shell.StartCommandPrompt({}); }).contains(u"terminal"_s));
    Install(u"xterm"_s);
    shell.StartCommandPrompt(folder.path());
    QStringList started = Started();
    ASSERT_GE(started.size(), 6);
    EXPECT_EQ(started[0], folder.path());
    EXPECT_EQ(started[1], u"-e");
    EXPECT_EQ(started[2], u"/bin/sh");
    EXPECT_TRUE(started.last().endsWith(u"/qnvlvars.sh"_s)) << started.last().toStdString();
    Install(u"gnome-terminal"_s); // better ones come first
    shell.StartCommandPrompt(u"/does/not/exist"_s);
    EXPECT_EQ(Started().value(1), u"--");
}

TEST_F(DesktopTest, ThePromptsShellHasTheVariables)
{
    // A terminal that runs its command; the shell in it tells what it finds.
    Install(u"xterm"_s, "#!/bin/sh\nshift\nexec \"$@\"\n");
    Install(u"shell"_s, "#!/bin/sh\necho \"$QUENVOLTA_SERVER_DATA\" > \"" + QFile::encodeName(Noted()) +
                            ".part\"\necho \"$PATH\" >> \"" + QFile::encodeName(Noted()) + ".part\"\n/bin/mv \"" +
                            QFile::encodeName(Noted()) + ".part\" \"" + QFile::encodeName(Noted()) + "\"\n");
    const QByteArray shellBefore = qgetenv("SHELL");
    qputenv("SHELL", QFile::encodeName(folder.filePath(u"shell"_s)));
    shell.StartCommandPrompt({});
    const QStringList told = Started();
    qputenv("SHELL", shellBefore);
    EXPECT_EQ(told.value(0), folder.filePath(u"data"_s));
    EXPECT_TRUE(told.value(1).startsWith(QCoreApplication::applicationDirPath() + u':'))
        << told.join(u' ').toStdString();
}

TEST_F(DesktopTest, TheLogIsShownWhereItIs)
{
    Install(u"xterm"_s);
    shell.OpenEventViewer({});
    EXPECT_EQ(Started().mid(1),
              (QStringList{u"-e"_s, u"less"_s, u"+F"_s, folder.filePath(u"data/web/logs/error.log"_s)}));
    shell.OpenEventViewer(u"root@srv1:2222"_s);
    const QStringList remote = Started().mid(1);
    EXPECT_EQ(remote.mid(0, 9),
              (QStringList{u"-e"_s, u"ssh"_s, u"-t"_s, u"-l"_s, u"root"_s, u"-p"_s, u"2222"_s, u"--"_s, u"srv1"_s}));
    EXPECT_TRUE(FailureOf([&] { shell.OpenEventViewer(u"-oProxyCommand=x"_s); }).contains(u"-oProxyCommand=x"_s));
    Install(u"gnome-logs"_s);
    shell.OpenEventViewer({});
    EXPECT_EQ(Started().size(), 1);
}

TEST_F(DesktopTest, CredentialsNeedAProgramAndNobodyMissesIt)
{
    EXPECT_EQ(FailureOf([&] { shell.OpenStoredCredentials(); }), QString());
    Install(u"seahorse"_s);
    shell.OpenStoredCredentials();
    EXPECT_EQ(Started().size(), 1);
    shell.CopyText(u"\u00e4 b"_s);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"\u00e4 b");
}

TEST_F(DesktopTest, TheBrowserOffersWhatSshAndTheNetworkKnow)
{
    Write(u".ssh/config"_s, "Host build1 build10 *.example.org !no\n  HostName 10.0.0.1\ninclude more/*\n"
                            "host=build2\n# Host comment\n");
    Write(u".ssh/more/a"_s, "Host \"included\"\nInclude more/*\n"); // includes itself
    Write(u".ssh/known_hosts"_s, "srv1,10.0.0.7 ssh-ed25519 AAAA\n[srv2]:2222 ssh-ed25519 AAAA\n[srv3]:22 x y\n"
                                 "|1|abc|def ssh-rsa AAAA\n@revoked srv8 ssh-rsa AAAA\nBUILD1 ssh-rsa AAAA\n"
                                 "-oProxyCommand=x ssh-rsa AAAA\n\n");
    Install(u"avahi-browse"_s, "#!/bin/sh\nprintf '+;eth0;IPv4;x;_ssh._tcp;local\\n'\n"
                               "printf '=;eth0;IPv4;nas;_ssh._tcp;local;nas\\\\046local;10.0.0.9;22;\\n'\n"
                               "printf '=;eth0;IPv6;nas;_ssh._tcp;local;nas.local;fe80::1;22;\\n'\n");
    CComputerBrowserDlg dialog(nullptr, folder.filePath(u".ssh"_s));
    auto& list = *dialog.findChild<QTreeWidget*>(u"computers"_s);
    const auto rows = [&] {
        QStringList names;
        for (int row = 0; row < list.topLevelItemCount(); ++row) {
            if (!list.topLevelItem(row)->isHidden())
                names.append(list.topLevelItem(row)->text(0));
        }
        return names;
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return rows().contains(u"nas.local"_s); })) << rows().join(u' ').toStdString();
    EXPECT_EQ(rows(), (QStringList{u"10.0.0.7"_s, u"build1"_s, u"build2"_s, u"build10"_s, u"included"_s, u"srv1"_s,
                                   u"srv2:2222"_s, u"srv3"_s, u"nas.local"_s}));
    dialog.show();
    auto& ok = *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_FALSE(ok.isEnabled());
    QTest::keyClicks(dialog.findChild<QLineEdit*>(u"filter"_s), u"srv2"_s);
    EXPECT_EQ(rows(), QStringList{u"srv2:2222"_s});
    list.setFocus();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.topLevelItem(6)).center());
    EXPECT_TRUE(ok.isEnabled());
    EXPECT_EQ(dialog.Computer(), u"srv2:2222");
}

TEST_F(DesktopTest, WithoutASearchProgramTheBrowserSaysSo)
{
    CComputerBrowserDlg dialog(nullptr, folder.filePath(u"none"_s));
    EXPECT_TRUE(dialog.findChild<QLabel*>(u"state"_s)->text().contains(u"avahi-browse"_s));
    EXPECT_EQ(dialog.findChild<QTreeWidget*>()->topLevelItemCount(), 0);
}

} // namespace quenvolta
