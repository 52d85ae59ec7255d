#include "support/characters.h"

#include <gtest/gtest.h>

namespace krnqb {
namespace {

TEST(InvalidUtf8, IsTheFirstByteThatCannotBeWhereItIs) {
  struct Case {
    std::string_view text;
    std::optional<std::size_t> invalid;
  };
  constexpr auto none = std::nullopt;
  for (const auto& [text, invalid] : {
           Case{"", none},
           Case{"a", none},
           Case{std::string_view("\0a", 2), none},
           Case{"\x7F", none},
           Case{"caf\u00E9 \u20AC \U0001F600", none},
           Case{"\xC2\x80\xDF\xBF", none},
           Case{"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", none},
           Case{"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", none},
           Case{"a\x80", 1},
           Case{"a\xC1\xBF", 1},
           Case{"a\xFF", 1},
           Case{"a\xF5\x80\x80\x80", 1},
           Case{"a\xC3", 2},
           Case{"a\xC3(", 2},
           Case{"\xE0\x9F\xBF", 1},
           Case{"\xED\xA0\x80", 1},
           Case{"\xE2\x82", 2},
           Case{"\xE2\x82(", 2},
           Case{"\xF0\x8F\xBF\xBF", 1},
           Case{"\xF4\x90\x80\x80", 1},
           Case{"\xF0\x9F\x98(", 3},
       }) {
    EXPECT_EQ(InvalidUtf8(text), invalid) << text;
  }
}

TEST(InvalidUtf8, IsFoundAtEveryPlace) {
  for (std::size_t place = 0; place < 40; ++place) {
    std::string text(40, 'x');
    EXPECT_EQ(InvalidUtf8(text), std::nullopt);
    text[place] = '\xFF';
    EXPECT_EQ(InvalidUtf8(text), place);
    text.replace(place, 1, "\u00E9");
    EXPECT_EQ(InvalidUtf8(text), std::nullopt) << place;
  }
}

}  // namespace
}  // namespace krnqb
