#!/usr/bin/env bash
# Sets up a Debian 12 machine and builds QXTools.
#   scripts/build.sh demo      installs packages, builds, starts qxdemo (extra args go to qxdemo)
#   scripts/build.sh test      installs packages, builds, runs every test
#   scripts/build.sh sanitize  the same tests in a build with ASan and UBSan (build-asan/)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
mode=${1:-test}
shift || true

install_deps() {
  mapfile -t pkgs < <(grep -v '^#' "$root/scripts/deps.txt")
  missing=()
  for p in "${pkgs[@]}"; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
  done
  if [ ${#missing[@]} -gt 0 ]; then
    local sudo=""
    [ "$(id -u)" -eq 0 ] || sudo=sudo
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}"
  fi
}

build() {
  local dir=$1
  shift
  cmake -S "$root" -B "$dir" -G Ninja "$@"
  cmake --build "$dir" -j"$(nproc)"
}

install_deps
case "$mode" in
demo)
  build "$root/build" -DQX_BUILD_BENCH=ON
  exec "$root/build/demo/qxdemo" "$@"
  ;;
test)
  build "$root/build" -DQX_BUILD_BENCH=ON
  ctest --test-dir "$root/build" --output-on-failure -j"$(nproc)"
  ;;
sanitize)
  build "$root/build-asan" -DQX_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug -DQX_BUILD_DESIGNER=OFF
  ASAN_OPTIONS=detect_leaks=1 LSAN_OPTIONS=suppressions="$root/scripts/lsan.supp" \
    UBSAN_OPTIONS=print_stacktrace=1 \
    ctest --test-dir "$root/build-asan" --output-on-failure -j"$(nproc)"
  ;;
*)
  echo "usage: scripts/build.sh demo|test|sanitize" >&2
  exit 2
  ;;
esac
