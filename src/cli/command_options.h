#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace krnqb::cli {

/// Returns what is wrong with the name of a file, a company or an account, or an empty text if nothing is. A
/// name that begins with two dashes is taken for the next option, the value having been forgotten; a file of
/// such a name can be given as ./--name.
inline std::string CheckName(const std::string& text) {
  return text.empty() || text.starts_with("--") ? "needs a value" : "";
}

/// Adds options to a command. Each option is stored through the reference it is added with, which must
/// outlive the command. A `Parse` function takes the option's name and text, and throws Failure if the text
/// is invalid.
class Options {
 public:
  explicit Options(CLI::App& app) : app_(app) {}

  /// Sets the heading under which the help lists the options added next.
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

  /// Adds an option whose text may be left out, which is then empty.
  CLI::Option* OptionalText(const std::string& name, const std::string& kind,
                            std::optional<std::string>& value, const std::string& description) {
    const auto asTyped = [](std::string_view, std::string_view text) { return std::string(text); };
    return Parsed(name, "[" + kind + "]", value, asTyped, description)->expected(0, 1);
  }

  /// Adds an option that may be repeated, with one text each time.
  CLI::Option* Texts(const std::string& name, const std::string& kind, std::vector<std::string>& values,
                     const std::string& description) {
    CLI::Option* option = app_.add_option(name, values, description)->type_name(kind);
    return Grouped(option->expected(1)->take_all()->allow_extra_args(false)->check(CheckName));
  }

  /// Adds a required positional argument; `name` is its name in the help.
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

  /// Adds a positional argument that may be left out.
  template <typename Value, typename Parse>
  void OptionalArgument(const std::string& name, Value& value, Parse parse, const std::string& description) {
    const auto store = [&value, name, parse](const std::string& text) { value = parse(name, text); };
    app_.add_option_function<std::string>(name, store, description)->option_text(" ");
  }

  template <typename Value, typename Parse>
  CLI::Option* Parsed(const std::string& name, const std::string& kind, Value& value, Parse parse,
                      const std::string& description) {
    const auto store = [&value, name, parse](const std::string& text) { value = parse(name, text); };
    return Grouped(app_.add_option_function<std::string>(name, store, description)->type_name(kind));
  }

 private:
  // Most positional arguments are required, so the help mentions neither that nor their type.
  static void Required(CLI::Option* argument) { argument->required()->option_text(" "); }

  CLI::Option* Grouped(CLI::Option* option) {
    if (!group_.empty()) option->group(std::string(group_));
    return option;
  }

  CLI::App& app_;
  std::string_view group_;
};

/// Formats the help with one empty line between groups, where the library prints two.
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
