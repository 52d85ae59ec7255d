# shellcheck shell=bash
# Sourced by the scripts beside it: goes to the top of the tree and says how a preset is built.
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

# Headline TEXT: one line that tells the person what comes next.
Headline() { printf '\n== %s\n' "$*"; }

# Build PRESET [TARGET...]: configures and builds, everything when no target is named.
Build() {
  local preset=$1
  shift
  # What one checkout has compiled serves the others.
  if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
    # Precompiled headers are found by what is in them.
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
  fi
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" ${1+--target "$@"}
}
