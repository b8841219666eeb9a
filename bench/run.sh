#!/usr/bin/env bash
# Builds and runs every benchmark; fails when a ratio is beyond its limit.
# bench/run.sh [native|windows]   both without an argument
set -euo pipefail
root=$(realpath "$(dirname "$0")/..")
cd "$root"
which=${1:-all}
export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
export CCACHE_DIR=${CCACHE_DIR:-$root/build/ccache}
# The precompiled headers of the test programs can be cached only so.
export CCACHE_SLOPPINESS=pch_defines,time_macros
scripts/install-packages.sh
mkdir -p build
status=0

build() {
    cmake --preset "$1" >"build/configure-$1.log" 2>&1 || { cat "build/configure-$1.log"; exit 1; }
    cmake --build --preset "$1" --target benches
}

if [ "$which" != windows ]; then
    build native-bench
    build/native-bench/bin/gather_bench || status=1
    build/native-bench/bin/queue_bench || status=1
fi
if [ "$which" != native ]; then
    build win64-release
    scripts/make-sample-library.sh build/sample-library
    scripts/make-bench-library.sh build/bench-library build/sample-library
    scripts/with-wine.sh wine build/win64-release/bin/mutex_bench.exe || status=1
    scripts/with-wine.sh wine build/win64-release/bin/dispatch_bench.exe || status=1
    scripts/with-wine.sh wine build/win64-release/bin/walk_bench.exe \
        build/bench-library/small build/bench-library/large || status=1
    scripts/with-wine.sh wine build/win64-release/bin/reader_bench.exe \
        build/bench-library/sounds build/bench-library/short || status=1
    # As a whole path of Windows: the main window opens it as its start folder.
    wide="Z:${root//\//\\}\\build\\bench-library\\wide\\"
    forms=build/win64-release/bin/form-benches
    scripts/with-wine.sh wine $forms/start_bench.exe || status=1
    scripts/with-wine.sh wine $forms/main_window_bench.exe "$wide" || status=1
    scripts/with-wine.sh wine $forms/file_list_bench.exe || status=1
    scripts/with-wine.sh wine $forms/list_dialog_bench.exe "$wide" || status=1
fi
exit "$status"
