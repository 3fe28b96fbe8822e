#!/bin/bash
# Runs the tests of the Windows build under Wine on a new X server, and ends both afterwards.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

exec 3< <(exec Xvfb -displayfd 1 -screen 0 1280x1024x24 -nolisten tcp 2>/dev/null)
server=$!
finish() {
  WINEPREFIX=$PWD/build/windows/wine timeout 30 wineserver -k 2>/dev/null || true
  kill "$server" 2>/dev/null || true
}
trap finish EXIT
read -r -t 30 number <&3
export DISPLAY=:$number
timeout 1500 ctest --preset windows -R '^(unit|gl|captures|server|hosts)$'
