#include "plan_file/history/entry_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "krnqb/error.h"
#include "plan_file/history/digest.h"
#include "plan_file/history/flat_json.h"

namespace krnqb::plan_file {
namespace {

[[noreturn]] void Fail(std::string fault) {
  throw Error(error_number::unspecified, std::move(fault));
}

// Returns whether JSON writes a character without an escape.
constexpr bool IsPlain(char character) noexcept {
  return character >= ' ' && character <= '~' && character != '"' && character != '\\';
}

// The text as a JSON string in ASCII. A single value, unlike an object, needs no memory when it is destroyed.
std::string Quoted(const std::string& text) {
  // Nearly all are amounts, of which a large plan has hundreds of thousands.
  if (std::ranges::all_of(text, IsPlain)) return fmt::format("\"{}\"", text);
  constexpr bool asciiOnly = true;
  return nlohmann::json(text).dump(-1, ' ', asciiOnly, nlohmann::json::error_handler_t::replace);
}

std::string VersionText(const PlanVersion& version) {
  const std::string import = version.import ? fmt::format("{}", *version.import) : "null";
  return fmt::format("{{\n    \"digest\": {},\n    \"import\": {},\n    \"edited\": {}\n  }}",
                     Quoted(version.digest), import, version.edited);
}

std::string OptionsText(const std::vector<std::string>& options) {
  std::string text;
  for (const std::string& option : options) {
    text += text.empty() ? "\n      " : ",\n      ";
    text += Quoted(option);
  }
  return text.empty() ? "[]" : fmt::format("[{}\n    ]", text);
}

std::string TextsInLine(const std::vector<std::string>& texts) {
  std::string line;
  for (const std::string& text : texts) line += (line.empty() ? "" : ", ") + Quoted(text);
  return line;
}

std::string RowsText(const std::optional<std::vector<WrittenRow>>& rows) {
  if (!rows) return {};
  std::string text;
  for (const WrittenRow& row : *rows) {
    text += fmt::format("{}\n    {{\"block\": {}, \"row\": {}, \"name\": {}, \"months\": [{}]}}",
                        text.empty() ? "" : ",", Quoted(row.block), row.row, Quoted(row.name),
                        TextsInLine(row.months));
  }
  return text.empty() ? "  \"rows\": [],\n" : fmt::format("  \"rows\": [{}\n  ],\n", text);
}

std::string ImportText(const ImportFacts& import) {
  std::string text = fmt::format(
      "  \"settings\": {{\n    \"product\": {},\n    \"plan_start\": {},\n    \"options\": {}\n  }},\n"
      "  \"period\": {{\n    \"from\": {},\n    \"to\": {}\n  }},\n"
      "  \"rows_added\": {},\n  \"rows_removed\": {},\n  \"cells_changed\": {},\n  \"formulas_cleared\": "
      "{},\n",
      Quoted(import.product), Quoted(import.planStart), OptionsText(import.options),
      Quoted(import.periodFrom), Quoted(import.periodTo), import.rowsAdded, import.rowsRemoved,
      import.cellsChanged, import.formulasCleared);
  return text + RowsText(import.rows);
}

// Reads the values of a description; a missing or invalid one is an Error that names it.
class Values {
 public:
  explicit Values(const FlatJson& json) : json_(json) {}

  std::string Text(const std::string& path) const { return Of<std::string>(path); }
  bool Boolean(const std::string& path) const { return Of<bool>(path); }
  std::int64_t Count(const std::string& path, std::int64_t most = INT64_MAX) const {
    const auto count = Of<std::int64_t>(path);
    if (count < 0 || count > most) Invalid(path);
    return count;
  }
  std::int32_t Number(const std::string& path) const {
    return static_cast<std::int32_t>(Count(path, INT32_MAX));
  }

  std::vector<std::string> Texts(const std::string& path) const {
    std::vector<std::string> texts;
    const std::size_t length = Of<JsonArray>(path).length;
    for (std::size_t index = 0; index < length; ++index) {
      texts.push_back(Text(fmt::format("{}.{}", path, index)));
    }
    return texts;
  }

  bool Has(const std::string& path) const { return json_.contains(path); }

  std::vector<WrittenRow> Rows(const std::string& path) const {
    std::vector<WrittenRow> rows;
    const std::size_t length = Of<JsonArray>(path).length;
    for (std::size_t index = 0; index < length; ++index) {
      const std::string row = fmt::format("{}.{}", path, index);
      rows.push_back({.block = Text(row + ".block"),
                      .row = Number(row + ".row"),
                      .name = Text(row + ".name"),
                      .months = Texts(row + ".months")});
    }
    return rows;
  }

  PlanVersion Version(const std::string& path) const {
    PlanVersion version{.digest = Text(path + ".digest"), .import = std::nullopt, .edited = false};
    if (!IsDigest(version.digest)) Invalid(path + ".digest");
    if (!std::holds_alternative<std::nullptr_t>(At(path + ".import"))) {
      version.import = Number(path + ".import");
    }
    version.edited = Boolean(path + ".edited");
    return version;
  }

 private:
  const JsonValue& At(const std::string& path) const {
    const auto found = json_.find(path);
    if (found == json_.end()) Fail(fmt::format("\"{}\" is missing", path));
    return found->second;
  }

  template <typename Type>
  Type Of(const std::string& path) const {
    const Type* value = std::get_if<Type>(&At(path));
    if (value == nullptr) Invalid(path);
    return *value;
  }

  [[noreturn]] static void Invalid(const std::string& path) { Fail(fmt::format("\"{}\" is invalid", path)); }

  const FlatJson& json_;
};

ImportFacts ImportFrom(const Values& values) {
  ImportFacts facts{.product = values.Text("settings.product"),
                    .planStart = values.Text("settings.plan_start"),
                    .periodFrom = values.Text("period.from"),
                    .periodTo = values.Text("period.to"),
                    .options = values.Texts("settings.options"),
                    .rowsAdded = values.Count("rows_added"),
                    .rowsRemoved = values.Count("rows_removed"),
                    .cellsChanged = values.Count("cells_changed"),
                    .formulasCleared = values.Count("formulas_cleared")};
  if (values.Has("rows")) facts.rows = values.Rows("rows");
  return facts;
}

}  // namespace

std::string EntryText(const HistoryEntry& entry) {
  std::string text = fmt::format("{{\n  \"number\": {},\n  \"when\": {},\n  \"action\": \"{}\",\n",
                                 entry.number, Quoted(entry.when), entry.import ? "import" : "undo");
  text += entry.import ? ImportText(*entry.import) : fmt::format("  \"restored\": {},\n", entry.restored);
  text += fmt::format("  \"kept\": {},\n  \"written\": {}\n}}\n", VersionText(entry.kept),
                      VersionText(entry.written));
  return text;
}

HistoryEntry EntryFromText(std::string_view text, std::int32_t number) {
  const std::optional<FlatJson> json = ParseFlatJson(text);
  if (!json) Fail("it is not a JSON object");
  const Values values(*json);
  HistoryEntry entry;
  entry.number = values.Number("number");
  if (entry.number != number) Fail(fmt::format("it describes version {}", entry.number));
  entry.when = values.Text("when");
  entry.kept = values.Version("kept");
  entry.written = values.Version("written");
  const std::string action = values.Text("action");
  if (action == "import") {
    entry.import = ImportFrom(values);
  } else if (action == "undo") {
    entry.restored = values.Number("restored");
  } else {
    Fail("\"action\" is neither import nor undo");
  }
  return entry;
}

}  // namespace krnqb::plan_file
