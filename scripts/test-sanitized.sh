#!/usr/bin/env bash
# Builds LinkDeck with AddressSanitizer and UndefinedBehaviorSanitizer into ${BUILD_DIR:-build-asan}
# and runs the whole test suite there.
set -euo pipefail
cd "$(dirname "$0")/.."
export BUILD_DIR=${BUILD_DIR:-build-asan}
bash scripts/build.sh -DLINKDECK_SANITIZE=ON -DLINKDECK_BUILD_BENCH=OFF "$@"
export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$PWD/scripts/lsan.supp:print_suppressions=0}
ctest --test-dir "$BUILD_DIR" --output-on-failure --parallel "$(nproc)"
