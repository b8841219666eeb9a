#!/usr/bin/env bash
# Runs clang-tidy over the sources that build natively: tidy.sh ROOT BUILD
# A source is looked at again only when it, a header, the settings or the
# compile commands have changed since it was last found clean.
set -euo pipefail
root=$(realpath "${1:?usage: tidy.sh ROOT BUILD}")
build=$(realpath "${2:?usage: tidy.sh ROOT BUILD}")
cache=$build/tidy
mkdir -p "$cache"
cd "$root"
headers=$(find src companions sdk tools -name '*.h' -print0 | sort -z | xargs -0 cat .clang-tidy | sha256sum)
export build cache headers

check() {
    local key
    key=$(cat "$1" - <<<"$headers" | sha256sum | cut -d' ' -f1)
    [ -e "$cache/$key" ] && return 0
    # The database is GCC's: what Clang does not know of it is not our concern.
    clang-tidy --quiet -p "$build" --extra-arg=-Wno-unknown-warning-option "$1" 2>/dev/null || return 1
    touch "$cache/$key"
}
export -f check

mapfile -t sources < <(sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' "$build/compile_commands.json" |
    grep -E "^$root/(src|companions|tools)/" | sort -u)
[ "${#sources[@]}" -gt 0 ] || { echo "no sources found in the compile commands"; exit 1; }
printf '%s\0' "${sources[@]}" | xargs -0 -P "$(nproc)" -I{} bash -c 'check "$@"' _ {}
echo "${#sources[@]} sources are clean"
