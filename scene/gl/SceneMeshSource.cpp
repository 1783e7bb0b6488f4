#include "scene/gl/SceneMeshSource.h"

#include "scene/GuideObject.h"
#include "scene/MeshBuilders.h"

std::shared_ptr<const SceneMesh> sceneMeshForObject(const GuideObject &object)
{
    return std::make_shared<const SceneMesh>(vg::scene::buildObjectMesh(object));
}
