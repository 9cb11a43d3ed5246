#!/usr/bin/env bash
# Builds LinkDeck and runs the whole test suite on the offscreen platform.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh "$@"
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "${BUILD_DIR:-build}" --output-on-failure --parallel "$(nproc)"
