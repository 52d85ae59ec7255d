#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profit_and_loss/amount_texts.h"
#include "profit_and_loss/labels.h"
#include "profit_and_loss/messages.h"
#include "profit_and_loss/periods.h"
#include "profit_and_loss/statement.h"
#include "profit_and_loss/text_encoding.h"
#include "profit_and_loss/words.h"
#include "thrown_error.h"

namespace krnqb::profit_and_loss {
namespace {

std::string DayText(const std::chrono::year_month_day& date) {
  return std::to_string(static_cast<int>(date.year())) + '-' +
         std::to_string(static_cast<unsigned>(date.month())) + '-' +
         std::to_string(static_cast<unsigned>(date.day()));
}

TEST(ReadPeriod, ReadsMonthsAndOtherTimes) {
  struct Case {
    std::string_view text;
    std::string_view days;  // empty if the text names no time
    bool month = false;
  };
  const std::vector<Case> cases = {
      {"Jan 02", "2002-1-1..2002-1-31", true},
      {"January 2002", "2002-1-1..2002-1-31", true},
      {"  Jan 2002 ", "2002-1-1..2002-1-31", true},
      {"2002-01", "2002-1-1..2002-1-31", true},
      {"Jan '02", "2002-1-1..2002-1-31", true},
      {"Jan-02", "2002-1-1..2002-1-31", true},
      {"Feb. 2004", "2004-2-1..2004-2-29", true},
      {"SEPT 99", "1999-9-1..1999-9-30", true},
      {"Dec 69", "2069-12-1..2069-12-31", true},
      {"Dec 70", "1970-12-1..1970-12-31", true},
      {"January 1 - 31, 2002", "2002-1-1..2002-1-31", true},
      {"Jan - Dec 02", "2002-1-1..2002-12-31"},
      {"January through December 2002", "2002-1-1..2002-12-31"},
      {"January - December 2002", "2002-1-1..2002-12-31"},
      {"October 2001 through September 2002", "2001-10-1..2002-9-30"},
      {"Oct '01 - Sep 02", "2001-10-1..2002-9-30"},
      {"Jan 1 - 15, 02", "2002-1-1..2002-1-15"},
      {"January 1 through March 15, 2002", "2002-1-1..2002-3-15"},
      {"January 1, 2002 - June 30, 2002", "2002-1-1..2002-6-30"},
      {"Jan 15, 02", "2002-1-15..2002-1-15"},
      {"02-Jan", ""},
      {"Jan 2", ""},
      {"2002", ""},
      {"Jan", ""},
      {"2002-13", ""},
      {"2002-00", ""},
      {"Dec - Jan 02", ""},
      {"Feb 1 - 30, 02", ""},
      {"Janus 02", ""},
      {"Profit & Loss", ""},
      {"", ""},
      {"Jan 02 Jan 02 Jan 02 Jan 02 Jan 02", ""},
  };
  for (const Case& test : cases) {
    const std::optional<DayRange> days = ReadPeriod(test.text);
    ASSERT_EQ(days.has_value(), !test.days.empty()) << test.text;
    if (!days) continue;
    EXPECT_EQ(DayText(days->first) + ".." + DayText(days->last), test.days) << test.text;
    EXPECT_EQ(ColumnOf(test.text, *days).month.has_value(), test.month) << test.text;
  }
}

TEST(ReadDate, ReadsOnlyUnambiguousForms) {
  struct Case {
    std::string_view text;
    std::string_view day;
  };
  const std::vector<Case> cases = {
      {"2002-01-31", "2002-1-31"},
      {"01/31/2002", "2002-1-31"},
      {"1/5/02", "2002-1-5"},
      {"31.01.2002", "2002-1-31"},
      {"31/01/2002", ""},
      {"2002-02-30", ""},
      {"02-01-31", ""},
      {"2002/01/31", ""},
      {"1/5", ""},
      {"1/5/", ""},
      {"1/5/2002/7", ""},
      {"a/b/c", ""},
      {"", ""},
  };
  for (const Case& test : cases) {
    const auto date = ReadDate(test.text);
    EXPECT_EQ(date ? DayText(*date) : "", test.day) << test.text;
  }
}

// Reads a text as the only one of its document.
std::string ReadAlone(std::string_view text, AmountNotation notation) {
  AmountTexts amounts(notation);
  std::string result;
  const auto error = tests::ErrorOf([&] {
    amounts.Note(text, "here");
    result = amounts.Read(text, "here").PlainText();
  });
  if (!error) return result;
  return error->Description().find("ambiguous") != std::string::npos ? "ambiguous" : "refused";
}

TEST(AmountTexts, ReadsTheNotationsOfReports) {
  struct Case {
    std::string_view text;
    std::string_view point;  // where only "." separates decimals
    std::string_view either;
  };
  const std::vector<Case> cases = {
      {"1,234.56", "1234.56", "1234.56"},
      {"1234.56", "1234.56", "1234.56"},
      {"(5.00)", "-5.00", "-5.00"},
      {"-5.00", "-5.00", "-5.00"},
      {"5.00-", "-5.00", "-5.00"},
      {"\u22125.00", "-5.00", "-5.00"},
      {"$5.00", "5.00", "5.00"},
      {"-$5.00", "-5.00", "-5.00"},
      {"$-5.00", "-5.00", "-5.00"},
      {"($1,234.50)", "-1234.50", "-1234.50"},
      {" 7 ", "7.00", "7.00"},
      {"0.085", "0.085", "0.085"},
      {"1,234", "1234.00", "ambiguous"},
      {"1.234", "ambiguous", "ambiguous"},
      {"1.234,56", "refused", "1234.56"},
      {"1234,56", "refused", "1234.56"},
      {"0,085", "refused", "0.085"},
      {"1.234.567", "refused", "1234567.00"},
      {"1,234,567", "1234567.00", "1234567.00"},
      {"12,34.50", "refused", "refused"},
      {"1,23", "refused", "1.23"},
      {"1.2.3", "refused", "refused"},
      {"(-5.00)", "refused", "refused"},
      {"(5.00", "refused", "refused"},
      {"--5", "refused", "refused"},
      {"5 000.00", "refused", "refused"},
      {"1e5", "refused", "refused"},
      {"5%", "refused", "refused"},
      {"$", "refused", "refused"},
      {".", "refused", "refused"},
      {"1.0000001", "refused", "refused"},
      {"99999999999999999999.00", "refused", "refused"},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(ReadAlone(test.text, AmountNotation::Point), test.point) << test.text;
    EXPECT_EQ(ReadAlone(test.text, AmountNotation::PointOrComma), test.either) << test.text;
  }
}

TEST(AmountTexts, OneClearAmountDecidesForTheWholeDocument) {
  AmountTexts amounts(AmountNotation::PointOrComma);
  amounts.Note("1.234", "line 1");
  amounts.Note("5,50", "line 2");
  EXPECT_EQ(amounts.Read("1.234", "line 1").PlainText(), "1234.00");
  const Error error = tests::ThrownError([&] { amounts.Note("5.50", "books.csv: line 3"); });
  EXPECT_EQ(
      error.Description(),
      "books.csv: line 3: \"5.50\" uses another decimal mark than the amounts above it; write all amounts "
      "in the same way");
}

TEST(Labels, SeparateAccountNumbers) {
  struct Case {
    std::string_view label;
    bool hyphens;
    std::string_view number;
    std::string_view name;
  };
  const std::vector<Case> cases = {
      {"60200 \u00B7 Automobile Expense", false, "60200", "Automobile Expense"},
      {"60200 - Rent", false, "", "60200 - Rent"},
      {"60200 - Rent", true, "60200", "Rent"},
      {"60200 \u00B7 Rent - Other", true, "60200", "Rent - Other"},
      {"Tea \u00B7 Coffee", false, "", "Tea \u00B7 Coffee"},
      {"12 - Rent", true, "", "12 - Rent"},
      {"60200 \u00B7 ", false, "", "60200 \u00B7 "},
      {"Rent", true, "", "Rent"},
  };
  for (const Case& test : cases) {
    const NumberedName name = SeparateNumber(test.label, test.hyphens);
    EXPECT_EQ(name.number, test.number) << test.label;
    EXPECT_EQ(name.name, test.name) << test.label;
  }
}

TEST(Labels, FindWhatATotalIsOf) {
  EXPECT_EQ(TotalledLabel("Total Rent"), "Rent");
  EXPECT_EQ(TotalledLabel("TOTAL for Rent"), "Rent");
  EXPECT_EQ(TotalledLabel("Total "), std::nullopt);
  EXPECT_EQ(TotalledLabel("Totally Rent"), std::nullopt);
  EXPECT_TRUE(IsOtherOf("Rent - Other", "Rent"));
  EXPECT_FALSE(IsOtherOf("Rent - Others", "Rent"));
  EXPECT_FALSE(IsOtherOf("Rents - Other", "Rent"));
  EXPECT_EQ(ClosingLineOf("net income"), ClosingLine::NetIncome);
  EXPECT_EQ(SectionOfHeading("COST OF GOODS SOLD"), Section::CostOfGoods);
  EXPECT_EQ(SectionOfHeading("Rent"), std::nullopt);
}

TEST(Quoted, KeepsMessagesToOneShortLine) {
  EXPECT_EQ(Quoted("Caf\u00E9"), "\"Caf\u00E9\"");
  EXPECT_EQ(Quoted("a\nb\x1B[2Jc\u0085"), "\"a\uFFFDb\uFFFD[2Jc\uFFFD\"");
  EXPECT_EQ(Quoted("\xE9x"), "\"\uFFFDx\"");
  EXPECT_EQ(Quoted(std::string(100, 'x')), '"' + std::string(60, 'x') + "\u2026\"");
}

TEST(DocumentText, ReadsUtf8AndWindows1252) {
  EXPECT_EQ(DocumentText("d",
                         "\xEF\xBB\xBF"
                         "Caf\xC3\xA9"),
            "Caf\u00E9");
  EXPECT_EQ(DocumentText("d", "Caf\xE9 \xB7 \x80 \x96"), "Caf\u00E9 \u00B7 \u20AC \u2013");
  // Two bytes that would be UTF-8 do not make a text UTF-8 if another one is not.
  EXPECT_EQ(DocumentText("d", "\xC3\xA9 \xE9"), "\u00C3\u00A9 \u00E9");
  // Overlong forms, surrogates and what is beyond Unicode are not UTF-8.
  EXPECT_EQ(DocumentText("d", "\xC0\xAF"), "\u00C0\u00AF");
  EXPECT_EQ(DocumentText("d", "\xE0\x80\xAF"), "\u00E0\u20AC\u00AF");
  EXPECT_EQ(DocumentText("d", "\xED\xA0\x80"), "\u00ED\u00A0\u20AC");
  EXPECT_EQ(DocumentText("d", "\xF4\x91\x80\x80"), "\u00F4\u2018\u20AC\u20AC");
  EXPECT_EQ(DocumentText("d", "\xC3"), "\u00C3");
  EXPECT_EQ(DocumentText("d", "text\x1A"), "text");
}

TEST(DocumentText, RefusesWhatIsNotAText) {
  struct Case {
    std::string bytes;
    std::string_view reason;
  };
  const std::vector<Case> cases = {
      {"", "d: the document is empty;"},
      {"\xEF\xBB\xBF \r\n", "d: the document is empty;"},
      {"PK\x03\x04rest", "d: the document is a spreadsheet or an archive, not a text;"},
      {"\xD0\xCF\x11\xE0rest", "d: the document is a spreadsheet, not a text;"},
      {"%PDF-1.4", "d: the document is a PDF file, not a text;"},
      {std::string("\xFF\xFE"
                   "a\0",
                   4),
       "d: the document is in UTF-16;"},
      {std::string("a\nb\0c", 5), "d: line 2: the document is not a text: it contains byte 00;"},
      {"a\x1B[2J", "d: line 1: the document is not a text: it contains byte 1B;"},
      {"a\xE9\x81", "d: the document is neither in UTF-8 nor in Windows-1252;"},
  };
  for (const Case& test : cases) {
    const Error error = tests::ThrownError([&] { DocumentText("d", test.bytes); });
    EXPECT_EQ(error.Description().substr(0, test.reason.size()), test.reason);
  }
}

}  // namespace
}  // namespace krnqb::profit_and_loss
