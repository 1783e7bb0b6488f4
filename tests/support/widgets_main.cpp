#include <QApplication>
#include <gtest/gtest.h>

// Widget suites: a real QApplication so windows, dialogs and events behave as in the program.
int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("VantreoSolution"));
    QApplication::setApplicationName(QStringLiteral("VantreoGuideTests"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
