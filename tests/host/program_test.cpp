#include "support/qt_printers.h"

#include <QCoreApplication>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;

namespace
{

/// The program itself, run in an environment of its own.
class ProgramTest : public testing::Test
{
protected:
    ProgramTest()
    {
        for (const QString& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
            environment.remove(name);
        environment.insert(u"XDG_CONFIG_HOME"_s, folder.path());
        environment.insert(u"QUENVOLTA_SERVER_DATA"_s, folder.filePath(u"server"_s));
    }

    int Run(const QStringList& arguments)
    {
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationDirPath() + u"/quenvolta-manager"_s, arguments);
        EXPECT_TRUE(program.waitForFinished());
        errors = QString::fromLocal8Bit(program.readAllStandardError());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit) << errors.toStdString();
        return program.exitCode();
    }

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QTemporaryDir folder;
    QString errors;
};

} // namespace

TEST_F(ProgramTest, SaysWhatToDoWithoutADisplay)
{
    EXPECT_EQ(Run({}), 2);
    EXPECT_TRUE(errors.contains(u"--picture"_s)) << errors.toStdString();
    environment.insert(u"DISPLAY"_s, u"nowhere.invalid:99"_s);
    EXPECT_EQ(Run({}), 2);
    EXPECT_TRUE(errors.contains(u"--picture"_s)) << errors.toStdString();
    EXPECT_EQ(Run({u"--version"_s}), 0);
    EXPECT_EQ(Run({u"--wrong"_s}), 1);
}

TEST_F(ProgramTest, RendersAlsoWhyThereIsNothingToSee)
{
    const QString file = folder.filePath(u"a.png"_s);
    EXPECT_EQ(Run({u"--picture"_s, file, u"--picture-size"_s, u"700x500"_s, u"/computer=-bad name"_s}), 0);
    EXPECT_EQ(QImage(file).size(), QSize(700, 500)) << errors.toStdString();
    EXPECT_EQ(Run({u"--picture"_s, file, u"--picture-select"_s, u"Repositories"_s, u"/computer=-bad name"_s}), 1);
    EXPECT_TRUE(errors.contains(u"Repositories"_s)) << errors.toStdString();
}

} // namespace quenvolta
