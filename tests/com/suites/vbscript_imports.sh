# shellcheck shell=bash
source ./suites/script_imports.sh

# VBScript cannot return the code of a character, so its file is UTF-16 with a byte order mark and is converted to ASCII
# here.
Ascii() { iconv -f UTF-16 -t UTF-8 | perl -CI -pe 's/([^\x00-\x7e])/sprintf "\\u%04x", ord $1/ge'; }

ImportAll import.vbs functions properties collection
