#include <QGuiApplication>
#include <gtest/gtest.h>

#include "support/TestDisplay.h"

// Core and GL suites: fonts and off-screen GL contexts need a GUI application.
int main(int argc, char **argv)
{
    TestDisplayHold display;
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
