#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/command_line.h"
#include "cli/run_krnqb.h"
#include "fuzz/input.h"
#include "fuzz/xml_promises.h"

// Command lines: the input is the arguments, each ended by a NUL. Every one is parsed; only those that need
// no file, no display and no environment are run.

namespace krnqb::fuzz {
namespace {

using cli::Command;

bool NeedsNothing(const Command& command) {
  return std::holds_alternative<cli::PrintedText>(command) ||
         std::holds_alternative<cli::TablesOptions>(command) ||
         std::holds_alternative<cli::RequestOptions>(command);
}

bool IsOneLine(const std::string& text) {
  const auto isControl = [](char character) {
    return static_cast<unsigned char>(character) < ' ' || character == '\x7F';
  };
  return text.ends_with('\n') && std::find_if(text.begin(), text.end(), isControl) == text.end() - 1;
}

bool OnlyWarns(const std::string& errors) {
  return errors.empty() || (IsOneLine(errors) && errors.starts_with("krnqb: warning: "));
}

void RunHarmless(const std::vector<std::string>& arguments, bool understood) {
  std::ostringstream out;
  std::ostringstream err;
  const cli::Surroundings surroundings{.clock = nullptr,
                                       .environment = [](const std::string&) { return std::nullopt; }};
  const int code = cli::RunKrnqb(arguments, out, err, surroundings);
  const bool json = std::ranges::find(arguments, "--json") != arguments.end();
  if (understood) {
    Require(code == 0, "a command that needs nothing succeeds", err.str());
    Require(OnlyWarns(err.str()) && !out.str().empty(), "it prints its result", err.str());
    return;
  }
  Require(code == 2, "a wrong command line is a usage error", err.str());
  Require(err.str().starts_with("krnqb: wrong usage: ") && IsOneLine(err.str()), "a usage error is one line",
          err.str());
  Require(json || out.str().empty(), "a usage error prints no result", out.str());
  Require(!json || nlohmann::json::accept(out.str()), "--json prints JSON", out.str());
}

void Run(Input input) {
  std::vector<std::string> arguments;
  while (!input.Empty()) arguments.push_back(input.Text());
  std::optional<Command> command;
  const auto refusal = ErrorOf([&] { command = cli::ParseCommandLine(arguments); });
  Require(command.has_value() != refusal.has_value(), "a command line is understood or refused");
  if (!command || NeedsNothing(*command)) RunHarmless(arguments, command.has_value());
}

}  // namespace
}  // namespace krnqb::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krnqb::fuzz::Run({data, size});
  return 0;
}
