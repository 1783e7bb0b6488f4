#include "exchange/FilmBack.h"

#include "scene/Transform.h"

#include <algorithm>
#include <cmath>

namespace vg::exchange {

Eigen::Vector3d FilmBack::rotationDegrees() const
{
    return vg::scene::matrixToEulerDegrees(rotation);
}

FilmBack filmBackOf(const vg::scene::LensModel &model)
{
    const vg::scene::LensIntrinsics &lens = model.intrinsics();
    const double width = std::max(1, lens.width);
    const double height = std::max(1, lens.height);
    const double pitch = FilmBack::kFilmWidthMm / width;   // mm of film per image pixel
    const double focalPixels = vg::scene::lensFocalLengthPixels(lens);
    const Eigen::Vector2d principal = vg::scene::lensPrincipalPointPixels(lens);

    FilmBack film;
    film.focalLengthMm = focalPixels * pitch;
    film.apertureWidthMm = width * pitch;
    film.apertureHeightMm = height * pitch;
    // Pixel rows run down and the film's y up, hence the opposite signs.
    film.offsetXMm = (width / 2.0 - principal.x()) * pitch;
    film.offsetYMm = (principal.y() - height / 2.0) * pitch;
    const bool flipU = lens.flipH != lens.rotate180;
    const bool flipV = lens.flipV != lens.rotate180;
    film.roll180 = flipU && flipV;
    film.mirrored = flipU != flipV;
    film.position = model.pose().position;
    film.rotation = model.pose().rotation;
    if (film.roll180) {
        film.rotation = film.rotation * Eigen::Vector3d(-1.0, -1.0, 1.0).asDiagonal();
        film.offsetXMm = -film.offsetXMm;
        film.offsetYMm = -film.offsetYMm;
    }
    film.farClip = model.throwDistance();
    film.nearClip = std::min(0.01, film.farClip / 10.0);
    film.horizontalFovDegrees = 2.0 * std::atan(film.apertureWidthMm / (2.0 * film.focalLengthMm)) * 180.0 / M_PI;
    film.verticalFovDegrees = 2.0 * std::atan(film.apertureHeightMm / (2.0 * film.focalLengthMm)) * 180.0 / M_PI;
    return film;
}

} // namespace vg::exchange
