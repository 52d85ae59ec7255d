#include "files/csv_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace krnqb::files {
namespace {

struct FieldCase {
  std::string_view field;
  std::string_view line;
};

TEST(CsvLine, QuotesFieldsWithSeparatorsQuotesLineEndsAndOuterBlanks) {
  const std::vector<FieldCase> cases{{"Rent", "Rent\r\n"},
                                     {"Café", "Café\r\n"},
                                     {"Smith, Jones", "\"Smith, Jones\"\r\n"},
                                     {"6\" pots", "\"6\"\" pots\"\r\n"},
                                     {"two\nlines", "\"two\nlines\"\r\n"},
                                     {"two\rlines", "\"two\rlines\"\r\n"},
                                     {" Rent", "\" Rent\"\r\n"},
                                     {"Rent ", "\"Rent \"\r\n"},
                                     {"a\tb", "a\tb\r\n"},
                                     {"", "\r\n"}};
  for (const FieldCase& test : cases) {
    EXPECT_EQ(CsvLine().Text(test.field).Line(), test.line);
    EXPECT_EQ(CsvLine().Figure(test.field).Line(), test.line);
  }
}

TEST(CsvLine, PutsAnApostropheBeforeTextsThatASpreadsheetWouldCompute) {
  const std::vector<FieldCase> cases{{"=1+1", "'=1+1\r\n"},
                                     {"+1", "'+1\r\n"},
                                     {"-", "'-\r\n"},
                                     {"-12.50", "'-12.50\r\n"},
                                     {"@SUM(A1)", "'@SUM(A1)\r\n"},
                                     {"  =1", "\"'  =1\"\r\n"},
                                     {"\t=1", "'\t=1\r\n"},
                                     {"\r\n=1", "\"'\r\n=1\"\r\n"},
                                     {"=HYPERLINK(\"a\",\"b\")", "\"'=HYPERLINK(\"\"a\"\",\"\"b\"\")\"\r\n"}};
  for (const FieldCase& test : cases) EXPECT_EQ(CsvLine().Text(test.field).Line(), test.line);
}

TEST(CsvLine, LeavesOtherTextsAndFiguresAlone) {
  EXPECT_EQ(CsvLine().Text("Rent = dues").Line(), "Rent = dues\r\n");
  EXPECT_EQ(CsvLine().Text("'=1").Line(), "'=1\r\n");
  EXPECT_EQ(CsvLine().Text("  ").Line(), "\"  \"\r\n");
  EXPECT_EQ(CsvLine().Figure("-12.50").Line(), "-12.50\r\n");
}

TEST(CsvLine, SeparatesFieldsByCommas) {
  EXPECT_EQ(CsvLine().Text("Rent").Figure("-1").Empty().Text("x").Line(), "Rent,-1,,x\r\n");
  EXPECT_EQ(CsvLine().Empty().Empty().Line(), ",\r\n");
}

}  // namespace
}  // namespace krnqb::files
