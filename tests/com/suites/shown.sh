# shellcheck shell=bash
# Sourced first by suites that show dialogs: a desktop created without a display stays without one.
source ./suites/registered.sh

# Use the fonts of Windows if they are installed: they contain the symbols of a title bar.
if [ -d /usr/share/wine/fonts ]; then
  cp --remove-destination /usr/share/wine/fonts/*.ttf "$root$work/prefix/drive_c/windows/Fonts/"
fi
StartDisplay
