#include "cli/console/printable_buffer.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/console/json_text.h"
#include "cli/console/text_table.h"

namespace krnqb::cli {
namespace {

struct Case {
  std::string given;
  std::string printed;
  std::string onOneLine;
  std::string json;
};

class ControlCharacters : public testing::TestWithParam<Case> {};

std::string Printed(const std::vector<std::string>& parts, PrintableBuffer::CarriageReturns carriageReturns) {
  std::ostringstream output;
  PrintableBuffer buffer(output, carriageReturns);
  std::ostream stream(&buffer);
  for (const std::string& part : parts) stream << part;
  stream.flush();
  return output.str();
}

std::string Printed(const std::vector<std::string>& parts) {
  return Printed(parts, PrintableBuffer::CarriageReturns::AtLineEnds);
}

TEST_P(ControlCharacters, NeverReachATerminal) {
  EXPECT_EQ(Printed({GetParam().given}), GetParam().printed);
}

TEST_P(ControlCharacters, NeverReachATerminalWhereverTheTextIsCut) {
  const std::string& given = GetParam().given;
  for (std::size_t cut = 0; cut <= given.size(); ++cut) {
    EXPECT_EQ(Printed({given.substr(0, cut), given.substr(cut)}), GetParam().printed) << cut;
  }
  std::vector<std::string> bytes;
  for (const char byte : given) bytes.emplace_back(1, byte);
  EXPECT_EQ(Printed(bytes), GetParam().printed);
}

TEST_P(ControlCharacters, AreBlanksOnOneLine) {
  EXPECT_EQ(OneLine(GetParam().given), GetParam().onOneLine);
}

TEST_P(ControlCharacters, AreEscapedInJson) {
  EXPECT_EQ(JsonLine(Json(GetParam().given)), GetParam().json);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ControlCharacters,
    testing::Values(
        Case{"plain text", "plain text", "plain text", "\"plain text\""},
        Case{"\x1B[31mred", "\uFFFD[31mred", " [31mred", R"("\u001b[31mred")"},
        Case{"a\x7F\bb", "a\uFFFD\uFFFDb", "a b", R"("a\u007f\bb")"},
        Case{"\xC2\x9B"
             "31m",
             "\uFFFD31m", " 31m", R"("\u009b31m")"},
        Case{"\xC2\x80\xC2\x9F\u00A0", "\uFFFD\uFFFD\u00A0", " \u00A0", "\"\\u0080\\u009f\u00A0\""},
        // Bytes that are not UTF-8 are passed on, except those that a terminal without UTF-8 would obey.
        Case{"caf\xE9.qbw \x9B", "caf\xE9.qbw \uFFFD", "caf\xE9.qbw  ", "\"caf\uFFFD.qbw \uFFFD\""},
        Case{"\xE9", "\xE9", "\xE9", "\"\uFFFD\""},
        Case{"\u00DB\u20AC\U0001F600", "\u00DB\u20AC\U0001F600", "\u00DB\u20AC\U0001F600",
             "\"\u00DB\u20AC\U0001F600\""},
        // NOLINTNEXTLINE(misc-misleading-bidirectional): what is printed instead
        Case{"\u202Elbp.exe\u2069", "\uFFFDlbp.exe\uFFFD", " lbp.exe ", R"("\u202elbp.exe\u2069")"},
        Case{"two\nlines\tand\u2028three", "two\nlines\tand\uFFFDthree", "two lines and three",
             R"("two\nlines\tand\u2028three")"},
        Case{"DOS\r\nline\roverwritten\r", "DOS\r\nline\uFFFDoverwritten\uFFFD", "DOS line overwritten ",
             R"("DOS\r\nline\roverwritten\r")"},
        // The same control character in more bytes than it needs.
        Case{"\xC0\x9B|", "\uFFFD|", " |", "\"\uFFFD\uFFFD|\""}));

TEST(CarriageReturns, PassWhereAProgressBarNeedsThem) {
  EXPECT_EQ(Printed({"\r50%", "\r"}, PrintableBuffer::CarriageReturns::Everywhere), "\r50%\r");
}

TEST(PrintableText, ReportsThatItsOutputHasFailed) {
  std::ostringstream output;
  PrintableBuffer buffer(output, PrintableBuffer::CarriageReturns::AtLineEnds);
  std::ostream stream(&buffer);
  output.setstate(std::ios::badbit);
  stream << "text" << std::flush;
  EXPECT_FALSE(stream);
}

}  // namespace
}  // namespace krnqb::cli
