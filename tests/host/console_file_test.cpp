#include "foundation/exception.h"
#include "host/computer_node.h"
#include "host/console_file.h"
#include "host/snap_in_catalog.h"
#include "snapin/class_ids.h"
#include "snapin/snap_in_stream.h"
#include "support/modal_driver.h"
#include "window_test.h"

#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QMenu>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

/// The words with which bytes are refused as a console file; empty when they aren't.
QString Refusal(const QByteArray& bytes)
{
    try {
        DecodeConsoleFile(bytes);
        return {};
    } catch (const Exception& exception) {
        return exception.GetMessage();
    }
}

class ConsoleFileWindowTest : public test::WindowTest
{
protected:
    void OpenWithFiles()
    {
        catalog = std::make_unique<SnapInCatalog>(Services(), QStringList());
        Open();
        window->SetCatalog(*catalog);
    }
    QString Path(const QString& name) { return folder.filePath(name); }
    /// Chooses a name in the next file dialog.
    test::ModalDriver Choosing(const QString& fileName)
    {
        return test::ModalDriver([fileName](QWidget& modal) {
            auto* name = modal.findChild<QLineEdit*>(u"fileNameEdit"_s);
            ASSERT_NE(name, nullptr);
            name->setText(fileName);
            dynamic_cast<QDialog&>(modal).accept();
        });
    }
    CModel& Model() { return dynamic_cast<CMMCComponentData&>(*window->Host().SnapIn()).Model(); }
    void Write(const QString& name, const QByteArray& bytes)
    {
        QFile file(Path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    std::unique_ptr<SnapInCatalog> catalog;
};

} // namespace

TEST(ConsoleFileTest, FilesComeBackAsTheyWere)
{
    for (const ConsoleFile& file : {ConsoleFile{{{kStandaloneClassId, QByteArray()}}},
                                    ConsoleFile{{{kStandaloneClassId, QByteArray("\0\1\2", 3)},
                                                 {QUuid::createUuid(), QByteArray(100'000, 'x')}}}})
        EXPECT_EQ(DecodeConsoleFile(EncodeConsoleFile(file)), file);
    // The format as it is documented.
    EXPECT_EQ(EncodeConsoleFile({{{kStandaloneClassId, QByteArray("ab")}}}),
              QByteArray("QUENVOLTA CONSOLE\r\n\x1A\1\0\0\0\1\0\0\0", 28) +
                  QByteArray::fromHex("08b017e847ad4d1ba92894ffd77e9950") + QByteArray("\2\0\0\0abEND\n", 10));
}

TEST(ConsoleFileTest, BrokenFilesAreRefusedByWhatIsWrong)
{
    const QByteArray good = EncodeConsoleFile({{{kStandaloneClassId, QByteArray("stream")}}});
    EXPECT_EQ(Refusal(good), QString());
    for (qsizetype size = 0; size < good.size(); ++size)
        EXPECT_FALSE(Refusal(good.left(size)).isEmpty()) << size;
    const auto changed = [&](qsizetype place, char byte) {
        QByteArray bytes = good;
        bytes[place] = byte;
        return Refusal(bytes);
    };
    EXPECT_EQ(Refusal("<?xml version=\"1.0\"?>"), u"This is no console file.");
    EXPECT_TRUE(changed(20, 2).contains(u"version 2,"_s));
    EXPECT_TRUE(changed(24, 0).contains(u"0 snap-ins"_s));
    EXPECT_TRUE(changed(25, 1).contains(u"257 snap-ins"_s));
    EXPECT_TRUE(changed(44, 5).contains(u"end mark"_s)); // the length is one less than the stream's
    EXPECT_TRUE(changed(44, 60).contains(u"too early"_s));
    EXPECT_TRUE(changed(47, 0x7F).contains(u"length"_s)); // nothing is allocated for it
    EXPECT_TRUE(changed(good.size() - 1, 'x').contains(u"end mark"_s));
    EXPECT_TRUE(Refusal(good + "more").contains(u"end mark"_s));
}

TEST_F(ConsoleFileWindowTest, AConsoleIsSavedAndOpenedAgain)
{
    OpenWithFiles();
    Model().SetComputer(u"SRV01"_s, true);
    const QString path = Path(u"one.qvconsole"_s);
    {
        const auto driver = Choosing(Path(u"one"_s)); // the ending is added
        Press(Tree(), Qt::Key_S, Qt::ControlModifier);
        EXPECT_TRUE(driver.seen);
    }
    ASSERT_TRUE(QFile::exists(path));
    EXPECT_EQ(window->windowTitle(), u"one - Quenvolta Server (SRV01) - Quenvolta Server Manager");
    Action("newAction").trigger();
    EXPECT_EQ(Current(), u"Quenvolta Server (Local)");
    EXPECT_EQ(Rows(*Tree().model(), RootIndex()).size(), 3);
    {
        const auto driver = Choosing(path);
        Action("openAction").trigger();
        EXPECT_TRUE(driver.seen);
    }
    EXPECT_EQ(Model().ComputerName(), u"SRV01");
    EXPECT_EQ(Current(), u"Quenvolta Server (SRV01)");

    auto& recent = Part<QMenu>("recentMenu");
    Q_EMIT recent.aboutToShow();
    ASSERT_EQ(recent.actions().size(), 1);
    EXPECT_EQ(recent.actions().first()->text(), u"&1 one.qvconsole");
    Action("newAction").trigger();
    recent.actions().first()->trigger();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Model().ComputerName() == u"SRV01"; }));
    QFile::remove(path);
    Q_EMIT recent.aboutToShow(); // what is gone isn't offered
    EXPECT_FALSE(recent.actions().first()->isEnabled());
}

TEST_F(ConsoleFileWindowTest, AChangedConsoleIsNotLostUnasked)
{
    OpenWithFiles();
    WriteConsoleFile(Path(u"a.qvconsole"_s), {{{kStandaloneClassId, WriteSnapInStream(u"SRV01"_s)}}});
    window->OpenFile(Path(u"a.qvconsole"_s));
    EXPECT_TRUE(window->close()); // nothing changed
    window->show();
    Model().SetComputer(u"SRV02"_s, true);
    EXPECT_FALSE(window->close()); // Cancel
    EXPECT_EQ(messages.texts.size(), 1);
    messages.chosenButton = messages.lastButtons[0].id; // Save
    EXPECT_TRUE(window->close());
    EXPECT_EQ(ReadSnapInStream(ReadConsoleFile(Path(u"a.qvconsole"_s)).snapIns.first().stream), u"SRV02");
}

TEST_F(ConsoleFileWindowTest, WhatCannotBeOpenedChangesNothing)
{
    OpenWithFiles();
    Model().SetComputer(u"SRV01"_s, true);
    Write(u"text"_s, "hello");
    Write(u"foreign"_s, EncodeConsoleFile({{{QUuid::createUuid(), {}}}}));
    for (const QString& name : {u"text"_s, u"foreign"_s}) {
        messages.errors.clear();
        const auto driver = Choosing(Path(name));
        Action("openAction").trigger();
        EXPECT_EQ(messages.errors.size(), 1) << name.toStdString();
        EXPECT_EQ(Model().ComputerName(), u"SRV01");
    }
    // A damaged stream is the snap-in's: it stays on the local computer.
    Write(u"stream"_s, EncodeConsoleFile({{{kStandaloneClassId, QByteArray("\2\0\0\0\0\0\0\0", 8)}}}));
    messages.errors.clear();
    window->OpenFile(Path(u"stream"_s));
    EXPECT_EQ(messages.errors.size(), 1);
    EXPECT_EQ(Model().ComputerName(), QString());
    messages.errors.clear();
    window->OpenFile(Path(u"missing"_s)); // as on the command line: a new console
    EXPECT_TRUE(messages.errors.value(0).contains(u"missing"_s));
    EXPECT_EQ(Current(), u"Quenvolta Server (Local)");
}

TEST_F(ConsoleFileWindowTest, TheExtensionIsKeptWithItsComputer)
{
    server.data.repositories = {{u"web"_s}};
    catalog = std::make_unique<SnapInCatalog>(Services(), QStringList(), u"SRV07"_s);
    window = std::make_unique<ConsoleWindow>(about, messages, &state);
    window->SetCatalog(*catalog);
    window->show();
    window->Load(catalog->CreateNew());
    EXPECT_EQ(Current(), u"Computer (SRV07)");
    EXPECT_EQ(Rows(*List().model()), QStringList{u"Quenvolta Server"_s});
    EXPECT_EQ(Rows(*List().model(), {}, 1), QStringList{u"Extension Snap-in"_s});
    EXPECT_EQ(Rows(*List().model(), {}, 2), QStringList{u"Configures Quenvolta Server."_s});
    Select({u"Quenvolta Server"_s, u"Repositories"_s, u"web"_s});
    EXPECT_EQ(Description(), u"(https://srv1/svn/web)");
    EXPECT_TRUE(preferences.servers.contains(u"SRV07"_s)); // it was connected to
    const ConsoleFile file = SnapInCatalog::Describe(*window->Host().SnapIn(), true);
    ASSERT_EQ(file.snapIns.size(), 2);
    WriteConsoleFile(Path(u"b.qvconsole"_s), file);
    window->OpenFile(Path(u"b.qvconsole"_s));
    EXPECT_EQ(messages.errors, QStringList());
    EXPECT_EQ(Current(), u"Computer (SRV07)");
}

} // namespace quenvolta
