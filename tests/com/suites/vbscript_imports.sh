# shellcheck shell=bash
source ./suites/script_imports.sh

# VBScript cannot name a character's code, so its file is in UTF-16 with a mark in front, and becomes ASCII here.
Ascii() { iconv -f UTF-16 -t UTF-8 | perl -CI -pe 's/([^\x00-\x7e])/sprintf "\\u%04x", ord $1/ge'; }

ImportAll import.vbs functions properties collection
