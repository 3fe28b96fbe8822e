#!/bin/bash
# Installs missing packages, builds glview, and draws a rabbit.
#
#   ./demo.sh            draws it to bunny.png; if DISPLAY is set, shows it in a window too
#   ./demo.sh --gallery  draws the pictures of docs/gallery.md again
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source scripts/packages.sh

# Prints the path of a model of package glmark2-data.
model() { dpkg -L glmark2-data | grep "/models/$1\$"; }

draw_rabbit() {
  local bunny
  bunny=$(model bunny.obj)
  say "Drawing bunny.png"
  "$glview" --out bunny.png "$bunny"
  if [ -n "${DISPLAY:-}" ]; then
    say "Opening a window: drag to turn, wheel to zoom, W to change the shading, 4 for four views, Esc to quit"
    "$glview" "$bunny"
  fi
}

draw_gallery() {
  local pictures=docs/pictures bunny examples=(lights glass picking text atlases texture markers capture)
  bunny=$(model bunny.obj)
  mkdir -p "$pictures"
  build_preset release "${examples[@]}" embed-gtk3 embed-gtk4 embed-qt embed-sdl embed-pixels python_package
  say "Drawing the gallery to $pictures"
  "$glview" --size 640x480 --out "$pictures/bunny.png" "$bunny"
  "$glview" --size 640x480 --views 4 --axes --out "$pictures/views.png" "$bunny"
  "$glview" --size 640x480 --shade hidden --out "$pictures/hidden.png" "$(model horse.3ds)"
  "$glview" --size 640x480 --fog --out "$pictures/fog.png" "$(model asteroid-high.3ds)"
  "$glview" --size 640x480 --turn 40,20 --section z,0.6 --out "$pictures/section.png" "$bunny"
  "$glview" --size 640x480 --measure 250,120,360,300 --out "$pictures/measure.png" "$bunny" >/dev/null
  "$glview" --size 640x300 --text --out "$pictures/several.png" "$bunny" "$(model horse.3ds)" \
    "$(model asteroid-low.3ds)"
  local example
  for example in "${examples[@]}"; do
    build/release/examples/"$example" --out "$pictures/$example.png" >/dev/null
  done
  scripts/host-pictures "$pictures" "$(dirname "$bunny")"
}

case ${1:-} in
  "") draw=draw_rabbit ;;
  --gallery) draw=draw_gallery ;;
  *)
    echo "usage: $0 [--gallery]" >&2
    exit 2
    ;;
esac

glview=build/release/examples/glview
install_packages
build_preset release glview
"$draw"
