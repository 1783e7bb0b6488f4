#include "scene/GuideObject.h"

#include "scene/SceneMesh.h"

#include <cmath>

CurvedShape curvedShapeOf(const GuideObject &object)
{
    const bool sphereBlock = object.sphere_u_end > object.sphere_u_start
        && object.sphere_v_end > object.sphere_v_start;
    if (!sphereBlock)
        return CurvedShape::Horseshoe;
    return object.sphere_v_end <= 90.0f ? CurvedShape::Dome : CurvedShape::Sphere;
}

QVector<GuideMatchedPoint> enabledMatchedPoints(const GuideProjectorCalibration &calibration)
{
    QVector<GuideMatchedPoint> points;
    points.reserve(calibration.matches.size());
    for (const GuideProjectorCalibrationMatch &m : calibration.matches) {
        if (!m.enabled)
            continue;
        points.append({float(m.world_x), float(m.world_y), float(m.world_z), float(m.image_x), float(m.image_y)});
    }
    return points;
}
