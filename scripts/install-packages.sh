#!/usr/bin/env bash
# Installs what a bare Debian 12 lacks, through the package manager.
# install-packages.sh           everything that ./test and ./run need
# install-packages.sh --list    only prints the names
set -euo pipefail

packages=(
    # the compilers, the builds and their speed
    g++ clang cmake ninja-build ccache git ca-certificates
    g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 libclang-rt-14-dev
    # checks of the tree
    clang-format clang-tidy shellcheck python3
    # tests
    googletest wine wine64 fonts-wine xvfb
    # the tag library's needs
    zlib1g-dev libz-mingw-w64-dev libutfcpp-dev
    # the tour: mouse, keys and pictures
    xdotool imagemagick
    # the sample library
    sox libsox-fmt-all flac lame ffmpeg vorbis-tools opus-tools wavpack speex
)

if [ "${1:-}" = --list ]; then
    printf '%s\n' "${packages[@]}"
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    state=$(dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null || true)
    case $state in ii*) ;; *) missing+=("$package") ;; esac
done
[ "${#missing[@]}" -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
        echo "These packages are missing and need root to install: ${missing[*]}" >&2
        exit 1
    }
    as_root=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
