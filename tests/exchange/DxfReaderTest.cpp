// DXF reading against drawings written by ezdxf (tests/data/mesh/make_dxf_fixtures.py)
// and hand-written hostile files.
#include "exchange/DxfReader.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <cmath>

using namespace vg::exchange;

namespace {

const QString kData = QStringLiteral(VG_TEST_DATA_DIR "/mesh/");

struct Box {
    double lo[3] = {1e300, 1e300, 1e300}, hi[3] = {-1e300, -1e300, -1e300};
};

Box boundsOf(const DxfDrawing &d)
{
    Box b;
    for (const DxfPoint &p : d.segments) {
        const double c[3] = {p.x, p.y, p.z};
        for (int i = 0; i < 3; ++i)
            b.lo[i] = std::min(b.lo[i], c[i]), b.hi[i] = std::max(b.hi[i], c[i]);
    }
    return b;
}

DxfDrawing readFixture(const QString &name)
{
    DxfDrawing d;
    QString error;
    EXPECT_TRUE(readDxfFile(kData + name, &d, &error)) << name.toStdString() << ": " << error.toStdString();
    return d;
}

QString readError(const QByteArray &text)
{
    DxfDrawing d;
    QString error;
    EXPECT_FALSE(readDxfData(text, &d, &error));
    return error;
}

// Builds an ENTITIES section from "code\nvalue" pairs.
QByteArray entities(const QByteArray &body)
{
    return "0\nSECTION\n2\nENTITIES\n" + body + "0\nENDSEC\n0\nEOF\n";
}

} // namespace

TEST(DxfReader, EveryEntityKindOfAnEzdxfPlanInMetres)
{
    const DxfDrawing d = readFixture(QStringLiteral("plan_r2018.dxf"));
    EXPECT_EQ(d.insUnits, 6);
    EXPECT_TRUE(d.unitKnown);
    EXPECT_EQ(d.entityCount, 7); // LINE, 2 LWPOLYLINE, 2 POLYLINE, CIRCLE, ARC
    EXPECT_EQ(d.skippedEntities, 1); // TEXT
    // The block's line at (1000, 1000) m is never inserted and must not widen the plan.
    const Box b = boundsOf(d);
    EXPECT_DOUBLE_EQ(b.lo[0], 0.0);
    EXPECT_DOUBLE_EQ(b.hi[0], 10000.0);
    EXPECT_DOUBLE_EQ(b.lo[1], 0.0);
    EXPECT_DOUBLE_EQ(b.hi[1], 6000.0);
    EXPECT_NEAR(b.hi[2], 1000.0, 1e-9); // the 3D polyline rises to z = 1 m
    // Closed outline 4 + open 2 + closed 2D triangle 3 + 3D polyline 2 + line 1
    // + circle 72 + 20 degree arc 4.
    EXPECT_EQ(d.segments.size() / 2, size_t(4 + 2 + 3 + 2 + 1 + kDxfCircleSegments + 4));
}

TEST(DxfReader, ArcAcrossZeroDegreesTakesTheShortWay)
{
    const DxfDrawing d = readFixture(QStringLiteral("plan_r2018.dxf"));
    int arcPoints = 0;
    for (const DxfPoint &p : d.segments) {
        const double r = std::hypot(p.x - 5000.0, p.y - 3000.0);
        const bool otherEntity = (p.x == 5000.0 && p.y == 1000.0) || (p.x == 3000.0 && p.y == 3000.0);
        if (std::abs(r - 2000.0) > 1e-6 || otherEntity)
            continue;
        ++arcPoints;
        // From 350 to 10 degrees: every point right of the centre, within 10 degrees.
        EXPECT_GE(p.x, 5000.0 + 2000.0 * std::cos(10.0 * M_PI / 180.0) - 1e-6);
        EXPECT_LE(std::abs(p.y - 3000.0), 2000.0 * std::sin(10.0 * M_PI / 180.0) + 1e-6);
    }
    EXPECT_EQ(arcPoints, 8); // 4 segments, both ends listed
}

TEST(DxfReader, R12CodePageAndCrlfFilesReadLikeTheirModernTwin)
{
    const DxfDrawing modern = readFixture(QStringLiteral("plan_r2018.dxf"));
    const DxfDrawing crlf = readFixture(QStringLiteral("plan_crlf.dxf"));
    ASSERT_EQ(crlf.segments.size(), modern.segments.size());
    for (size_t i = 0; i < modern.segments.size(); ++i) {
        EXPECT_EQ(crlf.segments[i].x, modern.segments[i].x);
        EXPECT_EQ(crlf.segments[i].y, modern.segments[i].y);
    }

    // R12 has no $INSUNITS: unitless, one millimetre per unit; its layer name is cp1252.
    const DxfDrawing r12 = readFixture(QStringLiteral("plan_r12.dxf"));
    EXPECT_FALSE(r12.unitKnown);
    EXPECT_EQ(r12.millimetresPerUnit, 1.0);
    EXPECT_EQ(r12.entityCount, 8); // polylines instead of lightweight ones, one more line
    const Box b = boundsOf(r12);
    EXPECT_DOUBLE_EQ(b.hi[0], 10.0);
    EXPECT_DOUBLE_EQ(b.hi[1], 6.0);
}

TEST(DxfReader, EveryInsUnitsCodeScalesALineOfOneUnit)
{
    const double expected[] = {1, 25.4, 304.8, 1609344, 1, 10, 1000, 1000000, 0.0000254, 0.0254, 914.4,
                               0.0000001, 0.000001, 0.001, 100, 10000, 100000, 1e12, 149597870700000.0,
                               9.4607304725808e18, 3.08567758149137e19, 304.8006096012192, 25.4000508001016,
                               914.4018288036576, 1609347.2186944373};
    for (int code = 0; code <= 24; ++code) {
        const DxfDrawing d = readFixture(QStringLiteral("units/%1.dxf").arg(code, 2, 10, QLatin1Char('0')));
        ASSERT_EQ(d.segments.size(), 2u) << code;
        EXPECT_DOUBLE_EQ(d.segments[1].x - d.segments[0].x, expected[code]) << "code " << code;
        EXPECT_EQ(d.unitKnown, code != 0) << code;
    }
    for (int code : {25, 99}) {
        const DxfDrawing d = readFixture(QStringLiteral("units/%1.dxf").arg(code));
        EXPECT_FALSE(d.unitKnown);
        EXPECT_EQ(d.insUnits, code);
        EXPECT_DOUBLE_EQ(d.segments[1].x - d.segments[0].x, 1.0);
    }
}

TEST(DxfReader, MessagesForMissingEmptyAndUnusableFiles)
{
    DxfDrawing d;
    QString error;
    EXPECT_FALSE(readDxfFile(kData + QStringLiteral("nope.dxf"), &d, &error));
    EXPECT_EQ(error, QStringLiteral("DXF file does not exist."));

    const QString none = QStringLiteral("DXF has no supported LINE, POLYLINE, LWPOLYLINE, CIRCLE, or ARC entities.");
    EXPECT_EQ(readError(QByteArray()), none);
    EXPECT_EQ(readError("0\nSECTION\n2\nHEADER\n9\n$INSUNITS\n70\n6\n0\nENDSEC\n0\nEOF\n"), none);
    EXPECT_EQ(readError(entities("0\nTEXT\n10\n1\n20\n1\n1\nHELLO\n")), none);
    // Supported entities that yield nothing of length: a point-like line, a zero circle.
    EXPECT_EQ(readError(entities("0\nLINE\n10\n1\n20\n1\n11\n1\n21\n1\n0\nCIRCLE\n10\n0\n20\n0\n40\n0\n")),
              QStringLiteral("DXF produced no renderable line geometry."));
    EXPECT_TRUE(readError(QByteArray("AutoCAD Binary DXF\r\n\x1a\0", 22) + QByteArray(200, '\x01')).contains("binary"));
}

TEST(DxfReader, HostileValuesAreDroppedNotTrusted)
{
    DxfDrawing d;
    QString error;
    // A 2 GB declared vertex count with two vertices; NaN and 1e300 coordinates; blanks
    // before the group codes; a polyline that never sees its SEQEND; CR-only line ends.
    const QByteArray text = entities("  0\nLWPOLYLINE\n 90\n2000000000\n 70\n0\n 10\n0\n 20\n0\n 10\n3\n 20\n4\n"
                                     "0\nLINE\n10\nnan\n20\n0\n11\n1\n21\n1\n"
                                     "0\nLINE\n10\n1e300\n20\n0\n11\n1\n21\n1\n"
                                     "0\nPOLYLINE\n70\n1\n0\nVERTEX\n10\n10\n20\n0\n0\nVERTEX\n10\n10\n20\n5\n")
                                .replace('\n', '\r');
    ASSERT_TRUE(readDxfData(text, &d, &error)) << error.toStdString();
    EXPECT_EQ(d.entityCount, 4);
    ASSERT_EQ(d.segments.size(), 4u); // the polyline of 2 and the 2-vertex polyline
    EXPECT_DOUBLE_EQ(std::hypot(d.segments[1].x - d.segments[0].x, d.segments[1].y - d.segments[0].y), 5.0);
    for (const DxfPoint &p : d.segments)
        EXPECT_TRUE(std::isfinite(p.x) && std::abs(p.x) < 1e6);

    // A group code that is not a number puts the pairs out of step: reading stops there.
    ASSERT_TRUE(readDxfData(entities("0\nLINE\n10\n0\n20\n0\n11\n1\n21\n0\nXX\nLINE\n0\nLINE\n10\n5\n11\n9\n"), &d, &error));
    EXPECT_EQ(d.segments.size(), 2u);
}

TEST(DxfReader, FlippedExtrusionMirrorsPlanarEntities)
{
    // A circle drawn from below (extrusion 0,0,-1): its OCS x runs along world -x.
    DxfDrawing d;
    QString error;
    ASSERT_TRUE(readDxfData("0\nSECTION\n2\nENTITIES\n0\nCIRCLE\n10\n5\n20\n2\n30\n0\n40\n1\n210\n0\n220\n0\n230\n-1\n0\nENDSEC\n",
                            &d, &error));
    const Box b = boundsOf(d);
    EXPECT_NEAR((b.lo[0] + b.hi[0]) / 2.0, -5.0, 1e-9);
    EXPECT_NEAR((b.lo[1] + b.hi[1]) / 2.0, 2.0, 1e-9);
}
