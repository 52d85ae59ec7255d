#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

#include "build_paths.h"
#include "cli/import/json_output.h"
#include "cli/import/notices/skipped_journal.h"
#include "cli/workplace.h"
#include "json_schema.h"

namespace krnqb::cli {
namespace {

using krnqb::tests::SchemaViolation;
using nlohmann::json;
using Names = std::set<std::string>;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;

// The schemas by file name.
std::map<std::string, json> Schemas() {
  std::map<std::string, json> schemas;
  for (const auto& file : std::filesystem::directory_iterator(krnqb::tests::SchemasFolder())) {
    schemas.emplace(file.path().filename().string(), json::parse(ReadText(file.path())));
  }
  return schemas;
}

// Checks a schema, and those within it, for what the validator would accept without a word.
class SchemaCheck {
 public:
  explicit SchemaCheck(std::map<std::string, json> schemas) : schemas_(std::move(schemas)) {}

  void Run() {
    for (const auto& [file, schema] : schemas_) {
      file_ = file;
      EXPECT_EQ(schema.at("$schema"), "http://json-schema.org/draft-07/schema#") << file;
      EXPECT_FALSE(schema.at("title").get<std::string>().empty()) << file;
      Check(schema, json::json_pointer());
    }
    EXPECT_GT(count_, 100);
  }

 private:
  // NOLINTNEXTLINE(misc-no-recursion)
  void Check(const json& schema, const json::json_pointer& place) {
    SCOPED_TRACE(file_ + "#" + place.to_string());
    ASSERT_TRUE(schema.is_object());
    ++count_;
    static const Names keywords{
        "$schema", "title",    "description", "type",      "properties",  "required",
        "enum",    "items",    "anyOf",       "$ref",      "pattern",     "minimum",
        "maximum", "minItems", "maxItems",    "minLength", "definitions", "additionalProperties"};
    for (const auto& member : schema.items()) EXPECT_TRUE(keywords.contains(member.key())) << member.key();
    CheckReference(schema);
    CheckObject(schema);
    for (const char* named : {"properties", "definitions"}) {
      if (!schema.contains(named)) continue;
      for (const auto& member : schema.at(named).items()) {
        Check(member.value(), place / std::string(named) / member.key());
      }
    }
    if (schema.contains("items")) Check(schema.at("items"), place / std::string("items"));
    if (!schema.contains("anyOf")) return;
    for (std::size_t index = 0; index < schema.at("anyOf").size(); ++index) {
      Check(schema.at("anyOf")[index], place / std::string("anyOf") / index);
    }
  }

  void CheckReference(const json& schema) const {
    if (!schema.contains("$ref")) return;
    EXPECT_EQ(schema.size(), 1U) << "keywords beside a reference are ignored";
    const auto reference = schema.at("$ref").get<std::string>();
    const std::size_t fragment = reference.find('#');
    ASSERT_NE(fragment, std::string::npos) << reference;
    const std::string file = fragment == 0 ? file_ : reference.substr(0, fragment);
    ASSERT_TRUE(schemas_.contains(file)) << reference;
    const json::json_pointer target(reference.substr(fragment + 1));
    ASSERT_TRUE(schemas_.at(file).contains(target)) << reference;
    // The validator takes a reference to a mere reference in another file for a schema that accepts all.
    EXPECT_FALSE(schemas_.at(file).at(target).contains("$ref")) << reference;
  }

  static void CheckObject(const json& schema) {
    if (!schema.contains("properties")) return;
    EXPECT_EQ(schema.value("additionalProperties", json(true)), json(false));
    ASSERT_TRUE(schema.contains("required") || schema.at("properties").contains("no-account"));
    for (const json& name : schema.value("required", json::array())) {
      EXPECT_TRUE(schema.at("properties").contains(name.get<std::string>())) << name;
    }
  }

  const std::map<std::string, json> schemas_;
  std::string file_;
  int count_ = 0;
};

TEST(JsonSchemas, UseOnlyWhatIsChecked) {
  SchemaCheck(Schemas()).Run();
}

// Leaves one element of every array, the largest, so that a document has every kind of member once.
// NOLINTNEXTLINE(misc-no-recursion)
void Shorten(json& value) {
  if (value.is_array() && value.size() > 1) {
    json largest = value.front();
    for (const json& element : value) {
      if (element.dump().size() > largest.dump().size()) largest = element;
    }
    value = json::array({largest});
  }
  if (!value.is_structured()) return;
  for (json& element : value) Shorten(element);
}

// Returns the places of all values within a document.
// NOLINTNEXTLINE(misc-no-recursion)
void CollectPlaces(const json& value, const json::json_pointer& place,
                   std::vector<json::json_pointer>& places) {
  places.push_back(place);
  if (value.is_object()) {
    for (const auto& member : value.items()) CollectPlaces(member.value(), place / member.key(), places);
  } else if (value.is_array()) {
    for (std::size_t index = 0; index < value.size(); ++index)
      CollectPlaces(value[index], place / index, places);
  }
}

// Expects that the schema accepts a document, and refuses it with a value of another type anywhere, with a
// member more, and without any member that is not among `optional`.
void ExpectExact(const std::string& schema, json document, const Names& optional) {
  SCOPED_TRACE(schema);
  Shorten(document);
  ASSERT_EQ(SchemaViolation(schema, document.dump()), "") << document.dump(1);
  std::vector<json::json_pointer> places;
  CollectPlaces(document, json::json_pointer(), places);
  EXPECT_GT(places.size(), 3U);
  for (const json::json_pointer& place : places) {
    json changed = document;
    changed[place] = {{"unexpected", true}};
    EXPECT_NE(SchemaViolation(schema, changed.dump()), "") << "another type at " << place;
    if (document.at(place).is_object()) {
      changed = document;
      changed[place]["unexpected"] = json::array();
      EXPECT_NE(SchemaViolation(schema, changed.dump()), "") << "a member more at " << place;
    }
    if (place.empty() || !document.at(place.parent_pointer()).is_object() ||
        optional.contains(place.back())) {
      continue;
    }
    changed = document;
    changed[place.parent_pointer()].erase(place.back());
    EXPECT_NE(SchemaViolation(schema, changed.dump()), "") << "nothing at " << place;
  }
}

json Printed(const std::vector<std::string>& arguments) {
  return json::parse(RunProgram(arguments).out);
}

TEST(JsonSchemas, RefuseAnImportWithoutAMemberOrWithAnotherType) {
  const Workplace place;
  place.NurseryYear();
  const json import = Printed(place.ImportArguments(
      "ald.kpf", {"--expenses", "--income", "--balances", "all", "--growth-cogs", "3", "--json", "--dry-run",
                  "--journal", place / "journal", "--select-all-expenses", "--record", place / "recording"}));
  const Names optional{"percent",
                       "description",
                       "request",
                       "from_date",
                       "no-account",
                       "amount-is-no-number",
                       "item-without-account",
                       "account-in-no-list",
                       "inside-item-group"};
  ExpectExact("import", import, optional);
}

TEST(JsonSchemas, RefuseAFailedImportWithoutAMemberOrWithAnotherType) {
  ImportOutcome outcome;
  Notice warned{.kind = NoticeKind::Warning};
  warned.finding = Finding{.code = WarningCode::NoRow, .name = "Rent", .amount = 28414.8};
  outcome.report.Notify(warned);
  outcome.report.Notify({.kind = NoticeKind::AnswerStatus,
                         .meaning = NoticeMeaning::Incomplete,
                         .place = {.request = 10, .fromDate = "2002-01-01", .toDate = "2002-01-31"},
                         .number = 3260});
  const json import = json::parse(ImportOutcomeJson(outcome));
  EXPECT_EQ(import.at("warnings").at(0),
            json({{"code", "no-row"},
                  {"message", "accounts with amounts have no row in the plan: Rent (28,414.80)"},
                  {"accounts", {"Rent"}},
                  {"amounts", {"28414.80"}}}));
  ExpectExact("import", import, {"request", "from", "to"});
}

TEST(JsonSchemas, RefuseTheOtherOutputsWithoutAMemberOrWithAnotherType) {
  const Workplace place;
  const std::string company = place.NurseryYear();
  ExpectExact("accounts",
              Printed({"accounts", "expense", "--company", company, "--plan", place / "bri.kpf", "--json"}),
              {"selected"});
  const json info = Printed({"company", "info", company, "--json"});
  Names kinds;
  for (const auto& record : info.at("records").items()) kinds.insert(record.key());
  ExpectExact("company-info", info, kinds);
  ExpectExact("company-check", Printed({"company", "check", company, "--json"}), {});
  ExpectExact("company-profit-and-loss", Printed({"company", "profit-and-loss", company, "--json"}), {});
  ExpectExact("plan-show", Printed({"plan", "show", place / "ald.kpf", "--json"}), {});
  ASSERT_EQ(RunProgram(place.ImportArguments("ald.kpf", {"--expenses"})).code, 0);
  ExpectExact("plan-history", Printed({"plan", "history", place / "ald.kpf", "--json"}),
              {"when", "action", "settings", "period", "rows_added", "rows_removed", "cells_changed",
               "formulas_cleared", "rows", "kept", "written"});
  ExpectExact("plan-diff", Printed({"plan", "diff", place / "ald.kpf", "--json"}), {});
  ASSERT_EQ(RunProgram(place.ImportArguments("cor.kpf", {"--expenses", "--balances", "all"})).code, 0);
  ExpectExact("reconcile",
              Printed({"reconcile", "--company", company, "--plan", place / "cor.kpf", "--json"}), {});
  ExpectExact("doctor", Printed({"doctor", "--quickbooks", "--plan", place / "cor.kpf", "--json"}), {});
  tests::WriteText(
      place / "ald.json",
      RunProgram(place.ImportArguments("ald.kpf", {"--income", "--balances", "all", "--json"})).out);
  ExpectExact("summary", Printed({"summary", place.Folder().string(), "--json"}), {});
  ExpectExact("failure", Printed({"tables", "--json"}), {});
  tests::WriteText(place / "bad]]>.qbw", "");
  ExpectExact("companies", Printed({"companies", "--quickbooks-folder", place.Folder().string(), "--json"}),
              {"unlisted"});
}

TEST(JsonSchemas, RefuseAnAmountThatIsNoDecimalText) {
  json import = json::parse(ImportOutcomeJson(ImportOutcome()));
  for (const char* money : {"0.00", "28414.80", "-12.125", "100000000000000000000000.00"}) {
    import["skipped"]["sum"] = money;
    EXPECT_EQ(SchemaViolation("import", import.dump()), "") << money;
  }
  for (const json& other : {json(28414.8), json(0), json("28414.8"), json("1E+20"), json("1,000.00"),
                            json(".50"), json("007.50"), json("+1.00"), json("out of range"), json("")}) {
    import["skipped"]["sum"] = other;
    EXPECT_NE(SchemaViolation("import", import.dump()), "") << other;
  }
}

TEST(JsonSchemas, AcceptEveryResultReasonAndKindOfOmission) {
  ImportReport report;
  for (int reason = 0; reason <= static_cast<int>(SkipReason::SubtotalOutOfRange); ++reason) {
    report.Notify({.kind = NoticeKind::AmountSkipped,
                   .meaning = NoticeMeaning::LeftOut,
                   .skipped = Skipped{.reason = static_cast<SkipReason>(reason),
                                      .kind = static_cast<SkipKind>(reason % 3),
                                      .amount = "12.50"}});
  }
  for (int kind = 0; kind <= static_cast<int>(NoticeKind::Warning); ++kind) {
    report.Notify({.kind = static_cast<NoticeKind>(kind),
                   .meaning = NoticeMeaning::Incomplete,
                   .place = {.request = kind},
                   .description = "Rent"});
  }
  ASSERT_GT(report.Missing().size(), 5U);
  for (int result = 0; result <= static_cast<int>(ImportResult::Interrupted); ++result) {
    ImportOutcome outcome;
    outcome.result = static_cast<ImportResult>(result);
    outcome.report = report;
    EXPECT_EQ(SchemaViolation("import", ImportOutcomeJson(outcome)), "");
  }
  const krnqb::tests::TemporaryFolder folder;
  WriteJournal((folder / "journal").string(), report);
  std::istringstream lines(ReadText(folder / "journal"));
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count)
    EXPECT_EQ(SchemaViolation("journal", line), "") << line;
  EXPECT_GT(count, 10);
}

TEST(JsonSchemas, RefuseAJournalLineWithoutAMemberOrWithAnotherType) {
  const Workplace place;
  place.NurseryYear();
  RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--income", "--balances", "all", "--dry-run",
                                               "--journal", place / "journal"}));
  const std::string journal = ReadText(place / "journal");
  const json line = json::parse(journal.substr(0, journal.find('\n')));
  ExpectExact("journal", line,
              {"request", "from", "to", "transaction", "date", "account", "account_name", "customer",
               "customer_name"});
  ExpectExact("journal",
              {{"kind", "account-in-several-rows"},
               {"operation", "ParseProfitAndLossReport"},
               {"request", 30},
               {"from", "2002-01-01"},
               {"to", "2002-12-31"},
               {"past_period", 3},
               {"name", "Rent"}},
              {"request", "from", "to", "past_period"});
}

TEST(JsonSchemas, RefuseWhatIsNotOneJsonText) {
  const std::string failure =
      R"({"result": "failed", "error_number": 5, "error_description": "x", "remedy": ""})";
  EXPECT_EQ(SchemaViolation("failure", failure), "");
  EXPECT_EQ(SchemaViolation("failure", failure + failure),
            "not JSON: The document root must not be followed by other values. at byte 79");
  EXPECT_NE(SchemaViolation("failure", ""), "");
  EXPECT_NE(SchemaViolation("failure", failure.substr(1)), "");
  EXPECT_NE(SchemaViolation("failure", std::string(failure).replace(failure.find('x'), 1, "\xE9")), "");
  EXPECT_THROW(SchemaViolation("none", failure), std::runtime_error);
}

}  // namespace
}  // namespace krnqb::cli
