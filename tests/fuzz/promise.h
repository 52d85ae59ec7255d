#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "krnqb/error.h"
#include "krnqb/observer.h"

/// The entry of every fuzz target: runs one input and returns 0. A broken promise ends the process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace krnqb::fuzz {

/// Ends the process, so that the fuzzer keeps the input, unless a promise holds.
inline void Require(bool holds, std::string_view promise, std::string_view detail = {}) {
  if (holds) return;
  std::cerr << "Broken promise: " << promise << '\n' << detail << std::endl;
  std::abort();
}

/// Ends the process unless an error has a number of its own: error 51 hides an exception that nobody
/// expected.
inline void RequireKnownError(std::int32_t number, std::string_view description) {
  Require(number != error_number::internalError, "no exception of another type becomes an error",
          description);
  Require(number != error_number::outOfMemory, "a small input needs little memory", description);
}

/// Runs a step and returns the Error that it throws, if any. Any other exception ends the process.
template <typename Step>
std::optional<Error> ErrorOf(Step&& step) {
  try {
    std::forward<Step>(step)();
  } catch (const Error& error) {
    RequireKnownError(error.Number(), error.Description());
    return error;
  }
  return std::nullopt;
}

/// Ends the process if a notice reports an error that nobody expected. The number of an answer's status is
/// QuickBooks' own and may be any.
inline void RequireKnownErrors(const std::vector<Notice>& notices) {
  for (const Notice& notice : notices) {
    if (notice.kind != NoticeKind::AnswerStatus) RequireKnownError(notice.number, notice.description);
  }
}

}  // namespace krnqb::fuzz
