#pragma once

#include <cstdint>

// The test side of the stand-in NDI runtime: what a test tells it and asks it. The stand-in
// exports these next to the runtime's own entry points; tests resolve them from the same
// library file the binding loaded, so both share one state.
extern "C" {
typedef void (*StandinResetFn)(void);
typedef void (*StandinSetSourcesFn)(const char *const *names, const char *const *urls, int count);
typedef void (*StandinPushFrameFn)(int width, int height, const std::uint8_t *bgra, int stride);
typedef int (*StandinCallCountFn)(const char *entryPoint);
typedef int (*StandinLastTextFn)(const char *what, char *buffer, int size);
typedef int (*StandinLastSentFn)(int *width, int *height, std::uint8_t *bgra, int bufferSize);
}
