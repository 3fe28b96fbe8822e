#!/bin/bash
# Runs a Windows program by Wine: run.sh PREFIX PROGRAM [ARGUMENT ...]. The prefix is made at the first run; DISPLAY
# names the X server to draw on. Ends the program after GLLIB_WINE_TIMEOUT seconds, which is no less than the
# longest time limit of a test.
set -euo pipefail
export WINEPREFIX=$1 WINEARCH=win64 LIBGL_ALWAYS_SOFTWARE=1 WINEDEBUG=${WINEDEBUG:-fixme-all,err-all}
export LC_ALL=C.UTF-8  # the encoding of file names
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
shift
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
mkdir -p "$WINEPREFIX"
(
  flock 9
  if [ ! -e "$WINEPREFIX/ready" ]; then
    timeout 120 "$wine" wineboot --init >/dev/null 2>&1
    # Without a window manager every mapping of a managed window would wait two seconds for one.
    timeout 60 "$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
    touch "$WINEPREFIX/ready"
  fi
) 9>"$WINEPREFIX/.lock"
exec timeout "${GLLIB_WINE_TIMEOUT:-600}" "$wine" "$@"
