# Lists of Debian packages that demo and tests need, and functions to install packages and to build. Sourced by other
# scripts.

# To build the component.
packages_component=(
  g++ cmake ninja-build pkg-config ccache
  libxcb1-dev libx11-dev libx11-xcb-dev libegl-dev libgl-dev libglu1-mesa-dev
  libfreetype-dev libfontconfig-dev libcxxopts-dev
)
# To draw without a GPU; a font for text.
packages_drawing=(libgl1-mesa-dri libegl-mesa0 fonts-dejavu-core)
# To build the example hosts; models for them.
packages_examples=(libassimp-dev libglfw3-dev libstb-dev qtbase5-dev libsdl2-dev libgtk-3-dev libgtk-4-dev
                   glmark2-data)
# To build tests and benchmarks.
packages_tests=(libgtest-dev libgmock-dev libbenchmark-dev libglm-dev libxcb-xtest0-dev xvfb doxygen groff-base
                desktop-file-utils locales)
# To build and test the Python package and its examples.
packages_python=(python3 python3-numpy python3-pyqt5 python3-nbclient python3-ipykernel)
# To build packages.
packages_package=(dpkg-dev file)
# To build for 64-bit Windows and to run its tests.
packages_windows=(
  g++-mingw-w64-x86-64-posix mingw-w64-tools wine64 wine libwine-dev libosmesa6 libgl1-mesa-dri libgtest-dev
  libgmock-dev libglm-dev libstb-dev xvfb
)
# For scripts/format and scripts/lint.
packages_lint=(clang-format clang-tidy)

packages=("${packages_component[@]}" "${packages_drawing[@]}" "${packages_examples[@]}" "${packages_tests[@]}"
          "${packages_python[@]}" "${packages_package[@]}")

say() { printf '== %s\n' "$*"; }

# Runs a command as root.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "$0: installing packages needs root or sudo" >&2
    return 1
  fi
}

# Installs the missing packages of the list. Prints nothing if all are installed.
install_packages() {
  local missing=() package
  for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed'; then
      missing+=("$package")
    fi
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "Installing ${missing[*]}"
  as_root apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Runs a command with its output in a log. If the command fails, prints the end of the log and fails too.
# On a terminal it prints the output directly, because ninja uses only one line there.
logged() {
  local log=$1
  shift
  if [ -t 1 ]; then
    "$@"
    return
  fi
  mkdir -p "$(dirname "$log")"
  if ! "$@" >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    return 1
  fi
}

# Configures a preset and builds all targets, or the given targets.
build_preset() {
  local preset=$1
  shift
  say "Building $preset"
  logged "build/$preset-configure.log" cmake --preset "$preset"
  logged "build/$preset-build.log" cmake --build --preset "$preset" ${1:+--target "$@"}
}
