#!/bin/bash
# Installs what is missing, builds, and runs all tests.
#
#   ./test.sh          the release build
#   ./test.sh asan     with the address and undefined behaviour sanitizers
#   ./test.sh tsan     with the thread sanitizer
#   ./test.sh windows  the build for 64-bit Windows, by Wine
#   ./test.sh soak N   hosts that come and go for N seconds (120), and what they leave behind
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

unset DISPLAY WAYLAND_DISPLAY  # the tests that want an X server start one
packages+=("${packages_lint[@]}")
install_packages
build_preset "$preset"
say "Testing $preset"
ctest --preset "$preset" --parallel 2
