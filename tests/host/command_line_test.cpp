#include "host/command_line.h"
#include "support/qt_printers.h"

#include <gtest/gtest.h>

namespace quenvolta
{

using namespace Qt::StringLiterals;
using Task = CommandLine::Task;

namespace
{

CommandLine Parse(const QString& arguments)
{
    return ParseCommandLine((u"manager "_s + arguments).split(u' ', Qt::SkipEmptyParts));
}

} // namespace

TEST(CommandLineTest, KeepsTheSnapInsOptionsApart)
{
    for (const QString& form : {u"/computer=srv"_s, u"/COMPUTER srv"_s, u"--dark /computer srv"_s}) {
        const CommandLine line = Parse(form);
        EXPECT_EQ(line.task, Task::OpenWindow) << form.toStdString();
        EXPECT_TRUE(line.arguments.join(u' ').endsWith(form));
    }
    EXPECT_EQ(Parse(u"/computerx=srv"_s).task, Task::Refuse);
    EXPECT_EQ(Parse(u"stray"_s).task, Task::Refuse);
    EXPECT_TRUE(Parse(u"stray"_s).text.contains(u"'stray'"_s));
    EXPECT_EQ(Parse(u"--unknown"_s).task, Task::Refuse);
    EXPECT_EQ(Parse({}).task, Task::OpenWindow);
}

TEST(CommandLineTest, DescribesPictures)
{
    const CommandLine plain = Parse(u"--picture a.png"_s);
    EXPECT_EQ(plain.task, Task::RenderPicture);
    EXPECT_EQ(plain.pictureFile, u"a.png");
    EXPECT_FALSE(plain.pictureSelect.has_value());
    const CommandLine full =
        Parse(u"--picture=b.png --picture-select Repositories/web/trunk --picture-size 800x600 --dark"_s);
    EXPECT_EQ(full.pictureSelect, (QStringList{u"Repositories"_s, u"web"_s, u"trunk"_s}));
    EXPECT_EQ(full.pictureSize, QSize(800, 600));
    EXPECT_TRUE(full.dark);
    for (const QString& size : {u"800"_s, u"800x"_s, u"0x600"_s, u"-1x5"_s, u"9000x10"_s, u"800x600x2"_s, u"8e2x600"_s})
        EXPECT_EQ(Parse(u"--picture c.png --picture-size "_s + size).task, Task::Refuse) << size.toStdString();
    EXPECT_EQ(Parse(u"--picture"_s).task, Task::Refuse);
}

TEST(CommandLineTest, PrintsHelpAndVersion)
{
    EXPECT_EQ(Parse(u"--version"_s).text, u"Quenvolta Server Manager 3.3.1");
    const CommandLine help = Parse(u"--help"_s);
    EXPECT_EQ(help.task, Task::Print);
    EXPECT_TRUE(help.text.contains(u"/computer=NAME"_s));
    EXPECT_TRUE(help.text.contains(u"--picture"_s));
}

} // namespace quenvolta
