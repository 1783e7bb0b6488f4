#!/usr/bin/env bash
# The 8K guide command as a whole process (start, render, PNG, write) beside OpenCV's
# cv2.imencode('.png') of the same picture, encode alone, alternating in one loop.
# Usage: bench/guide_command_vs_imencode.sh <vantreoguide-cli> [runs] [python with cv2]
# Prints one line per run and the medians; the PNG written by the command is the one
# OpenCV reads back and encodes.
set -euo pipefail
cli=$1
runs=${2:-9}
python=${3:-/usr/bin/python3}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen

cat > "$work/guide.json" <<'JSON'
{"pixel_width": 7680, "pixel_height": 4320, "real_width": 7680, "real_height": 4320,
 "display_circle": true, "display_crossline": true, "display_innerline": true,
 "display_square_status": true, "display_projector_info": true,
 "projector_count": 3, "projector_count_y": 2}
JSON
cat > "$work/encode.py" <<'PY'
import resource, sys, time
import cv2
image = cv2.imread(sys.argv[1], cv2.IMREAD_UNCHANGED)
r0 = resource.getrusage(resource.RUSAGE_SELF)
t0 = time.perf_counter()
ok, data = cv2.imencode('.png', image)
t1 = time.perf_counter()
r1 = resource.getrusage(resource.RUSAGE_SELF)
cpu = (r1.ru_utime - r0.ru_utime) + (r1.ru_stime - r0.ru_stime)
print("%.3f %.3f %d" % (t1 - t0, cpu, len(data)))
PY

echo "run command_wall command_cpu png_bytes | imencode_wall imencode_cpu imencode_bytes"
for i in $(seq "$runs"); do
    # bash's own timer: wall, user and system time of the one process, in milliseconds.
    times=$( { TIMEFORMAT='%3R %3U %3S'; time "$cli" render-guide "$work/guide.json" -o "$work/guide.png" > /dev/null 2>&1; } 2>&1 )
    wall=$(echo "$times" | awk '{print $1}')
    cpu=$(echo "$times" | awk '{printf "%.3f", $2 + $3}')
    bytes=$(stat -c %s "$work/guide.png")
    cv=$("$python" "$work/encode.py" "$work/guide.png")
    echo "$i $wall $cpu $bytes | $cv"
done | tee "$work/runs.txt"
median() { sort -n | awk '{a[NR] = $1} END {print (NR % 2) ? a[(NR + 1) / 2] : (a[NR / 2] + a[NR / 2 + 1]) / 2}'; }
cmd=$(awk '{print $2}' "$work/runs.txt" | median)
cv=$(awk '{print $6}' "$work/runs.txt" | median)
echo "median command wall $cmd s, median imencode wall $cv s, ratio $(echo "$cmd $cv" | awk '{printf "%.2f", $1 / $2}')"
