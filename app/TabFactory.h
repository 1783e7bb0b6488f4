#pragma once

#include <QString>

class QWidget;

// Tab kinds as the window and project files name them.
inline constexpr const char *kGuideTabKind = "guide";
inline constexpr const char *kCanvasTabKind = "canvas";
inline constexpr const char *kThreeDViewTabKind = "3dView";

// Dynamic property on every content widget holding its kind.
inline constexpr const char *kTabKindProperty = "vantreoTabKind";

// The kind of a content widget ("guide", "canvas", "3dView"), empty for others.
QString tabKindOf(const QWidget *content);

// The label a user sees for a kind: "Guide", "Canvas", "3D View".
QString tabKindLabel(const QString &kind);

// Content widgets of the three tab kinds; the window gives them their tab, title and
// properties. Each area replaces its own function as its tab class arrives.
QWidget *createGuideTabContent(QWidget *parent);
QWidget *createCanvasTabContent(QWidget *parent);
QWidget *createThreeDViewTabContent(QWidget *parent);

// A new content widget of the same kind holding a copy of the content's settings
// ("Copy" on a tab); nullptr for a widget that is not a tab's content.
QWidget *duplicateTabContent(QWidget *content, QWidget *parent);
