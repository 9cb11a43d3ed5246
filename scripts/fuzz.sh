#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang into ${BUILD_DIR:-build-fuzz}, then for each
# target replays every input of fuzz/regressions/<target>/ and fuzzes it for SECONDS (default 60)
# from a scratch copy of its seed corpus under the build directory.
#   bash scripts/fuzz.sh [SECONDS]      bash scripts/fuzz.sh --replay-only
# FUZZ_TARGETS="fuzz_menu fuzz_toolbar" picks targets. Exits non-zero when any target crashed,
# leaked or timed out; the message names the saved input.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
seconds=60
replay_only=0
for arg in "$@"; do
  case $arg in
    --replay-only) replay_only=1 ;;
    *[!0-9]* | '') echo "usage: $0 [SECONDS | --replay-only]" >&2; exit 2 ;;
    *) seconds=$arg ;;
  esac
done

build_dir=${BUILD_DIR:-build-fuzz}
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=${BUILD_TYPE:-RelWithDebInfo} \
  -DCMAKE_CXX_COMPILER=${CXX:-clang++} -DLINKDECK_FUZZ=ON -DLINKDECK_BUILD_TESTS=OFF \
  -DLINKDECK_BUILD_BENCH=OFF >/dev/null
cmake --build "$build_dir" --target fuzz --parallel "$(nproc)"
build_dir=$(cd "$build_dir" && pwd)

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$root/scripts/lsan.supp:print_suppressions=0}

targets=${FUZZ_TARGETS:-$(cd fuzz && ls fuzz_*.cpp | sed 's/\.cpp$//')}
failed=0
for target in $targets; do
  exe=$build_dir/fuzz/$target/$target
  work=$build_dir/fuzz-work/$target
  mkdir -p "$work/corpus" "$work/artifacts"
  case $target in
    fuzz_settings) dict=fuzz/ini.dict ;;
    fuzz_hyperlinks) dict=fuzz/links.dict ;;
    *) dict=fuzz/xml.dict ;;
  esac

  regressions=()
  if [ -d "fuzz/regressions/$target" ]; then
    while IFS= read -r -d '' f; do regressions+=("$f"); done \
      < <(find "fuzz/regressions/$target" -type f -print0 | sort -z)
  fi
  if [ "${#regressions[@]}" -gt 0 ]; then
    if ! "$exe" -timeout=25 "${regressions[@]}" >"$work/replay.log" 2>&1 </dev/null; then
      echo "fuzz $target: replaying fuzz/regressions/$target failed (see $work/replay.log):"
      grep -E "^(Running|==[0-9]+==ERROR|SUMMARY|settings round trip)" "$work/replay.log" | tail -n 5
      failed=1
      continue
    fi
  fi
  [ "$replay_only" -eq 1 ] && { echo "fuzz $target: ${#regressions[@]} regressions replayed, ok"; continue; }

  cp -n fuzz/corpus/"$target"/* "$work/corpus/" 2>/dev/null || true
  rm -f "$work/artifacts"/*
  start=$(date +%s)
  status=0
  "$exe" "$work/corpus" -dict="$dict" -max_len=16384 -timeout=25 -max_total_time="$seconds" \
    -print_final_stats=1 -artifact_prefix="$work/artifacts/" >"$work/fuzz.log" 2>&1 </dev/null ||
    status=$?
  elapsed=$(($(date +%s) - start))
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$work/fuzz.log" | tail -n 1)
  artifact=$(ls "$work/artifacts" 2>/dev/null | head -n 1)
  if [ "$status" -eq 0 ] && [ -z "$artifact" ]; then
    result=ok
  else
    failed=1
    result="FAILED (exit $status): ${artifact:+$work/artifacts/$artifact, }log $work/fuzz.log"
  fi
  echo "fuzz $target: ${runs:-?} executions in $elapsed s, $result"
done
exit $failed
