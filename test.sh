#!/usr/bin/env bash
# Sets the machine up, builds everything and runs the tests. Arguments go to ctest:
#   ./test.sh                 everything
#   ./test.sh -L core         one label
#   ./test.sh -R StoredToText one name
# LOADER_PRESET=asan ./test.sh runs the same under the address and undefined behaviour sanitizers.
set -euo pipefail
cd "$(dirname "$0")"

# What one clone has compiled serves every other.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1

preset=${LOADER_PRESET:-release}
./scripts/setup.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
exec ctest --test-dir "build/$preset" --output-on-failure --no-tests=error -j "$(nproc)" "$@"
