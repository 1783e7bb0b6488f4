#pragma once

#include <QMatrix4x4>
#include <QVector4D>

// The uniform blocks of the scene shaders, laid out as std140 with row-major matrices so
// that their members match the shader declarations one for one.
struct alignas(16) SceneGpuMatrix {
    float m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    static SceneGpuMatrix fromMatrix(const QMatrix4x4 &matrix)
    {
        SceneGpuMatrix out;
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column)
                out.m[row * 4 + column] = matrix(row, column);
        return out;
    }
};

struct alignas(16) SceneGpuVector {
    float x = 0, y = 0, z = 0, w = 0;
    SceneGpuVector() = default;
    SceneGpuVector(float ax, float ay, float az, float aw) : x(ax), y(ay), z(az), w(aw) {}
};

// Binding 0: every geometry, line and label draw.
struct SceneConstants {
    SceneGpuMatrix mvp;
    // x = opacity; for lines y = viewport width, z = viewport height, w = line width (pixels)
    SceneGpuVector opacityData;
};
static_assert(sizeof(SceneConstants) == 80);

// Binding 1: shared by the projection, footprint metric and heat map passes.
struct ProjectionConstants {
    SceneGpuMatrix mvp;
    SceneGpuMatrix targetWorld;
    SceneGpuMatrix shadowMvp;
    SceneGpuMatrix projectorInverseWorld;
    SceneGpuMatrix projectorWorld;
    SceneGpuVector projectorData0;     // w = throw ratio
    SceneGpuVector projectorData1;     // y = aspect, z = shift X, w = shift Y (fractions)
    SceneGpuVector projectorData2;     // x = throw distance, z/w = lens point x/y
    SceneGpuVector projectorData3;     // x = lens point z, y = opacity, z = flip H, w = flip V
    SceneGpuVector projectorData4;     // x = rotate 180, y = resolution width, z = height
    SceneGpuVector shadowData;         // x = world bias, y = shadows on, z = map size, w = filter radius
    SceneGpuVector footprintData;      // x = heat map, y = grid, z = grid step, w = metric
    SceneGpuVector footprintRangeData; // x = min, y = max, z = heat map opacity
    SceneGpuVector lensData;           // u = x·x/d + y, v = z·y/d + w (lens frame, flips in)
    SceneGpuVector sliceData;          // the part of the source shown: x, y offset, z, w size
};
static_assert(sizeof(ProjectionConstants) == 5 * 64 + 10 * 16);

enum SceneUniformBinding { SceneConstantsBinding = 0, ProjectionConstantsBinding = 1 };
