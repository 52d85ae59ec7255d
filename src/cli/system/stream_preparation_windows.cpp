#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdint>
#include <initializer_list>

#include "cli/system/stream_preparation.h"

namespace krnqb::cli {
namespace {

constexpr int input = 0;
constexpr int output = 1;
constexpr int errors = 2;

bool IsOpen(int descriptor) noexcept {
  const std::intptr_t handle = _get_osfhandle(descriptor);
  constexpr std::intptr_t noStream = -2;  // a standard stream of a program that has none
  return handle != -1 && handle != noStream && handle != 0;
}

bool OpenInstead(int descriptor) noexcept {
  // The direction in which the stream is not used: using it fails.
  const int opened = _wopen(L"NUL", (descriptor == input ? _O_WRONLY : _O_RDONLY) | _O_BINARY);
  if (opened < 0 || opened == descriptor) return opened == descriptor;
  const bool done = _dup2(opened, descriptor) == 0;
  _close(opened);
  return done;
}

}  // namespace

bool PrepareStandardStreams() noexcept {
  // Windows asks no one about a missing disk.
  SetErrorMode(SEM_FAILCRITICALERRORS);
  for (const int descriptor : {input, output, errors}) {
    if (!IsOpen(descriptor) && !OpenInstead(descriptor)) return false;
    _setmode(descriptor, _O_BINARY);
  }
  return true;
}

}  // namespace krnqb::cli
