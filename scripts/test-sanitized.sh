#!/usr/bin/env bash
# Builds every test with AddressSanitizer and UndefinedBehaviorSanitizer into ./build-asan and
# runs them all. Any finding stops the process that made it, so a passing run ran clean.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-deps.sh
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    export XDG_RUNTIME_DIR=$(mktemp -d)
fi
if [ ! -f build-asan/CMakeCache.txt ]; then
    # -O1 keeps the instrumented suite quick enough to run whole.
    cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g" -DVG_SANITIZE=ON
fi
cmake --build build-asan -j "$(nproc 2>/dev/null || echo 2)"
# Leaks in the system's OpenGL driver and font libraries are theirs, not ours.
export LSAN_OPTIONS="suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0"
export ASAN_OPTIONS="detect_leaks=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-xcb}
ctest_args=(--test-dir build-asan --output-on-failure -j 2 --timeout 1200 "$@")
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 1920x1080x24 +extension GLX +render -noreset" ctest "${ctest_args[@]}"
fi
exec ctest "${ctest_args[@]}"
