#!/usr/bin/env bash
# Configures and builds into ./build (shared by run.sh and test.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup-deps.sh
jobs=$(nproc 2>/dev/null || echo 2)
if [ ! -f build/CMakeCache.txt ]; then
    cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@"
fi
cmake --build build -j "$jobs"
