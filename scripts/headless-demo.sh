#!/usr/bin/env bash
# What ./run.sh writes on a machine without a display: one result per job the
# command-line tool can do on the sample project.
set -euo pipefail
cli=$1; sample=$2; out=$3
"$cli" --version > "$out/version.txt"
if [ -f "$sample" ]; then
    "$cli" info "$sample" > "$out/sample-info.json"
    "$cli" render-guide "$sample" -o "$out/sample-guide.png"
    "$cli" guide-info "$sample" > "$out/sample-guide-info.json"
    "$cli" render-view "$sample" --size 1280x720 --frustum -o "$out/sample-3d-view.png"
else
    "$cli" --help > "$out/commands.txt"
fi
