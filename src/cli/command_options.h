#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace krnqb::cli {

/// What is wrong with the name of a file, a company or an account; nothing when it is one. What begins with
/// two dashes is the next option, whose value was forgotten; a file of such a name is given as ./--name.
inline std::string CheckName(const std::string& text) {
  return text.empty() || text.starts_with("--") ? "needs a value" : "";
}

/// One command's options, each stored where it belongs as it is read. Values that are parsed come with a
/// function of the option's name and the text, which throws Failure.
class Options {
 public:
  explicit Options(CLI::App& app) : app_(app) {}

  /// Under which heading the help shows the options that follow.
  void Group(std::string_view name) { group_ = name; }

  CLI::Option* Flag(const std::string& name, bool& value, const std::string& description) {
    return Grouped(app_.add_flag(name, value, description));
  }

  CLI::Option* Text(const std::string& name, const std::string& kind, std::string& value,
                    const std::string& description) {
    return Grouped(app_.add_option(name, value, description)->type_name(kind)->check(CheckName));
  }

  CLI::Option* Text(const std::string& name, const std::string& kind, std::optional<std::string>& value,
                    const std::string& description) {
    const auto asTyped = [](std::string_view, std::string_view text) { return std::string(text); };
    return Parsed(name, kind, value, asTyped, description)->check(CheckName);
  }

  /// An option that may be given again and again, one text each time, taken as it stands.
  CLI::Option* Texts(const std::string& name, const std::string& kind, std::vector<std::string>& values,
                     const std::string& description) {
    CLI::Option* option = app_.add_option(name, values, description)->type_name(kind);
    return Grouped(option->expected(1)->take_all()->allow_extra_args(false)->check(CheckName));
  }

  /// What stands on the command line without a name; `name` is how the help calls it.
  void Argument(const std::string& name, std::string& value, const std::string& description) {
    Required(app_.add_option(name, value, description)->check(CheckName));
  }

  void Arguments(const std::string& name, std::vector<std::string>& values, const std::string& description) {
    Required(app_.add_option(name, values, description)->check(CheckName));
  }

  template <typename Value, typename Parse>
  void ParsedArgument(const std::string& name, Value& value, Parse parse, const std::string& description) {
    const auto store = [&value, name, parse](const std::string& text) { value = parse(name, text); };
    Required(app_.add_option_function<std::string>(name, store, description));
  }

  template <typename Value, typename Parse>
  CLI::Option* Parsed(const std::string& name, const std::string& kind, Value& value, Parse parse,
                      const std::string& description) {
    const auto store = [&value, name, parse](const std::string& text) { value = parse(name, text); };
    return Grouped(app_.add_option_function<std::string>(name, store, description)->type_name(kind));
  }

 private:
  // Arguments are required as a matter of course; the help need not say so, nor name a type.
  static void Required(CLI::Option* argument) { argument->required()->option_text(" "); }

  CLI::Option* Grouped(CLI::Option* option) {
    if (!group_.empty()) option->group(std::string(group_));
    return option;
  }

  CLI::App& app_;
  std::string_view group_;
};

/// The library puts an empty line before each group and another one between groups: one is enough.
class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter() {
    label("REQUIRED", "(required)");
    label("SUBCOMMAND", "COMMAND");
    label("Positionals", "Arguments");
  }

  std::string make_group(std::string group, bool isArguments,
                         std::vector<const CLI::Option*> options) const override {
    const bool first = isArguments || group == "Options";
    const std::string text = CLI::Formatter::make_group(std::move(group), isArguments, std::move(options));
    return first ? text : text.substr(1);
  }
};

}  // namespace krnqb::cli
