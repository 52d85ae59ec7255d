# shellcheck shell=bash
# Sourced by the scripts in this folder: changes to the top of the tree and defines how a preset is built.
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

# Headline TEXT: prints a line that announces the next step.
Headline() { printf '\n== %s\n' "$*"; }

# Build PRESET [TARGET...]: configures and builds the targets, or everything.
Build() {
  local preset=$1
  shift
  # Checkouts share what they compile.
  if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
    # Precompiled headers are matched by content.
    export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
  fi
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" ${1+--target "$@"}
}
