#pragma once

#include "canvas/CanvasGeometry.h"

#include <QPointF>
#include <QVector>

// Transform tools. `transform_mode` stores the first four (0..3); cropping is a transient
// tool that C toggles and that is not saved.
enum class CanvasTool { Translate = 0, Rotate = 1, Scale = 2, Resize = 3, Crop = 4 };
CanvasTool canvasToolFromMode(int transformMode);

// Handles of a selected object, clockwise from the top-left corner.
enum class CanvasHandle { None, Body, TopLeft, Top, TopRight, Right, BottomRight, Bottom, BottomLeft, Left };

// Canvas positions of the eight handles (corners and edge middles of the drawn part).
QVector<QPointF> canvasHandlePositions(const CanvasObjectSettings &object, const CanvasSources &sources);
// The handle within `tolerance` canvas pixels of the point, else Body when the point is on the
// object, else None.
CanvasHandle canvasHandleAt(const CanvasObjectSettings &object, const CanvasSources &sources, const QPointF &point,
                            double tolerance);

// Grid of snapped moves and sizes (canvas pixels), rotation step (degrees), scale and crop steps.
inline constexpr double kCanvasSnapStep = 10.0;
inline constexpr double kCanvasRotationSnap = 15.0;
inline constexpr double kCanvasScaleSnap = 0.05;
inline constexpr double kCanvasCropSnap = 0.05;

// The object after dragging `handle` with `tool` from canvas point `from` to `to`, starting from
// `start`. Dragging the body moves the object with every tool but Rotate, which turns it about
// its centre. Scale acts about the centre; Resize keeps the opposite side in place; Crop moves
// one edge of the crop and leaves the content where it stands.
CanvasObjectSettings applyCanvasDrag(const CanvasObjectSettings &start, const CanvasSources &sources, CanvasTool tool,
                                     CanvasHandle handle, const QPointF &from, const QPointF &to, bool snap);

// Raises (direction > 0) or lowers (< 0) the selected objects by one place each; returns the
// selection's new indices.
QVector<int> moveCanvasObjects(CanvasTabSettings *canvas, const QVector<int> &selection, int direction);

// "Scale X %1 Y %2  Position X %3 Y %4" for an object.
QString canvasTransformStatus(const CanvasObjectSettings &object);
