#include "common/JsonValueReaders.h"

#include <QJsonArray>
#include <gtest/gtest.h>

using namespace vg::json;

TEST(JsonValueReaders, BoolAcceptsStringsAndNumbers)
{
    EXPECT_TRUE(toBool(QJsonValue(QStringLiteral("TRUE")), false));
    EXPECT_TRUE(toBool(QJsonValue(QStringLiteral(" 1 ")), false));
    EXPECT_FALSE(toBool(QJsonValue(QStringLiteral("yes")), true));
    EXPECT_TRUE(toBool(QJsonValue(2), false));
    EXPECT_FALSE(toBool(QJsonValue(0.5), true));
    EXPECT_TRUE(toBool(QJsonValue(QJsonValue::Undefined), true));
    EXPECT_FALSE(toBool(QJsonValue(QJsonArray{}), false));
}

TEST(JsonValueReaders, DoubleTakesOnlyWholeNumericStrings)
{
    EXPECT_DOUBLE_EQ(toDouble(QJsonValue(QStringLiteral("1.5")), 180.0), 1.5);
    EXPECT_DOUBLE_EQ(toDouble(QJsonValue(QStringLiteral("abc")), 180.0), 180.0);
    EXPECT_DOUBLE_EQ(toDouble(QJsonValue(QStringLiteral("1.5x")), 180.0), 180.0);
    EXPECT_DOUBLE_EQ(toDouble(QJsonValue(true), 3.0), 3.0);
}

TEST(JsonValueReaders, IntRejectsFractionsAndOutOfRange)
{
    EXPECT_EQ(toInt(QJsonValue(2.5), -1), -1);
    EXPECT_EQ(toInt(QJsonValue(7.0), -1), 7);
    EXPECT_EQ(toInt(QJsonValue(1e12), -1), -1);
    EXPECT_EQ(toInt(QJsonValue(QStringLiteral("42")), -1), 42);
    EXPECT_EQ(toInt(QJsonValue(QStringLiteral("4.2")), -1), -1);
}

TEST(JsonValueReaders, ColorTakesOnlyValidNames)
{
    EXPECT_EQ(toColor(QJsonValue(QStringLiteral("#abc")), Qt::black), QColor(0xaa, 0xbb, 0xcc));
    EXPECT_EQ(toColor(QJsonValue(QStringLiteral("red")), Qt::black), QColor(Qt::red));
    EXPECT_EQ(toColor(QJsonValue(QStringLiteral("#12345")), Qt::black), QColor(Qt::black));
    EXPECT_EQ(colorName(QColor(45, 45, 45)), QStringLiteral("#2d2d2d"));
}
