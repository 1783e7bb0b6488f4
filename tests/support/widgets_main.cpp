#include <QApplication>
#include <gtest/gtest.h>

#include "support/TestDisplay.h"

// Widget suites: a real QApplication so windows, dialogs and events behave as in the program.
int main(int argc, char **argv)
{
    // Windows report to the startup API after half a second; tests never reach a real server.
    if (!qEnvironmentVariableIsSet("VANTREOGUIDE_API_BASE_URL"))
        qputenv("VANTREOGUIDE_API_BASE_URL", "http://127.0.0.1:9/");
    TestDisplayHold display;
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("VantreoSolution"));
    QApplication::setApplicationName(QStringLiteral("VantreoGuideTests"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
