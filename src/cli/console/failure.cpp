#include "cli/console/failure.h"

#include <fmt/format.h>

namespace krnqb::cli {
namespace {

// The reason is followed by a semicolon.
std::string_view WithoutFullStop(std::string_view text) {
  if (text.ends_with('.') && !text.ends_with("..")) text.remove_suffix(1);
  return text;
}

// Names and reasons in a description may contain semicolons; advice contains none.
std::string_view AfterLastSemicolon(std::string_view description) {
  constexpr std::string_view semicolon = "; ";
  const std::size_t position = description.rfind(semicolon);
  return position == std::string_view::npos ? std::string_view()
                                            : description.substr(position + semicolon.size());
}

Error Reason(std::string_view why) {
  return Error(error_number::invalidProcedureCall, std::string(why));
}

}  // namespace

bool IsInterruption(ExitCode code) noexcept {
  return code == ExitCode::HungUp || code == ExitCode::Interrupted || code == ExitCode::Terminated;
}

Failure::Failure(ExitCode code, std::string_view whatFailed, const Error& why, std::string_view whatToDo)
    : Error(why),
      code_(code),
      line_(fmt::format("krnqb: {}: {}; {}", whatFailed, WithoutFullStop(why.Description()), whatToDo)),
      remedy_(whatToDo) {}

Failure::Failure(ExitCode code, const Error& error)
    : Error(error),
      code_(code),
      line_(fmt::format("krnqb: {}", error.Description())),
      remedy_(AfterLastSemicolon(error.Description())) {}

Failure WrongUsage(std::string_view why, std::string_view whatToDo) {
  return {ExitCode::WrongUsage, "wrong usage", Reason(why), whatToDo};
}

Failure CommandFailure(std::string_view whatFailed, std::string_view why, std::string_view whatToDo) {
  return {ExitCode::Failed, whatFailed, Reason(why), whatToDo};
}

}  // namespace krnqb::cli
