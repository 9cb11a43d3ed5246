#!/usr/bin/env bash
# Builds the device-service library and its tests with ThreadSanitizer into
# ${BUILD_DIR:-build-tsan} and runs those tests; any report fails.
#
# Only libsdk's tests run here: the library is plain C++ with standard mutexes and threads, so
# the tool sees every lock it takes. The Qt-based tests stay out: Qt's own locks (QMutex,
# QWaitCondition, the event loop) are invisible to ThreadSanitizer unless Qt itself is built with
# it, and every report there would be noise. The test programs are QtTest programs, so the few
# Qt internals they touch are suppressed by name in scripts/tsan.supp.
set -euo pipefail
cd "$(dirname "$0")/.."
export BUILD_DIR=${BUILD_DIR:-build-tsan}
cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLINKDECK_TSAN=ON \
    -DLINKDECK_BUILD_BENCH=OFF "$@"
cmake --build "$BUILD_DIR" --parallel "$(nproc)" --target tst_sdksettings tst_sdksimulator
export QT_QPA_PLATFORM=offscreen
export TSAN_OPTIONS="suppressions=$PWD/scripts/tsan.supp:halt_on_error=1:second_deadlock_stack=1"
ctest --test-dir "$BUILD_DIR" --output-on-failure -R '^tst_sdk'
