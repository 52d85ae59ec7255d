#include "plan_file/history/entry_text.h"

#include <gtest/gtest.h>

#include "plan_file/history/digest.h"
#include "plan_file/history/testing.h"

namespace krnqb::plan_file {
namespace {

HistoryEntry SomeImport() {
  return {.number = 7,
          .when = "2003-01-15T12:00:00",
          .kept = {DigestOf("before"), 6, true},
          .written = {DigestOf("after"), 7, false},
          .import = GardenImport()};
}

HistoryEntry SomeUndo() {
  return {.number = 8,
          .when = "2003-01-16T09:30:00",
          .kept = {DigestOf("after"), std::nullopt, false},
          .written = {DigestOf("before"), 0, false},
          .import = std::nullopt,
          .restored = 7};
}

std::string With(std::string text, std::string_view part, std::string_view replacement) {
  const std::size_t position = text.find(part);
  EXPECT_NE(position, std::string::npos) << part;
  return position == std::string::npos ? text : text.replace(position, part.size(), replacement);
}

TEST(EntryText, IsReadBackAsTheSameEntry) {
  EXPECT_EQ(EntryFromText(EntryText(SomeImport()), 7), SomeImport());
  EXPECT_EQ(EntryFromText(EntryText(SomeUndo()), 8), SomeUndo());
}

TEST(EntryText, HasTheRowsThatTheImportLeft) {
  HistoryEntry entry = SomeImport();
  entry.import->rows = {
      {{.block = "db_sales_values_sales", .row = 2, .name = "Plants \"A\"", .months = {"1.5", ""}},
       {.block = "db_sales_values_costs", .row = 1, .name = "", .months = {}}}};
  EXPECT_EQ(EntryFromText(EntryText(entry), 7), entry);
  EXPECT_NE(EntryText(entry).find(R"({"block": "db_sales_values_sales", "row": 2, "name": "Plants \"A\"", )"
                                  R"("months": ["1.5", ""]})"),
            std::string::npos);
  entry.import->rows.emplace();
  EXPECT_EQ(EntryFromText(EntryText(entry), 7), entry);
}

TEST(EntryText, WithRowsOfAnotherFormIsRefused) {
  HistoryEntry entry = SomeImport();
  entry.import->rows = {{{.block = "b", .row = 2, .name = "Rent", .months = {"1.5"}}}};
  const std::string text = EntryText(entry);
  for (const std::string part : {"\"row\": 2", "\"name\": \"Rent\"", "\"months\": [\"1.5\"]"}) {
    EXPECT_THROW(EntryFromText(With(text, part, "\"x\": []"), 7), Error) << part;
  }
}

TEST(EntryText, IsIndentedJson) {
  EXPECT_EQ(EntryText(SomeImport()), R"({
  "number": 7,
  "when": "2003-01-15T12:00:00",
  "action": "import",
  "settings": {
    "product": "ald",
    "plan_start": "2003-01",
    "options": [
      "--expenses",
      "--balances all"
    ]
  },
  "period": {
    "from": "2002-01",
    "to": "2002-12"
  },
  "rows_added": 3,
  "rows_removed": 0,
  "cells_changed": 24,
  "formulas_cleared": 1,
  "kept": {
    "digest": ")" + DigestOf("before") + R"(",
    "import": 6,
    "edited": true
  },
  "written": {
    "digest": ")" + DigestOf("after") + R"(",
    "import": 7,
    "edited": false
  }
}
)");
}

TEST(EntryText, HoldsOptionsThatAreNotText) {
  HistoryEntry entry = SomeImport();
  entry.import->options = {"--company caf\xC3\xA9\x1B.qbw", "--company \xFF"};
  const std::string text = EntryText(entry);
  EXPECT_TRUE(std::ranges::all_of(text, [](char sign) {
    return sign == '\n' || (sign >= ' ' && sign < '\x7F');
  })) << text;
  EXPECT_EQ(EntryFromText(text, 7).import->options,
            (std::vector<std::string>{"--company caf\xC3\xA9\x1B.qbw", "--company \xEF\xBF\xBD"}));
}

struct Damage {
  const char* part;
  const char* replacement;
  const char* fault;
};

TEST(EntryFromText, SaysWhatIsWrong) {
  const std::string text = EntryText(SomeImport());
  const Damage damages[] = {
      {"{", "", "it is not a JSON object"},
      {"\"number\": 7", "\"number\": 9", "it describes version 9"},
      {"\"number\": 7", "\"number\": true", "\"number\" is invalid"},
      {"\"number\": 7", "\"number\": -7", "\"number\" is invalid"},
      {"\"number\": 7", "\"number\": 7.0", "\"number\" is invalid"},
      {"\"number\": 7", "\"number\": 2147483655", "\"number\" is invalid"},
      {"\"number\"", "\"no\"", "\"number\" is missing"},
      {"\"action\": \"import\"", "\"action\": \"sale\"", "\"action\" is neither import nor undo"},
      {"\"action\": \"import\"", "\"action\": \"undo\"", "\"restored\" is missing"},
      {"\"settings\": {", "\"settings\": [], \"no\": {", "\"settings.product\" is missing"},
      {"\"--expenses\"", "4", "\"settings.options.0\" is invalid"},
      {"\"digest\": \"", "\"digest\": \"x", "\"kept.digest\" is invalid"},
      {"\"import\": 6", "\"import\": \"6\"", "\"kept.import\" is invalid"},
      {"\"edited\": true", "\"edited\": 1", "\"kept.edited\" is invalid"},
      {"\"kept\"", "\"keeps\"", "\"kept.digest\" is missing"},
  };
  for (const Damage& damage : damages) {
    const auto error = ErrorOf([&] { EntryFromText(With(text, damage.part, damage.replacement), 7); });
    ASSERT_TRUE(error) << damage.replacement;
    EXPECT_EQ(error->Description(), damage.fault) << damage.replacement;
  }
  for (const char* other : {"", "\xFF", "[]", "3", "null", "{}", "{} {}", "[{\"number\": 7}]"}) {
    EXPECT_TRUE(ErrorOf([&] { EntryFromText(other, 7); })) << other;
  }
}

TEST(EntryFromText, EndsWithDeepNestingInBoundedTime) {
  EXPECT_TRUE(ErrorOf([&] { EntryFromText(std::string(100'000, '['), 7); }));
}

}  // namespace
}  // namespace krnqb::plan_file
