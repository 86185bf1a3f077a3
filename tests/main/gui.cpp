#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Windows of tests open nowhere, whatever display there is.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Only the tests of the dashboard start a web view.
    qputenv("QUENVOLTA_DASHBOARD", "plain");
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("quenvolta"));
    QCoreApplication::setApplicationName(QStringLiteral("test"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
