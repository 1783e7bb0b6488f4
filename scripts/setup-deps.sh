#!/usr/bin/env bash
# Installs every Debian package the build, the tests and the benchmarks need.
# Safe to run again: only missing packages are installed.
set -euo pipefail
packages=(
    build-essential cmake ninja-build pkg-config git
    qt6-base-dev qt6-base-dev-tools qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
    libqt6opengl6-dev qt6-svg-dev libgl-dev libegl-dev libgl1-mesa-dri libxkbcommon-dev
    qt6-qpa-plugins qt6-translations-l10n
    libeigen3-dev libzip-dev libdeflate-dev zlib1g-dev libxcb1-dev
    libavformat-dev libavcodec-dev libswscale-dev libavutil-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    xvfb xauth x11-utils fonts-nanum-extra zip unzip ccache
    libassimp-dev assimp-utils python3-ezdxf ffmpeg poppler-utils python3-numpy python3-opencv
)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi
echo "Installing missing packages: ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
