#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test. Exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")"
# Qt wants a private runtime folder; a bare server or container often has none.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    export XDG_RUNTIME_DIR=$(mktemp -d)
fi
scripts/build.sh
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-xcb}
ctest_args=(--test-dir build --output-on-failure -j 2 --timeout 600)
if [ -z "${DISPLAY:-}" ]; then
    # Window and OpenGL tests need a display: Mesa's software renderer under Xvfb.
    exec xvfb-run -a -s "-screen 0 1920x1080x24 +extension GLX +render -noreset" ctest "${ctest_args[@]}"
fi
exec ctest "${ctest_args[@]}"
