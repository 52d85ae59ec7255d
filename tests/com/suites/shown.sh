# shellcheck shell=bash
# Sourced by suites that show dialogs, before all else: a desktop that was made without a display stays without.
source ./suites/registered.sh

# With the fonts that Windows has, where they are installed: they come with the signs of a title bar.
if [ -d /usr/share/wine/fonts ]; then
  cp --remove-destination /usr/share/wine/fonts/*.ttf "$root$work/prefix/drive_c/windows/Fonts/"
fi
StartDisplay
