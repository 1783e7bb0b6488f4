#pragma once

#include "scene/LensModel.h"

#include <Eigen/Geometry>

namespace vg::exchange {

// The one film-back convention of the scene exports (FBX, USD, Maya): a pinhole camera
// that reproduces a projector's or camera's frustum, derived from the lens model's focal
// length and principal point in pixels.
//
// The film is 36 mm wide, so one image pixel is 36 / width mm on it: focal length =
// throw ratio × 36 mm, apertures 36 mm × 36 / aspect mm, and the film offset is the image
// centre's distance from the lens axis on the film (+x right, +y up in the camera frame),
// which is the lens shift times the aperture.
//
// The camera looks along its -Z with +Y up, like the lens frame. When the lens flips both
// axes (rotate 180, or flip H with flip V) the camera is turned half a turn about its axis,
// so that the top-left of its picture is the top-left of the projector's image. One flip
// alone is a mirror no camera can take: the camera then covers the same frustum and its
// picture is the mirror image of what the projector is fed (`mirrored`).
struct FilmBack {
    static constexpr double kFilmWidthMm = 36.0;
    static constexpr double kMillimetresPerInch = 25.4;

    double focalLengthMm = 36.0;
    double apertureWidthMm = kFilmWidthMm;
    double apertureHeightMm = kFilmWidthMm;
    double offsetXMm = 0.0;
    double offsetYMm = 0.0;
    bool roll180 = false;
    bool mirrored = false;
    Eigen::Vector3d position = Eigen::Vector3d::Zero();      // lens point, metres
    Eigen::Matrix3d rotation = Eigen::Matrix3d::Identity();  // camera axes in world (columns)
    double nearClip = 0.01;      // metres
    double farClip = 8.0;        // metres: the throw distance
    double horizontalFovDegrees = 0.0;   // full angles of the aperture
    double verticalFovDegrees = 0.0;

    double apertureWidthInches() const { return apertureWidthMm / kMillimetresPerInch; }
    double apertureHeightInches() const { return apertureHeightMm / kMillimetresPerInch; }
    double offsetXInches() const { return offsetXMm / kMillimetresPerInch; }
    double offsetYInches() const { return offsetYMm / kMillimetresPerInch; }
    // Euler angles (X, then Y, then Z about fixed axes, degrees) of `rotation`.
    Eigen::Vector3d rotationDegrees() const;
};

FilmBack filmBackOf(const vg::scene::LensModel &lens);

} // namespace vg::exchange
