# shellcheck shell=bash
# Shared by run, test, package and .ci/run: where things lie, what must be installed, and how we talk.
# Sourced after `set -euo pipefail`.

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
readonly ROOT

# To build and start the program with the simulated meter.
# fonts-*: Wine brings no outlines for Arial, MS Sans Serif or Tahoma by itself.
# libx*: Wine loads them when they are there; without them text is not smoothed and the pointer has no shapes.
RUN_PACKAGES=(
  g++ cmake ninja-build ccache python3 g++-mingw-w64-x86-64-posix
  wine wine64 fonts-wine fonts-liberation
  xvfb openbox xdotool imagemagick
  libxcomposite1 libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1
)
# To make the packages. mingw-w64-common: the licences of what the compiler puts into the exe.
PACKAGE_PACKAGES=(
  g++ cmake ninja-build ccache python3 git nsis
  g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-common
)
# To check it as well. libclang-rt: the sanitizers; llvm: names in their reports; googletest: the sources.
CHECK_PACKAGES=(
  "${RUN_PACKAGES[@]}" "${PACKAGE_PACKAGES[@]}"
  clang libclang-rt-14-dev llvm clang-format clang-tidy cppcheck shellcheck
  googletest libbenchmark-dev librsvg2-bin
)
# shellcheck disable=SC2034 # used by the scripts that source this one
readonly RUN_PACKAGES PACKAGE_PACKAGES CHECK_PACKAGES

say() { printf '%s\n' "$*"; }

die() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# ensure_packages REASON PACKAGE...: installs what is missing (Debian, as root), or says what to type.
ensure_packages() {
  local reason=$1 missing
  shift
  command -v dpkg-query >/dev/null || return 0
  missing=$(comm -23 <(printf '%s\n' "$@" | sort -u) \
    <(dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^ii *//p' | sort -u) |
    tr '\n' ' ')
  [[ -n $missing ]] || return 0
  if ((EUID != 0)); then
    say "Missing $reason. Type this, then start again:" >&2
    say "  sudo apt-get install -y --no-install-recommends $missing" >&2
    exit 1
  fi
  say "Installing $reason: $missing"
  export DEBIAN_FRONTEND=noninteractive
  local log=$ROOT/build/apt.log
  mkdir -p "$ROOT/build"
  # A stale list is no reason to stop: the packages may be had all the same.
  apt-get update -o DPkg::Lock::Timeout=300 >"$log" 2>&1 || say "apt-get update failed; trying with the lists there are"
  # shellcheck disable=SC2086 # one word a package
  if ! apt-get install -y --no-install-recommends -o DPkg::Lock::Timeout=300 $missing >>"$log" 2>&1 </dev/null; then
    tail -n 20 "$log" >&2
    die "apt-get could not install them (all of its output: $log)"
  fi
}

# shellcheck disable=SC2120 # patterns may be left out
# our_files [PATTERN...]: all files of the project, in git or new, but nothing that is made.
our_files() {
  (
    cd "$ROOT" || exit
    if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
      git ls-files --cached --others --exclude-standard -- "$@"
    else
      local pattern names=()
      for pattern in "${@:-*}"; do names+=(-o -name "$pattern"); done
      find . -type f -not -path './build/*' -not -path './dist/*' \( "${names[@]:1}" \) | sed 's|^\./||'
    fi | sort -u | while IFS= read -r file; do
      # A file that was deleted but is still in the index is none.
      if [[ -f $file ]]; then printf '%s\n' "$file"; fi
    done
  )
}

# quietly LOG COMMAND...: the output goes to the log, and is shown where the command fails.
quietly() {
  local log=$1
  shift
  mkdir -p "$(dirname "$log")"
  if ! "$@" >"$log" 2>&1 </dev/null; then
    tail -n 60 "$log" >&2
    return 1
  fi
}

# configure PRESET: again and again is cheap; a build folder that moved is made anew.
configure() {
  (cd "$ROOT" && cmake --preset "$1")
}

# build PRESET [TARGET...]: configures where nobody did yet (later Ninja sees by itself when it must be done again).
build() {
  local preset=$1
  shift
  [[ -f $ROOT/build/$preset/build.ninja ]] || configure "$preset" || return
  (cd "$ROOT" && cmake --build --preset "$preset" ${1:+--target "$@"})
}

# end_process PID: asks it to end, insists after five seconds.
end_process() {
  local pid=${1:-} i
  [[ -n $pid ]] || return 0
  kill "$pid" 2>/dev/null || return 0
  for ((i = 0; i < 50; i++)); do
    kill -0 "$pid" 2>/dev/null || return 0
    sleep 0.1
  done
  kill -9 "$pid" 2>/dev/null || true
}

# start_display: an X server in memory on a free number, with a window manager. Exports DISPLAY; stop_display ends it.
start_display() {
  local file i
  file=$(mktemp)
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -dpi 96 -nolisten tcp -noreset 3>"$file" >/dev/null 2>&1 &
  XVFB_PID=$!
  for ((i = 0; i < 100; i++)); do
    [[ -s $file ]] && break
    sleep 0.1
  done
  DISPLAY=:$(<"$file")
  rm -f "$file"
  [[ $DISPLAY != : ]] || die "Xvfb did not start"
  export DISPLAY
  openbox --sm-disable --config-file "$ROOT/scripts/openbox.xml" >/dev/null 2>&1 </dev/null &
  OPENBOX_PID=$!
}

stop_display() {
  end_process "${OPENBOX_PID:-}"
  end_process "${XVFB_PID:-}"
}
