// The text writer and the pull parser against Qt's own JSON document classes: what one
// writes the other must read back unchanged, and the parser must accept, refuse and name
// errors exactly as QJsonDocument::fromJson does.
#include "common/JsonPullParser.h"
#include "common/JsonTextWriter.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <limits>

using namespace vg::json;

namespace {

struct Parsed {
    bool ok = false;
    QString error;
};

// The whole text through the pull parser into `tree` (the root as node 0).
Parsed parseWhole(const QByteArray &text, JsonTree *tree)
{
    const char *end = text.constData() + text.size();
    JsonPullParser opening(text.constData(), end);
    if (!opening.beginDocument())
        return {false, opening.errorString()};
    // The opening consumed the root's bracket; the root is parsed as a value from there.
    JsonPullParser parser(opening.position() - 1, end);
    const bool ok = parser.parseValue(tree) && parser.endDocument();
    return {ok, ok ? QString() : parser.errorString()};
}

Parsed parseWithDocument(const QByteArray &text)
{
    QJsonParseError error;
    QJsonDocument::fromJson(text, &error);
    return {error.error == QJsonParseError::NoError,
            error.error == QJsonParseError::NoError ? QString() : error.errorString()};
}

QByteArray written(const std::function<void(JsonTextWriter &)> &write)
{
    JsonTextWriter writer(16);
    write(writer);
    return writer.take();
}

} // namespace

TEST(JsonTextWriter, StringsWithEscapesControlCharactersAndSurrogatesReadBackExactly)
{
    QString controls;
    for (char16_t c = 0; c < 0x20; ++c)
        controls.append(QChar(c));
    const QList<QString> texts = {
        QStringLiteral("plain"),
        QStringLiteral("quote \" backslash \\ slash /"),
        controls,
        QString::fromUtf8("\x7f é 한글 \xe2\x82\xac"),
        QString::fromUtf8("\xf0\x9f\x98\x80 face, \xf0\x90\x8d\x88 hwair"),
        QString(QChar(0xd800)) + QStringLiteral("lone high"),
        QStringLiteral("lone low") + QString(QChar(0xdc00)),
        QString(QChar(0xdc00)) + QString(QChar(0xd800)),  // the pair in the wrong order
        QString(),
    };
    const QByteArray text = written([&](JsonTextWriter &w) {
        w.beginArray();
        for (const QString &t : texts)
            w.value(t);
        w.endArray();
    });
    const QJsonArray array = QJsonDocument::fromJson(text).array();
    ASSERT_EQ(array.size(), texts.size()) << text.constData();
    JsonTree tree;
    ASSERT_TRUE(parseWhole(text, &tree).ok);
    int i = 0;
    for (const JsonValueRef &value : JsonValueRef(&tree, 0).toArray()) {
        EXPECT_EQ(array[i].toString(), texts[i]) << i;
        EXPECT_EQ(value.toString(), texts[i]) << i;
        ++i;
    }
    // Control characters never appear raw in the text.
    for (char c : text)
        EXPECT_TRUE(uchar(c) >= 0x20 || c == '\n') << int(c);
}

TEST(JsonTextWriter, NumbersReadBackAsTheSameValues)
{
    const QList<double> doubles = {0.1, -2.5, 1e300, 5e-324, 123456789.125, 1.0 / 3.0, 42.0,
                                   std::numeric_limits<double>::max()};
    const QList<float> floats = {0.65f, 1e-7f, 3.4028235e38f, -0.1f, 16777217.0f};
    const QByteArray text = written([&](JsonTextWriter &w) {
        w.beginObject();
        w.key("doubles");
        w.beginArray();
        for (double d : doubles)
            w.value(d);
        w.endArray();
        w.key("floats");
        w.beginArray();
        for (float f : floats)
            w.value(f);
        w.endArray();
        w.field("int_min", std::numeric_limits<int>::min());
        w.field("int_max", std::numeric_limits<int>::max());
        w.field("nan", std::nan(""));
        w.field("inf_float", std::numeric_limits<float>::infinity());
        w.key("inf_finite");
        w.finiteValue(-std::numeric_limits<double>::infinity());
        w.endObject();
    });
    const QJsonObject o = QJsonDocument::fromJson(text).object();
    ASSERT_FALSE(o.isEmpty()) << text.constData();
    for (int i = 0; i < doubles.size(); ++i)
        EXPECT_EQ(o.value(QLatin1String("doubles")).toArray()[i].toDouble(), doubles[i]) << i;
    for (int i = 0; i < floats.size(); ++i)
        EXPECT_EQ(float(o.value(QLatin1String("floats")).toArray()[i].toDouble()), floats[i]) << i;
    // The shortest text of the float, not the digits of its double.
    EXPECT_TRUE(text.contains("0.65,")) << text.constData();
    EXPECT_EQ(o.value(QLatin1String("int_min")).toInteger(), std::numeric_limits<int>::min());
    EXPECT_EQ(o.value(QLatin1String("int_max")).toInteger(), std::numeric_limits<int>::max());
    EXPECT_TRUE(o.value(QLatin1String("nan")).isNull());
    EXPECT_EQ(o.value(QLatin1String("inf_float")).toDouble(-1), 0.0);
    EXPECT_EQ(o.value(QLatin1String("inf_finite")).toDouble(-1), 0.0);
}

TEST(JsonTextWriter, LayoutIsIndentedByFourWithEmptyContainersClosedInPlace)
{
    const QByteArray text = written([](JsonTextWriter &w) {
        w.beginObject();
        w.field("a", 1);
        w.key("list");
        w.beginArray();
        w.value(true);
        w.beginObject();
        w.field("c", QColor(0x12, 0xab, 0xef));
        w.endObject();
        w.endArray();
        w.key("none");
        w.beginArray();
        w.endArray();
        w.key("empty");
        w.beginObject();
        w.endObject();
        w.endObject();
    });
    EXPECT_EQ(text, QByteArray("{\n"
                               "    \"a\": 1,\n"
                               "    \"list\": [\n"
                               "        true,\n"
                               "        {\n"
                               "            \"c\": \"#12abef\"\n"
                               "        }\n"
                               "    ],\n"
                               "    \"none\": [],\n"
                               "    \"empty\": {}\n"
                               "}\n"));
}

// Every kind of fault the document reader names, and documents it accepts that strict JSON
// would not: both readers must agree on acceptance and on the error text.
TEST(JsonPullParser, AcceptsAndRefusesLikeTheDocumentReaderWithTheSameErrorTexts)
{
    const QList<QByteArray> cases = {
        "", "   ", "3", "\"s\"", "nul", "{", "[", "{\"a\"", "{\"a\":", "{\"a\" 1}", "{\"a\":1,}",
        "[1,]", "[1 2]", "[1 2", "{\"a\":1 \"b\":2}", "{a:1}", "{\"a\":,}", "[,1]", "[}", "{]",
        "[nul]", "[null]", "[nulx]", "[tru]", "[true]", "[false]", "[fals]", "[truex]",
        "[\"abc", "[\"abc\"", "[\"abc\"]", "[\"\\x\"]", "[\"\\u12G4\"]", "[\"\\u12", "[\"\\",
        "[\"a\\", "[\"a\\\"", "[\"\\n\\", "[\"\\u\"]", "[\"\\u00e9",
        "[\"\xff\"]", "[\"\xc0\xaf\"]", "[\"\xed\xa0\x80\"]", "[\"\xe2\x82\"]", "[\"\xf4\x90\x80\x80\"]",
        "[\"\xf0\x9f\x98\x80\"]", "[\"\xef\xbf\xbe\"]", "[\"tab\there\"]",
        "[\"\\\xc3\"]", "[\"\\\xc3\xa9\"]",
        "[1.5e]", "[-]", "[.5]", "[01]", "[1.]", "[1e5]", "[-0]", "[1e400]", "[1e-400]",
        "[12345678901234567890]", "[1", "[1.", "[x]", "[+1]", "[0x10]",
        "{} x", "[1]]", "{}\n\t ", "\xef\xbb\xbf{}", "\xef\xbb\xbf", "{\"a\":1}\0",
        "{\"a\":[{\"b\":{}}],\"c\":null}", "{\"\":1}", "{\"a\"::1}", "[1,,2]", "{,}",
    };
    for (const QByteArray &text : cases) {
        JsonTree tree;
        const Parsed mine = parseWhole(text, &tree);
        const Parsed theirs = parseWithDocument(text);
        EXPECT_EQ(mine.ok, theirs.ok) << text.toPercentEncoding().constData();
        EXPECT_EQ(mine.error.toStdString(), theirs.error.toStdString()) << text.toPercentEncoding().constData();
    }
}

TEST(JsonPullParser, NestingIsBoundedAtTheDocumentReadersDepthWithoutRecursingFurther)
{
    for (int depth : {1024, 1025, 200000}) {
        const QByteArray text = QByteArray(depth, '[') + QByteArray(depth, ']');
        JsonTree tree;
        const Parsed mine = parseWhole(text, &tree);
        const Parsed theirs = parseWithDocument(text);
        EXPECT_EQ(mine.ok, theirs.ok) << depth;
        EXPECT_EQ(mine.error.toStdString(), theirs.error.toStdString()) << depth;
    }
    const QByteArray objects = QByteArray(5000, '{').replace("{", "{\"a\":") + "1" + QByteArray(5000, '}');
    JsonTree tree;
    EXPECT_EQ(parseWhole(objects, &tree).error, QStringLiteral("too deeply nested document"));
}

TEST(JsonPullParser, ScalarsReadLikeTheDocumentReadersValues)
{
    const QByteArray text = "[0.1, -0, -0.0, 1.0, 12345678901234567890, 9007199254740993, 5e-324, 1E2, "
                            "true, false, null, \"\\u00e9\\/\\b\", \"\\ud83d\\ude00\", \"\\ud800\", "
                            "\"\xed\x95\x9c\", {}, []]";
    const QJsonArray reference = QJsonDocument::fromJson(text).array();
    ASSERT_EQ(reference.size(), 17);
    JsonTree tree;
    ASSERT_TRUE(parseWhole(text, &tree).ok);
    int i = 0;
    for (const JsonValueRef &value : JsonValueRef(&tree, 0).toArray()) {
        const QJsonValue expected = reference[i];
        EXPECT_EQ(value.isDouble(), expected.isDouble()) << i;
        EXPECT_EQ(value.isBool(), expected.isBool()) << i;
        EXPECT_EQ(value.isNull(), expected.isNull()) << i;
        EXPECT_EQ(value.isString(), expected.isString()) << i;
        EXPECT_EQ(value.isObject(), expected.isObject()) << i;
        EXPECT_EQ(value.isArray(), expected.isArray()) << i;
        EXPECT_EQ(value.toBool(), expected.toBool()) << i;
        EXPECT_EQ(value.toString(), expected.toString()) << i;
        const double a = value.toDouble();
        const double b = expected.toDouble();
        EXPECT_TRUE(a == b && std::signbit(a) == std::signbit(b)) << i << ' ' << a << ' ' << b;
        ++i;
    }
    EXPECT_EQ(i, 17);
}

TEST(JsonPullParser, RepeatedAndEscapedKeysFindTheValueTheDocumentReaderKeeps)
{
    const QByteArray text = "{\"a\": 1, \"b\": 2, \"a\": 3, \"n\\u0061me\": \"x\", \"name\": \"y\", \"\\\"q\": 4, "
                            "\"k\xc3\xa9y\": 5}";
    const QJsonObject reference = QJsonDocument::fromJson(text).object();
    JsonTree tree;
    ASSERT_TRUE(parseWhole(text, &tree).ok);
    const JsonObjectRef o = JsonValueRef(&tree, 0).toObject();
    for (const QString &key : {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("name"),
                               QStringLiteral("\"q"), QString::fromUtf8("k\xc3\xa9y"), QStringLiteral("missing")}) {
        EXPECT_EQ(o.value(key).isUndefined(), reference.value(key).isUndefined()) << key.toStdString();
        EXPECT_EQ(o.value(key).toDouble(), reference.value(key).toDouble()) << key.toStdString();
        EXPECT_EQ(o.value(key).toString(), reference.value(key).toString()) << key.toStdString();
    }
    EXPECT_EQ(o.value(QLatin1String("a")).toDouble(), 3.0);
}

// The tolerant readers over parsed values and over QJsonValue share their rules; this holds
// the values the parsed tree hands them to the same answers.
TEST(JsonPullParser, TolerantReadersGiveTheSameAnswersForTreeAndDocumentValues)
{
    const QByteArray text = "[true, \"true\", \" TRUE \", \"1\", \"yes\", 0.4, 1.7, -3, 2147483648, \"12\", "
                            "\" 12 \", \"1e3\", \"inf\", \"nan\", \"#AbC123\", \" #abc \", \"red\", \"#12345\", "
                            "\"#ff102030\", null, [], {}, \"\", 1e308]";
    const QJsonArray reference = QJsonDocument::fromJson(text).array();
    JsonTree tree;
    ASSERT_TRUE(parseWhole(text, &tree).ok);
    const QColor fallback(1, 2, 3);
    int i = 0;
    for (const JsonValueRef &value : JsonValueRef(&tree, 0).toArray()) {
        const QJsonValue expected = reference[i];
        EXPECT_EQ(toBool(value, true), toBool(expected, true)) << i;
        EXPECT_EQ(toBool(value, false), toBool(expected, false)) << i;
        EXPECT_EQ(toInt(value, -7), toInt(expected, -7)) << i;
        EXPECT_EQ(toDouble(value, -7.5), toDouble(expected, -7.5)) << i;
        EXPECT_EQ(toString(value, QStringLiteral("fb")), toString(expected, QStringLiteral("fb"))) << i;
        EXPECT_EQ(toColor(value, fallback), toColor(expected, fallback)) << i;
        ++i;
    }
    EXPECT_EQ(i, reference.size());
}
