#!/usr/bin/env bash
# Installs what is missing, builds, and starts Vantreo Guide on its bundled sample project.
# Without a display it says so and writes what it can from the sample project into ./out/.
set -euo pipefail
cd "$(dirname "$0")"
# Qt wants a private runtime folder; a bare server or container often has none.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    export XDG_RUNTIME_DIR=$(mktemp -d)
fi
scripts/build.sh
bin=build/bin
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    exec "$bin/VantreoGuide" "$@"
fi
echo "No display found: Vantreo Guide's window cannot open here."
echo "Writing results from the sample project into ./out/ with vantreoguide-cli instead."
mkdir -p out
scripts/headless-demo.sh "$bin/vantreoguide-cli" "$bin/sample.vgs" out
echo "Done. See ./out/:"
ls -1 out
