#!/usr/bin/env bash
# usage: with_display.sh COMMAND...
#
# Runs a command with its own X server and home folder.
set -euo pipefail

leaks=$(cd "$(dirname "$0")" && pwd)/leaks.txt
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/home"
export HOME=$folder/home XDG_CONFIG_HOME=$folder/home/.config XDG_RUNTIME_DIR=$folder
export LSAN_OPTIONS=suppressions=$leaks:print_suppressions=0
xvfb-run --auto-servernum --server-args="-screen 0 1280x1024x24" "$@"
