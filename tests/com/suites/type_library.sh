# shellcheck shell=bash
# What hosts are bound to, member by member, and what the library exports and needs.
./library_check.sh "$architecture" "$programs/KRN6_QB2002.dll"

Built KRN6_QB2002.dll dump_type_library.exe
golden=type_library/type_library.txt
printed=$root$work/type_library.txt
Windows 60 dump_type_library.exe KRN6_QB2002.dll | tr -d '\r' >"$printed"
if [ "$(tail -n 1 "$printed")" != "end of the type library" ]; then Fail "the type library was not printed to its end"; fi
if [ "${KRNQB_REWRITE_GOLDENS:-}" = 1 ]; then
  cp "$printed" "$golden"
  Fail "$golden is rewritten"
fi
diff "$golden" "$printed" || Fail "the interface has changed: hosts that are bound to it would call wrong members"
