#include "scene/gl/SceneShaderSources.h"

#include <QList>

namespace SceneShaderSources {

namespace {

const char *const kVersion = "#version 330 core\n";

const char *const kSceneBlock = R"(
layout(std140, row_major) uniform SceneConstants {
    mat4 mvp;
    vec4 opacityData;
};
)";

const char *const kProjectionBlock = R"(
layout(std140, row_major) uniform ProjectionConstants {
    mat4 mvp;
    mat4 targetWorld;
    mat4 shadowMvp;
    mat4 projectorInverseWorld;
    mat4 projectorWorld;
    vec4 projectorData0;
    vec4 projectorData1;
    vec4 projectorData2;
    vec4 projectorData3;
    vec4 projectorData4;
    vec4 shadowData;
    vec4 footprintData;
    vec4 footprintRangeData;
    vec4 lensData;
    vec4 sliceData;
};
)";

// The lens: the CPU lens model hands over (u, v) as linear in the lens-frame point over its
// depth, u = kx·x/d + cu and v = ky·y/d + cv, flips included (lensData = kx, cu, ky, cv).
const char *const kLensFunctions = R"(
vec3 lensPoint() { return vec3(projectorData2.z, projectorData2.w, projectorData3.x); }
vec3 worldToLens(vec3 world) {
    return (projectorInverseWorld * vec4(world, 1.0)).xyz - lensPoint();
}
// (u, v) times the depth d = -q.z of a lens-frame point: linear in q.
vec2 lensToUvTimesDepth(vec3 q, float d) {
    return vec2(lensData.x * q.x, lensData.z * q.y) + lensData.yw * d;
}
// Unclipped (u, v) of a lens-frame point at depth d > 0.
vec2 lensToUv(vec3 q, float d) {
    return lensToUvTimesDepth(q, d) / d;
}
// The projection test: false when the point does not receive the image.
bool projectWorldPoint(vec3 world, out vec2 uv, out float depth) {
    vec3 q = worldToLens(world);
    depth = -q.z;
    uv = vec2(-1.0);
    if (depth <= 0.0001 || depth > projectorData2.x)
        return false;
    uv = lensToUv(q, depth);
    return uv.x >= 0.0 && uv.x <= 1.0 && uv.y >= 0.0 && uv.y <= 1.0;
}
// The far point of the ray through (u, v), in the lens frame.
vec3 lensRayFarPoint(vec2 uv) {
    float D = projectorData2.x;
    return vec3((uv.x - lensData.y) * D / lensData.x, (uv.y - lensData.w) * D / lensData.z, -D);
}
)";

const char *const kFootprintFunctions = R"(
// Where the ray through (u, v) meets the plane (p0, n), all in the lens frame; a ray parallel
// to the plane or meeting it behind the lens gives p0 itself.
vec3 rayPlaneHit(vec2 uv, vec3 p0, vec3 n) {
    vec3 dir = lensRayFarPoint(uv);
    float denom = dot(n, dir);
    if (abs(denom) <= 0.000001)
        return p0;
    float t = dot(n, p0) / denom;
    if (t < 0.0)
        return p0;
    return dir * t;
}
// Millimetres per projector pixel at a surface point; false when the plane is degenerate.
bool footprintMetricAt(vec3 world, vec2 uv, out float metric) {
    vec3 wn = cross(dFdx(world), dFdy(world));
    metric = 0.0;
    if (dot(wn, wn) <= 1e-24)
        return false;
    vec3 n = normalize(mat3(projectorInverseWorld) * wn);
    vec3 p0 = worldToLens(world);
    vec2 pixel = vec2(1.0 / max(1.0, projectorData4.y), 1.0 / max(1.0, projectorData4.z));
    vec3 centre = rayPlaneHit(uv, p0, n);
    float mmU = length(rayPlaneHit(uv + vec2(pixel.x, 0.0), p0, n) - centre) * 1000.0;
    float mmV = length(rayPlaneHit(uv + vec2(0.0, pixel.y), p0, n) - centre) * 1000.0;
    int which = int(footprintData.w + 0.5);
    if (which == 1) metric = mmU;
    else if (which == 2) metric = mmV;
    else if (which == 3) metric = sqrt(mmU * mmV);
    else metric = max(mmU, mmV);
    return true;
}
vec3 heatColour(float value) {
    float lo = footprintRangeData.x;
    float hi = max(lo + 0.0001, footprintRangeData.y);
    float t = clamp((value - lo) / (hi - lo), 0.0, 1.0);
    vec3 green = vec3(0.05, 0.95, 0.18);
    vec3 yellow = vec3(1.0, 0.88, 0.06);
    vec3 red = vec3(1.0, 0.08, 0.03);
    return t < 0.5 ? mix(green, yellow, 2.0 * t) : mix(yellow, red, 2.0 * (t - 0.5));
}
)";

const char *const kProjectorSampler = R"(
#ifdef PROJECTOR_TEXTURE_NV12
uniform sampler2D projectorLuma;
uniform sampler2D projectorChroma;
vec3 nv12ToRgb(float Y, vec2 UV) {
    float y = max(0.0, (Y - 0.0627451) * 1.164383);
    float cb = UV.x - 0.5;
    float cr = UV.y - 0.5;
    return clamp(vec3(y + 1.792741 * cr, y - 0.213249 * cb - 0.532909 * cr, y + 2.112402 * cb), 0.0, 1.0);
}
vec4 sampleSource(vec2 uv) {
    return vec4(nv12ToRgb(texture(projectorLuma, uv).r, texture(projectorChroma, uv).rg), 1.0);
}
#else
uniform sampler2D projectorTexture;
vec4 sampleSource(vec2 uv) { return texture(projectorTexture, uv); }
#endif
)";

QByteArray join(std::initializer_list<const char *> parts)
{
    QByteArray out;
    for (const char *part : parts)
        out += part;
    return out;
}

} // namespace

QByteArray withDefines(const QByteArray &source, const QList<QByteArray> &defines)
{
    QByteArray header;
    for (const QByteArray &define : defines)
        header += "#define " + define + " 1\n";
    const int lineEnd = source.indexOf('\n');
    return source.left(lineEnd + 1) + header + source.mid(lineEnd + 1);
}

QByteArray colorVertex()
{
    return join({kVersion, kSceneBlock, R"(
layout(location = 0) in vec3 position;
layout(location = 2) in vec4 color;
out vec4 vColor;
invariant gl_Position;
void main() {
    gl_Position = mvp * vec4(position, 1.0);
    vColor = color;
}
)"});
}

QByteArray colorFragment()
{
    return join({kVersion, kSceneBlock, R"(
in vec4 vColor;
out vec4 fragColor;
void main() {
    fragColor = vec4(vColor.rgb, vColor.a * opacityData.x);
}
)"});
}

QByteArray texturedVertex()
{
    return join({kVersion, kSceneBlock, R"(
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texcoord;
out vec2 vTexcoord;
invariant gl_Position;
void main() {
    gl_Position = mvp * vec4(position, 1.0);
    vTexcoord = texcoord;
}
)"});
}

QByteArray texturedFragment()
{
    return join({kVersion, kSceneBlock, R"(
in vec2 vTexcoord;
out vec4 fragColor;
#ifdef PROJECTOR_TEXTURE_NV12
uniform sampler2D surfaceLuma;
uniform sampler2D surfaceChroma;
#else
uniform sampler2D surfaceTexture;
#endif
void main() {
#ifdef PROJECTOR_TEXTURE_NV12
    float Y = texture(surfaceLuma, vTexcoord).r;
    vec2 UV = texture(surfaceChroma, vTexcoord).rg;
    float y = max(0.0, (Y - 0.0627451) * 1.164383);
    float cb = UV.x - 0.5;
    float cr = UV.y - 0.5;
    vec3 rgb = clamp(vec3(y + 1.792741 * cr, y - 0.213249 * cb - 0.532909 * cr, y + 2.112402 * cb), 0.0, 1.0);
    fragColor = vec4(rgb, opacityData.x);
#else
    vec4 c = texture(surfaceTexture, vTexcoord);
#ifdef REPLACE_ALPHA
    fragColor = vec4(c.rgb, opacityData.x);
#else
    fragColor = vec4(c.rgb, c.a * opacityData.x);
#endif
#endif
}
)"});
}

QByteArray lineVertex()
{
    return join({kVersion, kSceneBlock, R"(
layout(location = 0) in vec3 position;
layout(location = 2) in vec4 color;
out vec4 vColor;
void main() {
    gl_Position = mvp * vec4(position, 1.0);
    vColor = color;
}
)"});
}

QByteArray lineGeometry()
{
    return join({kVersion, kSceneBlock, R"(
layout(lines) in;
layout(triangle_strip, max_vertices = 4) out;
in vec4 vColor[];
out vec4 gColor;
float safeW(float w) { return w < 0.0 ? min(w, -0.0001) : max(w, 0.0001); }
void main() {
    vec4 a = gl_in[0].gl_Position;
    vec4 b = gl_in[1].gl_Position;
    if (a.w <= 0.0001 && b.w <= 0.0001)
        return;
    vec2 viewport = max(vec2(1.0), opacityData.yz);
    vec2 sa = a.xy / safeW(a.w) * 0.5 * viewport;
    vec2 sb = b.xy / safeW(b.w) * 0.5 * viewport;
    vec2 d = sb - sa;
    float len = length(d);
    if (len < 0.001)
        return;
    vec2 normal = vec2(-d.y, d.x) / len;
    float halfWidth = max(0.5, opacityData.w * 0.5);
    vec2 offset = normal * halfWidth * (2.0 / viewport);
    gl_Position = vec4(a.xy + offset * a.w, a.zw); gColor = vColor[0]; EmitVertex();
    gl_Position = vec4(a.xy - offset * a.w, a.zw); gColor = vColor[0]; EmitVertex();
    gl_Position = vec4(b.xy + offset * b.w, b.zw); gColor = vColor[1]; EmitVertex();
    gl_Position = vec4(b.xy - offset * b.w, b.zw); gColor = vColor[1]; EmitVertex();
    EndPrimitive();
}
)"});
}

QByteArray lineFragment()
{
    return join({kVersion, kSceneBlock, R"(
in vec4 gColor;
out vec4 fragColor;
void main() {
    fragColor = vec4(gColor.rgb, gColor.a * opacityData.x);
}
)"});
}

QByteArray depthOnlyVertex()
{
    return join({kVersion, kSceneBlock, R"(
layout(location = 0) in vec3 position;
invariant gl_Position;
void main() {
    gl_Position = mvp * vec4(position, 1.0);
}
)"});
}

QByteArray maskFragment()
{
    return join({kVersion, R"(
out vec4 fragColor;
void main() {
    fragColor = vec4(1.0);
}
)"});
}

QByteArray projectionVertex()
{
    return join({kVersion, kProjectionBlock, R"(
layout(location = 0) in vec3 position;
out vec3 vWorld;
invariant gl_Position;
void main() {
    gl_Position = mvp * vec4(position, 1.0);
    vWorld = (targetWorld * vec4(position, 1.0)).xyz;
}
)"});
}

QByteArray projectionFragment()
{
    return join({kVersion, kProjectionBlock, kLensFunctions, kProjectorSampler, R"(
in vec3 vWorld;
layout(location = 0) out vec4 outLight;
layout(location = 1) out vec4 outCoverage;
uniform sampler2D shadowMap;
// Level L holds the least and greatest depth of the map's 2^(L+1)-texel squares.
uniform sampler2D shadowRange;

// 1 or 0 when every tap of the filter would agree (a whole neighbourhood nearer or farther
// than the receiver), else -1: most pixels lie in full light or full shadow, and there the
// range answers with four fetches what the filter answers with twenty-five.
float shadowRangeAnswer(vec2 st, float receiver, float texel, float radius) {
    vec2 lo = st + vec2(-2.0) * texel * radius;
    vec2 hi = st + vec2(2.0) * texel * radius;
    // Every tap's texel lies in this rectangle (one texel wider for rounding).
    ivec2 last = ivec2(shadowData.zz) - 1;
    ivec2 i0 = clamp(ivec2(floor(lo * shadowData.z)) - 1, ivec2(0), last);
    ivec2 i1 = clamp(ivec2(floor(hi * shadowData.z)) + 1, ivec2(0), last);
    int span = max(i1.x - i0.x, i1.y - i0.y) + 1;
    // The level whose squares are at least `span` wide: the rectangle meets two of them at
    // most in each direction (rounded up, which only takes a coarser level).
    int level = max(0, int(ceil(log2(float(span)) + 0.001)) - 1);
    // The range starts at half the map's size and halves down to one texel.
    if (level > int(log2(shadowData.z) + 0.5) - 1)
        return -1.0;
    ivec2 j0 = i0 >> (level + 1);
    ivec2 j1 = i1 >> (level + 1);
    vec2 a = texelFetch(shadowRange, ivec2(j0.x, j0.y), level).rg;
    vec2 b = texelFetch(shadowRange, ivec2(j1.x, j0.y), level).rg;
    vec2 c = texelFetch(shadowRange, ivec2(j0.x, j1.y), level).rg;
    vec2 d = texelFetch(shadowRange, ivec2(j1.x, j1.y), level).rg;
    float nearest = min(min(a.r, b.r), min(c.r, d.r));
    float farthest = max(max(a.g, b.g), max(c.g, d.g));
    // Taps off the map count as shadowed, so full light needs all of them on it.
    if (receiver <= nearest && all(greaterThanEqual(lo, vec2(0.0))) && all(lessThanEqual(hi, vec2(1.0))))
        return 1.0;
    if (receiver > farthest)
        return 0.0;
    return -1.0;
}

float shadowVisibility(vec3 world, float depth) {
    if (shadowData.y < 0.5)
        return 1.0;
    vec4 clip = shadowMvp * vec4(world, 1.0);
    if (clip.w <= 0.0001)
        return 1.0;
    vec3 ndc = clip.xyz / clip.w;
    // GL clip depth -1..1 becomes the 0..1 depth stored in the map.
    float z = ndc.z * 0.5 + 0.5;
    if (ndc.x < -1.0 || ndc.x > 1.0 || ndc.y < -1.0 || ndc.y > 1.0 || z < 0.0 || z > 1.0)
        return 1.0;
    // GL textures start at the bottom row, so map y runs upwards here.
    vec2 st = vec2(ndc.x * 0.5 + 0.5, ndc.y * 0.5 + 0.5);
    float nearPlane = 0.025;
    float farPlane = max(nearPlane + 0.001, projectorData2.x);
    float d = max(depth, 0.0001);
    float bias = clamp(shadowData.x * (nearPlane * farPlane / max(0.0001, farPlane - nearPlane)) / max(0.000001, d * d),
                       0.000001, 0.0002);
    float receiver = z - bias;
    float radius = max(0.5, shadowData.w);
    float texel = 1.0 / max(1.0, shadowData.z);
    float agreed = shadowData.y > 1.5 ? shadowRangeAnswer(st, receiver, texel, radius) : -1.0;
    if (agreed >= 0.0)
        return agreed;
    float lit = 0.0;
    for (int y = -2; y <= 2; ++y) {
        for (int x = -2; x <= 2; ++x) {
            vec2 p = st + vec2(float(x), float(y)) * texel * radius;
            if (p.x < 0.0 || p.x > 1.0 || p.y < 0.0 || p.y > 1.0)
                continue;
            lit += receiver <= textureLod(shadowMap, p, 0.0).r ? 1.0 : 0.0;
        }
    }
    // Skipped samples still count, darkening the map's border on purpose.
    return lit / 25.0;
}

float gridLine(float coordinate) {
    float w = max(0.001, 1.35 * fwidth(coordinate));
    float distanceToLine = abs(fract(coordinate + 0.5) - 0.5);
    return 1.0 - smoothstep(0.0, w, distanceToLine);
}

void main() {
    vec2 uv;
    float depth;
    if (!projectWorldPoint(vWorld, uv, depth))
        discard;
    float visibility = shadowVisibility(vWorld, depth);
    float coverage = smoothstep(0.60, 0.96, visibility);
    if (coverage <= 0.01)
        discard;
    if (coverage >= 0.98)
        coverage = 1.0;
    // A projector of an array shows its own part of the source.
    vec4 texel = sampleSource(sliceData.xy + uv * sliceData.zw);
    vec3 color = texel.rgb * texel.a;
    if (footprintData.y > 0.5) {
        float step = max(1.0, footprintData.z);
        vec2 resolution = max(vec2(1.0), projectorData4.yz);
        vec2 grid = (uv * resolution - resolution * 0.5) / step;
        float line = max(gridLine(grid.x), gridLine(grid.y));
        color = mix(color, vec3(1.0), line * 0.18);
    }
    float opacity = projectorData3.y;
    vec3 source = pow(max(color, vec3(0.0)), vec3(2.2));
    vec3 emitted = source * opacity * coverage;
    float energy = max(source.r, max(source.g, source.b)) * opacity * coverage;
    outLight = vec4(-log(max(vec3(0.0001), 1.0 - emitted)), energy);
    outCoverage = vec4(opacity * coverage, 0.0, 0.0, opacity * coverage);
}
)"});
}

QByteArray fullScreenVertex()
{
    return join({kVersion, R"(
void main() {
    // One triangle covering the viewport: (-1,-1), (-1,3), (3,-1).
    vec2 corners[3] = vec2[3](vec2(-1.0, -1.0), vec2(-1.0, 3.0), vec2(3.0, -1.0));
    gl_Position = vec4(corners[gl_VertexID], 0.0, 1.0);
}
)"});
}

QByteArray compositeFragment()
{
    return join({kVersion, R"(
uniform sampler2D lightTarget;
uniform sampler2D coverageTarget;
out vec4 fragColor;
void main() {
    ivec2 p = ivec2(gl_FragCoord.xy);
    vec4 light = texelFetch(lightTarget, p, 0);
    float coverage = texelFetch(coverageTarget, p, 0).r;
    if (coverage <= 0.0001 && light.a <= 0.0001)
        discard;
    float overlapCount = max(0.0, light.a - 1.0);
    vec3 color = 1.0 - exp(-max(light.rgb, vec3(0.0)));
    color *= 1.0 / (1.0 + overlapCount * 0.22);
    color = pow(color, vec3(1.0 / 2.2));
    float alpha = clamp(coverage, 0.0, 1.0);
    if (alpha >= 0.995)
        alpha = 1.0;
    fragColor = vec4(color, alpha);
}
)"});
}

QByteArray shadowRangeFragment()
{
    return join({kVersion, R"(
uniform sampler2D source;
out vec2 range;
void main() {
    ivec2 p = ivec2(gl_FragCoord.xy) * 2;
#ifdef FROM_DEPTH
    vec4 depths = vec4(texelFetch(source, p, 0).r, texelFetch(source, p + ivec2(1, 0), 0).r,
                       texelFetch(source, p + ivec2(0, 1), 0).r, texelFetch(source, p + ivec2(1, 1), 0).r);
    range = vec2(min(min(depths.x, depths.y), min(depths.z, depths.w)),
                 max(max(depths.x, depths.y), max(depths.z, depths.w)));
#else
    vec2 a = texelFetch(source, p, 0).rg;
    vec2 b = texelFetch(source, p + ivec2(1, 0), 0).rg;
    vec2 c = texelFetch(source, p + ivec2(0, 1), 0).rg;
    vec2 d = texelFetch(source, p + ivec2(1, 1), 0).rg;
    range = vec2(min(min(a.x, b.x), min(c.x, d.x)), max(max(a.y, b.y), max(c.y, d.y)));
#endif
}
)"});
}

QByteArray footprintMetricVertex()
{
    return join({kVersion, kProjectionBlock, kLensFunctions, R"(
layout(location = 0) in vec3 position;
out vec3 vWorld;
void main() {
    vec3 world = (targetWorld * vec4(position, 1.0)).xyz;
    vWorld = world;
    vec3 q = worldToLens(world);
    float d = -q.z;
    // (u, v) times depth is linear in q, so the homogeneous position below rasterises the
    // surface exactly in projector pixels and clips it at the lens plane.
    vec2 uvd = lensToUvTimesDepth(q, d);
    float ud = uvd.x;
    float vd = uvd.y;
    float depth01 = clamp(d / max(0.0001, projectorData2.x), 0.0, 1.0);
    // Texel rows follow v (GL rows start at the bottom, so v maps to y = 2v - 1).
    gl_Position = vec4(2.0 * ud - d, 2.0 * vd - d, (2.0 * depth01 - 1.0) * d, d);
}
)"});
}

QByteArray footprintMetricFragment()
{
    return join({kVersion, kProjectionBlock, kLensFunctions, kFootprintFunctions, R"(
in vec3 vWorld;
out float metricOut;
void main() {
    vec2 uv;
    float depth;
    if (!projectWorldPoint(vWorld, uv, depth))
        discard;
    float metric;
    if (!footprintMetricAt(vWorld, uv, metric))
        discard;
    metricOut = metric;
}
)"});
}

QByteArray heatmapFragment()
{
    return join({kVersion, kProjectionBlock, kLensFunctions, kFootprintFunctions, R"(
in vec3 vWorld;
uniform sampler2D metricTexture;
out vec4 fragColor;
void main() {
    vec2 uv;
    float depth;
    if (!projectWorldPoint(vWorld, uv, depth))
        discard;
    float value = textureLod(metricTexture, uv, 0.0).r;
    if (value <= 0.0001)
        discard;
    fragColor = vec4(heatColour(value), footprintRangeData.z);
}
)"});
}

QByteArray outlineFragment()
{
    return join({kVersion, R"(
uniform sampler2D silhouetteMask;
uniform sampler2D visibleMask;
out vec4 fragColor;
float at(sampler2D mask, ivec2 p) {
    ivec2 size = textureSize(mask, 0);
    return texelFetch(mask, clamp(p, ivec2(0), size - 1), 0).r;
}
void main() {
    ivec2 p = ivec2(gl_FragCoord.xy);
    const ivec2 coreOffsets[12] = ivec2[12](ivec2(1, 0), ivec2(-1, 0), ivec2(0, 1), ivec2(0, -1),
        ivec2(1, 1), ivec2(1, -1), ivec2(-1, 1), ivec2(-1, -1), ivec2(2, 0), ivec2(-2, 0), ivec2(0, 2), ivec2(0, -2));
    const ivec2 softOffsets[8] = ivec2[8](ivec2(3, 0), ivec2(-3, 0), ivec2(0, 3), ivec2(0, -3),
        ivec2(3, 2), ivec2(3, -2), ivec2(-3, 2), ivec2(-3, -2));
    float core = 0.0, soft = 0.0, visibleCore = 0.0, visibleSoft = 0.0;
    for (int i = 0; i < 12; ++i) {
        core = max(core, at(silhouetteMask, p + coreOffsets[i]));
        visibleCore = max(visibleCore, at(visibleMask, p + coreOffsets[i]));
    }
    for (int i = 0; i < 8; ++i) {
        soft = max(soft, at(silhouetteMask, p + softOffsets[i]));
        visibleSoft = max(visibleSoft, at(visibleMask, p + softOffsets[i]));
    }
    float gate = max(visibleCore, visibleSoft);
    float alpha = max(core * 0.92, soft * 0.22) * gate;
    if (at(silhouetteMask, p) > 0.01)
        alpha = 0.0;
    if (alpha < 0.002)
        discard;
    fragColor = vec4(mix(vec3(1.0, 0.86, 0.16), vec3(1.0, 0.95, 0.36), soft), alpha);
}
)"});
}

} // namespace SceneShaderSources
