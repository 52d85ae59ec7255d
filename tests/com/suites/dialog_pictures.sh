# shellcheck shell=bash
# Takes a picture of every dialog as PICTURES/win32-NAME.png. Run by script/screenshots, which sets PICTURES.
source ./suites/shown.sh

Register KRN6_QB2002.dll KRN6_TestProcessor.dll
Built krnqb_dialog_host.exe krnqb_dialog_pictures.exe
Stage "$area/recordings"
stage=$root$work/stage
touch "$stage"/{bakery,nursery}.{qbw,kpf}

Windows 120 krnqb_dialog_pictures.exe >"$root$work/pictures.txt" 2>&1 &
shower=$!
while kill -0 $shower 2>/dev/null; do
  if [ -f "$stage/picture" ]; then
    read -r name left top width height <"$stage/picture"
    import -window root -crop "${width}x$height+$left+$top" +repage "$PICTURES/win32-$name.png"
    rm "$stage/picture"
  fi
  sleep 0.1
done
wait $shower || { cat "$root$work/pictures.txt"; Fail "the pictures"; }
[ "$(tail -n 1 "$root$work/pictures.txt" | tr -d '\r')" = "end of the pictures" ] || Fail "not all pictures were taken"
