#!/usr/bin/env bash
# Builds every fuzz target with clang, ASan and UBSan, and runs each for SECONDS (default 30).
set -euo pipefail
seconds=${1:-30}
root=$(cd "$(dirname "$0")/.." && pwd)
build=${QX_FUZZ_BUILD:-$root/build-fuzz}
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_COMPILER=clang++ -DQX_BUILD_FUZZ=ON -DQX_SANITIZE=ON \
  -DQX_BUILD_TESTS=OFF -DQX_BUILD_DESIGNER=OFF >/dev/null
cmake --build "$build" -j"$(nproc)" >/dev/null
export QT_QPA_PLATFORM=offscreen
status=0
for target in "$build"/fuzz/fuzz_*; do
  [ -f "$target" ] && [ -x "$target" ] || continue
  name=$(basename "$target")
  corpus="$build/corpus/$name"
  mkdir -p "$corpus"
  seeds="$root/fuzz/seeds/${name#fuzz_}"
  echo "fuzzing $name for ${seconds}s"
  if [ -d "$seeds" ]; then
    "$target" -max_total_time="$seconds" -max_len=65536 "$corpus" "$seeds" >"$build/$name.log" 2>&1 || status=1
  else
    "$target" -max_total_time="$seconds" -max_len=65536 "$corpus" >"$build/$name.log" 2>&1 || status=1
  fi
  tail -n 2 "$build/$name.log"
done
exit $status
