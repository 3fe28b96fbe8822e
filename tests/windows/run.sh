#!/bin/bash
# Runs a Windows program under Wine: run.sh PREFIX PROGRAM [ARGUMENT ...]. The first run creates the prefix. DISPLAY
# names the X server. The program is ended after GLLIB_WINE_TIMEOUT seconds (default 600), which must not be less than the
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
    # Wine waits two seconds for a window manager at each mapping of a managed window, so windows are not managed.
    timeout 60 "$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
    touch "$WINEPREFIX/ready"
  fi
) 9>"$WINEPREFIX/.lock"
exec timeout "${GLLIB_WINE_TIMEOUT:-600}" "$wine" "$@"
