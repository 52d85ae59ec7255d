#!/usr/bin/env bash
# usage: run_suite.sh ARCHITECTURE SUITE
#
# Runs suites/SUITE.sh with the cross-built library: in a stage of its own, with a Wine prefix of its own that nothing
# is registered in yet. The suite fails when a command of it fails.
set -euo pipefail
cd "$(dirname "$0")"
programArguments=("$@")
architecture=$1
suite=$2
source ./wine.sh

EnterRoot
BeginSuite
source "./suites/$suite.sh"
echo "the suite $suite came to its end ($architecture)"
