# shellcheck shell=bash
# A host with nothing registered, through the manifests that are shipped: a manifest beside the host, and one that the
# host activates itself. Then what the manifests say is compared with what the library registers.
stage=$root$work/stage
if [ "$architecture" = x86_64 ]; then processor=amd64; else processor=x86; fi
version=$("$tree/packaging/windows/version.sh")
Built krnqb_activation_host.exe

# Host [ARGUMENT]: runs the host; prints what it says.
Host() { Windows 60 krnqb_activation_host.exe "$@" | tr -d '\r'; }
expected='created by name
by name: C:\Books\nursery.qbw
from another apartment: C:\Books\nursery.qbw
created by class, total 0
type library with 14 types
end of the host'

output=$(Host || true)
[ "$output" = "the program name has no class: 0x800401F3"$'\n'"end of the host" ] || Fail "without a manifest: $output"

Built KRN6_QB2002.dll
manifest=$stage/Korrin.KRN6_QB2002.manifest
"$tree/packaging/windows/assembly_manifest.sh" "$tree/idl/krn6_qb2002.idl" "$version" $processor >"$manifest"
sed -e "s/@VERSION@/$version/" -e "s/@PROCESSOR@/$processor/" "$tree/packaging/windows/host.exe.manifest.in" >"$stage/host.exe.manifest"
output=$(Host || true)
[ "$output" = "the program name has no class: 0x800401F3"$'\n'"end of the host" ] || Fail "with a manifest of another name: $output"

output=$(Host host.exe.manifest) || Fail "with a manifest that it activates: $output"
[ "$output" = "$expected" ] || Fail "with a manifest that it activates: $output"
cp "$stage/host.exe.manifest" "$stage/krnqb_activation_host.exe.manifest"
output=$(Host) || Fail "with a manifest beside it: $output"
[ "$output" = "$expected" ] || Fail "with a manifest beside it: $output"

# What the manifest says: lines "KIND IDENTIFIER WHAT".
tr '\n' ' ' <"$manifest" | sed 's/>/>\n/g' | awk '
  function Attribute(name) {
    return match($0, " " name "=\"[^\"]*\"") ? substr($0, RSTART + length(name) + 3, RLENGTH - length(name) - 4) : ""
  }
  /<comClass/ {
    class = Attribute("clsid")
    print class, "description", Attribute("description")
    print class, "model", Attribute("threadingModel")
    print class, "name", Attribute("progid")
    print class, "library", Attribute("tlbid")
  }
  /<\/progid>/ { sub(/^ */, ""); sub(/<.*/, ""); print class, "unversioned", $0 }
  /<comInterfaceExternalProxyStub/ {
    interface = Attribute("iid")
    print interface, "name", Attribute("name")
    print interface, "marshaller", Attribute("proxyStubClsid32")
    print interface, "library", Attribute("tlbid")
  }
  /<typelib/ { print Attribute("tlbid"), "version", Attribute("version") }' | LC_ALL=C sort >"$root$work/in-the-manifest"
[ "$(wc -l <"$root$work/in-the-manifest")" = 26 ] || Fail "the manifest was not read"

# What the library registers, in the same lines.
Windows 60 regsvr32 /s KRN6_QB2002.dll || Fail "regsvr32"
StopServer "$work/prefix"
WithoutTimes() { sed -E 's/^(\[.*\]) [0-9]+$/\1/' "$1/system.reg"; }
{ diff <(WithoutTimes "$root$basePrefix") <(WithoutTimes "$root$work/prefix") || true; } |
  sed -n 's/^> //p' | awk '
  function Text() { gsub(/^[^=]*="|"$/, ""); return $0 }
  /^\[/ {
    gsub(/\\\\/, "/")
    count = split(substr($0, 2, length($0) - 2), part, "/")
    what = part[3] "/" part[5]
    identifier = part[4]
    next
  }
  what == "CLSID/" && /^@/ { print identifier, "description", Text() }
  what == "CLSID/InprocServer32" && /^"ThreadingModel"/ { print identifier, "model", Text() }
  what == "CLSID/ProgID" { if (/^@/) print identifier, "name", Text() }
  what == "CLSID/VersionIndependentProgID" { if (/^@/) print identifier, "unversioned", Text() }
  what == "CLSID/TypeLib" { if (/^@/) print identifier, "library", Text() }
  what == "Interface/" { if (/^@/) print identifier, "name", Text() }
  what == "Interface/ProxyStubClsid32" { if (/^@/) print identifier, "marshaller", Text() }
  what == "Interface/TypeLib" { if (/^@/) print identifier, "library", Text() }
  tolower(what) == "typelib/1.0" && count == 5 { if (/^@/) print identifier, "version", part[5] }' | LC_ALL=C sort >"$root$work/in-the-registry"
diff "$root$work/in-the-manifest" "$root$work/in-the-registry" || Fail "the manifest (<) and the registration (>) differ"
echo "a host creates the component with nothing registered"
