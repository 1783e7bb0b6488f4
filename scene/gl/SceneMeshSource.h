#pragma once

#include "scene/SceneMesh.h"

#include <memory>

struct GuideObject;

// The CPU mesh the renderer uploads for an object: the imported geometry when there is
// one, otherwise the shape built from the object's fields.
std::shared_ptr<const SceneMesh> sceneMeshForObject(const GuideObject &object);
