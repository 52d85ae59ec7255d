#!/usr/bin/env bash
# usage: run_suite.sh ARCHITECTURE SUITE
#
# Runs suites/SUITE.sh with the cross-built library, in a stage and a Wine prefix of its own with nothing registered.
# The suite fails as soon as one of its commands fails.
set -euo pipefail
cd "$(dirname "$0")"
programArguments=("$@")
architecture=$1
suite=$2
source ./wine.sh

EnterRoot
BeginSuite
source "./suites/$suite.sh"
echo "the suite $suite finished ($architecture)"
