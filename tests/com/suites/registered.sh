# shellcheck shell=bash
# Sourced by suites: copies the library and the tests' own DLLs into the stage, and registers them.
Register() {
  local library
  Built "$@"
  for library; do
    case $library in
      *.dll) Windows 60 regsvr32 /s "$library" || Fail "regsvr32 $library" ;;
    esac
  done
}
