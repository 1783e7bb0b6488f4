#pragma once

#include <QByteArray>

// GLSL 330 source text of every scene pass, compiled when a view starts. The projection,
// footprint and heat map passes share one set of lens functions (the projection test of
// the lens model), so the shaders and the CPU model evaluate the same formulas.
namespace SceneShaderSources {

QByteArray colorVertex();
QByteArray colorFragment();
QByteArray texturedVertex();
QByteArray texturedFragment();          // REPLACE_ALPHA: alpha = opacity; PROJECTOR_TEXTURE_NV12: two planes
QByteArray lineVertex();
QByteArray lineGeometry();
QByteArray lineFragment();
QByteArray depthOnlyVertex();           // shadow maps and selection masks
QByteArray maskFragment();
QByteArray projectionVertex();
QByteArray projectionFragment();        // PROJECTOR_TEXTURE_NV12 for the two-plane variant
QByteArray fullScreenVertex();
QByteArray compositeFragment();
QByteArray shadowRangeFragment();      // FROM_DEPTH: the first level, from the depth map
QByteArray footprintMetricVertex();
QByteArray footprintMetricFragment();
QByteArray heatmapFragment();
QByteArray outlineFragment();

// Puts "#define <name> 1" lines after the version line.
QByteArray withDefines(const QByteArray &source, const QList<QByteArray> &defines);

} // namespace SceneShaderSources
