#!/usr/bin/env bash
# Configures and builds LinkDeck with Ninja into ${BUILD_DIR:-build}.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${BUILD_DIR:-build}
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=${BUILD_TYPE:-RelWithDebInfo} "$@"
cmake --build "$build_dir" --parallel "$(nproc)"
