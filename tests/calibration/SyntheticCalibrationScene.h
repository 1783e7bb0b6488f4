#pragma once

#include "calibration/CalibrationSolver.h"
#include "scene/GuideObject.h"
#include "scene/LensModel.h"
#include "scene/Transform.h"

#include <Eigen/Geometry>

#include <QVector>

#include <cmath>
#include <random>

// A projector with a known lens and pose, and matched points on a few surfaces in front of
// it. Points are made through the scene's lens model (pixel → ray → surface), so the solver
// is checked against the very relations the renderer uses.
struct SyntheticCalibrationScene {
    GuideObject truth;                       // the projector the points come from
    QVector<GuideMatchedPoint> points;       // as the window hands them over (single precision)
    QVector<CalibrationObservation> exact;   // the same matches in double precision
    Eigen::Matrix3d rotation = Eigen::Matrix3d::Identity();
    Eigen::Vector3d position = Eigen::Vector3d::Zero();
};

struct SyntheticSceneOptions {
    int pointCount = 50;
    int surfaceCount = 3;                    // 1 gives coplanar points
    double noisePixels = 0.0;                // standard deviation per axis
    double minThrow = 0.3, maxThrow = 3.0;
    double maxShift = 60.0;                  // percent, both axes
};

inline Eigen::Matrix3d lookRotation(const Eigen::Vector3d &forward, double rollDegrees)
{
    // Lens frame: -Z is the viewing direction, +Y up.
    const Eigen::Vector3d back = -forward.normalized();
    Eigen::Vector3d up = Eigen::Vector3d::UnitY();
    if (std::abs(up.dot(back)) > 0.95)
        up = Eigen::Vector3d::UnitX();
    const Eigen::Vector3d right = up.cross(back).normalized();
    up = back.cross(right);
    Eigen::Matrix3d r;
    r.col(0) = right;
    r.col(1) = up;
    r.col(2) = back;
    return r * Eigen::AngleAxisd(rollDegrees * M_PI / 180.0, Eigen::Vector3d::UnitZ()).toRotationMatrix();
}

inline GuideMatchedPoint toMatchedPoint(const Eigen::Vector3d &world, double u, double v)
{
    return {float(world.x()), float(world.y()), float(world.z()), float(u), float(v)};
}

inline SyntheticCalibrationScene makeSyntheticScene(std::mt19937 &rng, const SyntheticSceneOptions &options)
{
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    auto uniform = [&](double lo, double hi) { return lo + (hi - lo) * unit(rng); };
    static const int resolutions[][2] = {{1920, 1200}, {1920, 1080}, {3840, 2160}, {1280, 800}, {1400, 1050}};
    const auto &res = resolutions[std::uniform_int_distribution<int>(0, 4)(rng)];

    SyntheticCalibrationScene scene;
    GuideObject &p = scene.truth;
    p.guide_index = KindProjector;
    p.name = QStringLiteral("Projector");
    p.projector_resolution_width = res[0];
    p.projector_resolution_height = res[1];
    p.throw_rate = float(uniform(options.minThrow, options.maxThrow));
    p.lens_shift_x = float(uniform(-options.maxShift, options.maxShift));
    p.lens_shift_y = float(uniform(-options.maxShift, options.maxShift));

    const Eigen::Vector3d position(uniform(-5, 5), uniform(0.5, 6), uniform(-5, 5));
    const Eigen::Vector3d forward = Eigen::Vector3d(uniform(-1, 1), uniform(-0.6, 0.4), uniform(-1, 1)).normalized();
    const Eigen::Matrix3d rotation = lookRotation(forward, uniform(-30, 30));
    // Store the pose as the record keeps it (floats), then use exactly that pose.
    const Eigen::Vector3d angles = vg::scene::matrixToEulerDegrees(rotation);
    p.translate_x = float(position.x());
    p.translate_y = float(position.y());
    p.translate_z = float(position.z());
    p.rotate_x = float(angles.x());
    p.rotate_y = float(angles.y());
    p.rotate_z = float(angles.z());
    scene.position = vg::scene::objectTranslation(p);
    scene.rotation = vg::scene::objectRotation(p);

    const vg::scene::LensIntrinsics lens = vg::scene::lensIntrinsicsOf(p);
    const vg::scene::LensPose pose = vg::scene::lensPoseOf(p);

    // Surfaces: planes at different depths, tilted against the viewing direction.
    struct Plane { Eigen::Vector3d point, normal; };
    std::vector<Plane> planes;
    for (int i = 0; i < options.surfaceCount; ++i) {
        const vg::scene::LensRay ray = vg::scene::lensRay(lens, pose, uniform(0.2, 0.8), uniform(0.2, 0.8), 1.0);
        const Eigen::Vector3d through = ray.origin + ray.direction * uniform(2.0, 10.0);
        const Eigen::Vector3d tilt = Eigen::Vector3d(uniform(-1, 1), uniform(-1, 1), uniform(-1, 1)) * 0.5;
        planes.push_back({through, (-ray.direction + tilt).normalized()});
    }

    std::normal_distribution<double> noise(0.0, options.noisePixels > 0 ? options.noisePixels : 1.0);
    const int w = p.projector_resolution_width;
    const int h = p.projector_resolution_height;
    int guard = 0;
    while (scene.points.size() < options.pointCount && guard++ < options.pointCount * 100) {
        const Plane &plane = planes[size_t(guard) % planes.size()];
        const vg::scene::LensRay ray = vg::scene::lensRay(lens, pose, unit(rng), unit(rng), 1.0);
        const double denom = ray.direction.dot(plane.normal);
        if (std::abs(denom) < 0.2)
            continue;
        const double t = (plane.point - ray.origin).dot(plane.normal) / denom;
        if (!(t > 0.5 && t < 40.0))
            continue;
        const Eigen::Vector3d world = ray.origin + t * ray.direction;
        const vg::scene::LensProjection proj = vg::scene::projectWorldPoint(lens, pose, world);
        double u = proj.u * w;
        double v = proj.v * h;
        if (options.noisePixels > 0) {
            u += noise(rng);
            v += noise(rng);
        }
        scene.exact.append({world.x(), world.y(), world.z(), u, v});
        scene.points.append(toMatchedPoint(world, u, v));
    }
    return scene;
}

// A copy of the truth moved away from it, as a user's rough placement would be.
inline GuideObject perturbedProjector(const GuideObject &truth, std::mt19937 &rng, double metres, double degrees)
{
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    GuideObject p = truth;
    p.translate_x += float(metres * unit(rng));
    p.translate_y += float(metres * unit(rng));
    p.translate_z += float(metres * unit(rng));
    p.rotate_x += float(degrees * unit(rng));
    p.rotate_y += float(degrees * unit(rng));
    p.rotate_z += float(degrees * unit(rng));
    return p;
}

// Angle between two rotations, radians.
inline double rotationDistance(const Eigen::Matrix3d &a, const Eigen::Matrix3d &b)
{
    return Eigen::AngleAxisd(a * b.transpose()).angle();
}
