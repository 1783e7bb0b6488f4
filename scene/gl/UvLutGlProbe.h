#pragma once

#include "exchange/UvLut.h"
#include "scene/gl/OffscreenGlContext.h"

#include <memory>

// The UV LUT's GPU probe: the scene's triangles drawn from the output projector into a
// float RGBA target (source u, v, depth, valid) with a 32-bit float depth buffer, at 1, 2
// or 4 samples; with more than one sample a resolve pass reads every sample and turns the
// valid samples into coverage.
//
// It renders in an off-screen context of its own and restores whatever context was current.
class UvLutGlProbe : public vg::exchange::UvLutGpuProbe
{
public:
    UvLutGlProbe();
    ~UvLutGlProbe() override;

    bool probe(const vg::exchange::UvLutProbeInput &input, vg::exchange::UvLutTable *table,
               const vg::exchange::UvLutProgress &progress, QString *error) override;

    // "<renderer> | <version>" of the context used by the last probe.
    QString rendererDescription() const { return m_renderer; }

private:
    struct Gl;
    std::unique_ptr<OffscreenGlContext> m_context;
    QString m_renderer;
};
