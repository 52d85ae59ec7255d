# shellcheck shell=bash
# The interface that hosts bind to, member by member, and what the library and the programs export and import.
for built in KRN6_QB2002.dll krnqb.exe krnqb_setup.exe; do ./library_check.sh "$architecture" "$programs/$built"; done

Built KRN6_QB2002.dll dump_type_library.exe
golden=type_library/type_library.txt
printed=$root$work/type_library.txt
Windows 60 dump_type_library.exe KRN6_QB2002.dll | tr -d '\r' >"$printed"
if [ "$(tail -n 1 "$printed")" != "end of the type library" ]; then Fail "the type library was not printed completely"; fi
if [ "${KRNQB_REWRITE_GOLDENS:-}" = 1 ]; then
  cp "$printed" "$golden"
  Fail "$golden was rewritten"
fi
diff "$golden" "$printed" || Fail "the interface has changed: hosts bound to it would call the wrong members"
