#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

// Reads the line geometry of an ASCII DXF drawing: LINE, POLYLINE/VERTEX/SEQEND,
// LWPOLYLINE, CIRCLE and ARC of the ENTITIES section, in millimetres by $INSUNITS.
namespace vg::exchange {

struct DxfPoint {
    double x = 0.0, y = 0.0, z = 0.0;
};

struct DxfDrawing {
    std::vector<DxfPoint> segments;    // pairs of end points, millimetres, drawing axes
    int insUnits = 0;                  // $INSUNITS as read (0 when absent)
    double millimetresPerUnit = 1.0;
    bool unitKnown = false;
    int entityCount = 0;               // supported entities read
    int skippedEntities = 0;           // other entities of the ENTITIES section
};

// Millimetres per drawing unit for a $INSUNITS code; 0 for an unknown code.
double dxfMillimetresPerUnit(int insUnitsCode);

// Segments each circle is cut into; arcs get their share of it.
constexpr int kDxfCircleSegments = 72;

// False with "DXF has no supported LINE, POLYLINE, LWPOLYLINE, CIRCLE, or ARC entities."
// or "DXF produced no renderable line geometry."; segments of zero length or with a
// coordinate that is not finite are dropped.
bool readDxfData(const QByteArray &data, DxfDrawing *drawing, QString *error);

// As readDxfData, after "DXF file does not exist." and read errors.
bool readDxfFile(const QString &path, DxfDrawing *drawing, QString *error);

} // namespace vg::exchange
