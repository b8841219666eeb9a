#!/usr/bin/env bash
# Fails when a source differs from what clang-format makes of it: format.sh ROOT
set -euo pipefail
cd "${1:?usage: format.sh ROOT}"
mapfile -t files < <(find src companions sdk tests tools bench -name '*.cpp' -o -name '*.h' | sort)
[ "${#files[@]}" -gt 0 ] || { echo "no sources found"; exit 1; }
clang-format --dry-run -Werror "${files[@]}"
echo "${#files[@]} files are formatted"
