#include <gtest/gtest.h>

#include "qbxml/recorded_values.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

std::string FaultOf(std::string line) {
  return tests::ThrownError([&] { ParseRecordedLine(line); }).Description();
}

TEST(ParseRecordedLine, NamesTheColumnFromWhichALineIsNotJson) {
  struct Case {
    std::string line;
    int column;
  };
  for (const auto& [line, column] : {
           Case{"x", 1},
           Case{R"({"request":"a)", 14},
           Case{R"({"request":"a","response":"<QBXML)", 34},
           Case{R"({"request":"a",})", 16},
           Case{R"({"request" "a"})", 12},
           Case{R"({"request":"a"} {)", 17},
           Case{std::string("{\"request\":\"a\"}\0{}", 18), 16},
           Case{std::string("{\"request\":\"\0\"}", 15), 13},
           Case{"{\"request\":\"\t\"}", 13},
           Case{"{\"request\":\"\xC3(\"}", 14},
           Case{"{\"request\":\"\xED\xA0\x80\"}", 14},
           Case{"{\"request\":\"\xFF\"}", 13},
           Case{"\xFF", 1},
           Case{R"({"request":"\x"})", 13},
           Case{R"({"request":"\ud800"})", 13},
           Case{R"({"request":01})", 13},
       }) {
    EXPECT_EQ(FaultOf(line), "not JSON from column " + std::to_string(column) + " on") << line;
  }
}

TEST(ParseRecordedLine, RefusesControlCharactersEverywhereInAText) {
  const std::string begin = R"({"request":"a","response":")";
  for (char control = 0; control < ' '; ++control) {
    for (const std::size_t before : {0U, 5U, 17U, 40U}) {
      const std::string line = begin + std::string(before, 'x') + control + std::string(40, 'x') + "\"}";
      if (control == '\n') continue;  // ends the line
      EXPECT_EQ(FaultOf(line), "not JSON from column " + std::to_string(begin.size() + before + 1) + " on")
          << static_cast<int>(control);
    }
  }
}

TEST(ParseRecordedLine, RefusesHalfACharacter) {
  for (const char* escapes : {"\\udc00", "\\udfff\\ud800", "\\ud800x"}) {
    for (const std::string text :
         {R"({"request":"a","response":"1)", R"({"request":"a","response":"1","x":"a)",
          R"({"request":"a","response":"1","b)"}) {
      const std::string ended = text + escapes + (text.ends_with(",\"b") ? "\":1}" : "\"}");
      EXPECT_NE(FaultOf(ended).find("not JSON from column "), std::string::npos) << ended;
    }
  }
  std::string whole = R"({"a":"\ud83d\ude00"})";
  EXPECT_EQ(RecordedText(ParseRecordedLine(whole), "a"), "\U0001F600");
}

}  // namespace
}  // namespace krnqb
