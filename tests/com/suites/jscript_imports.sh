# shellcheck shell=bash
source ./suites/script_imports.sh

Ascii() { cat; }

ImportAll import.js functions properties
