# shellcheck shell=bash
# Sourced by suites: puts the library and what the tests set beside it into the stage, and registers them.
Register() {
  local library
  Built "$@"
  for library; do
    case $library in
      *.dll) Windows 60 regsvr32 /s "$library" || Fail "regsvr32 $library" ;;
    esac
  done
}
