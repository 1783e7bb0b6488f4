#pragma once

#include "scene/SceneMesh.h"

#include <Eigen/Geometry>
#include <QVector>

#include <vector>

struct GuideObject;

// The pixel footprint of a projector sampled on the CPU: the surface each sampled pixel's
// ray reaches first and the metric there. The footprint labels and the automatic heat-map
// range use it; it evaluates exactly LensModel::footprintAt().
namespace vg::scene {

struct FootprintGridSample {
    double px = 0.0, py = 0.0;    // projector pixel position of the sample
    bool valid = false;           // a surface was reached inside the projection
    int objectIndex = -1;
    Eigen::Vector3d point = Eigen::Vector3d::Zero();
    double mmPerPixelU = 0.0, mmPerPixelV = 0.0;
    double value = 0.0;           // the projector's chosen metric
};

// Samples at the projection grid's crossings (every `stepPixels`, centred on the image
// centre, step at least 1); when that gives more than maxPerAxis samples along an axis the
// step is widened by whole multiples. `meshes` are buildSceneMeshes(objects).
std::vector<FootprintGridSample> sampleFootprintGrid(const QVector<GuideObject> &objects,
                                                     const std::vector<SceneMesh> &meshes, int projectorIndex,
                                                     int stepPixels, int maxPerAxis = 48);

struct FootprintRange {
    bool valid = false;
    double minimum = 0.0;
    double maximum = 0.0;
};
// Range of the valid samples' values above 0.0001.
FootprintRange footprintRange(const std::vector<FootprintGridSample> &samples);

} // namespace vg::scene
