#!/bin/bash
# Installs missing packages, builds, and runs all tests.
#
#   ./test.sh          release build
#   ./test.sh debug    debug build
#   ./test.sh asan     with the address and undefined behaviour sanitizers
#   ./test.sh tsan     with the thread sanitizer
#   ./test.sh windows  build for 64-bit Windows, under Wine
#   ./test.sh soak N   creates and ends hosts for N seconds (default 120), and checks memory, threads and descriptors
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source scripts/packages.sh

preset=${1:-release}
case $preset in
  release | debug | asan | tsan) ;;
  windows)
    packages=("${packages_component[@]}" "${packages_windows[@]}")
    install_packages
    build_preset windows unit gl gllib host glview hosts
    say "Testing windows"
    exec scripts/windows-tests.sh
    ;;
  soak)
    install_packages
    build_preset release soak
    exec build/release/tests/soak "${2:-120}"
    ;;
  *)
    echo "usage: $0 [release|debug|asan|tsan|windows|soak [seconds]]" >&2
    exit 2
    ;;
esac

unset DISPLAY WAYLAND_DISPLAY  # tests that need an X server start one
packages+=("${packages_lint[@]}")
install_packages
build_preset "$preset"
say "Testing $preset"
ctest --preset "$preset" --parallel 2
