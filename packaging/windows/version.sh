#!/usr/bin/env bash
# Prints the project's version.
sed -nE 's/^project\(krnqb VERSION ([0-9.]+) .*/\1/p' "$(dirname "$0")/../../CMakeLists.txt" | grep .
