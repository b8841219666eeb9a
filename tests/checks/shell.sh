#!/usr/bin/env bash
# Fails when a shell script has something that shellcheck warns of: shell.sh ROOT
set -euo pipefail
cd "${1:?usage: shell.sh ROOT}"
mapfile -t scripts < <({ find scripts tests bench tools companions -name '*.sh'; printf '%s\n' run test .ci/run; } | sort)
shellcheck -x -S warning "${scripts[@]}"
echo "${#scripts[@]} scripts are clean"
