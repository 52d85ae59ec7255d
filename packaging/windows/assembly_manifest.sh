#!/usr/bin/env bash
# usage: assembly_manifest.sh IDL VERSION PROCESSOR
#
# Prints the manifest that makes KRN6_QB2002.dll an assembly: a host whose own manifest names the assembly creates the
# component's classes with nothing registered. Everything in it is read from the interface description. The assembly is
# not called KRN6_QB2002, since Windows looks for an assembly in a DLL of its name before it looks for a manifest.
set -euo pipefail

awk -v version="$2" -v processor="$3" '
  function Braced(identifier) { return "{" toupper(identifier) "}" }

  # "interface X;" and importlib declare nothing.
  /^\[$|^  \[$/ { attributes = ""; inside = 1 }
  inside { attributes = attributes $0 "\n" }
  /^ *\]$/ { inside = 0 }
  inside && match($0, /uuid\([0-9A-Fa-f-]+\)/) { identifier = substr($0, RSTART + 5, RLENGTH - 6) }

  /^library / { library = $2; libraryId = Braced(identifier) }
  /^  coclass / && attributes !~ /noncreatable/ {
    program = library "." $2
    classes = classes "    <comClass clsid=\"" Braced(identifier) "\" threadingModel=\"Apartment\"\n" \
      "        progid=\"" program ".1\" tlbid=\"" libraryId "\" description=\"" program "\">\n" \
      "      <progid>" program "</progid>\n    </comClass>\n"
  }
  # The marshallers of the system for dual interfaces and for dispinterfaces.
  /^  (disp)?interface .*\{$/ {
    marshaller = $1 == "interface" ? "{00020424-0000-0000-C000-000000000046}" : "{00020420-0000-0000-C000-000000000046}"
    interfaces = interfaces "  <comInterfaceExternalProxyStub name=\"" $2 "\" iid=\"" Braced(identifier) "\"\n" \
      "      tlbid=\"" libraryId "\" proxyStubClsid32=\"" marshaller "\"/>\n"
  }

  END {
    if (libraryId == "" || classes == "" || interfaces == "") exit 1
    print "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"
    print "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">"
    print "  <assemblyIdentity type=\"win32\" name=\"Korrin.KRN6_QB2002\" version=\"" version ".0\""
    print "      processorArchitecture=\"" processor "\"/>"
    print "  <file name=\"KRN6_QB2002.dll\">"
    printf "%s", classes
    print "    <typelib tlbid=\"" libraryId "\" version=\"1.0\" helpdir=\"\"/>"
    print "  </file>"
    printf "%s", interfaces
    print "</assembly>"
  }' "$1"
