#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("quenvolta"));
    QCoreApplication::setApplicationName(QStringLiteral("test"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
