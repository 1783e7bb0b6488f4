#include <QGuiApplication>
#include <gtest/gtest.h>

// Core and GL suites: fonts and off-screen GL contexts need a GUI application.
int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
