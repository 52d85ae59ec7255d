#include "profit_and_loss/periods.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "profit_and_loss/words.h"
#include "support/date.h"

namespace krnqb::profit_and_loss {
namespace {

using std::chrono::year_month_day;

constexpr std::size_t mostTokens = 8;

struct Token {
  char kind = ' ';  // M a month, Y four digits, N two digits, D one digit, - a dash or "through"
  int value = 0;
};

bool IsDigit(char character) noexcept {
  return character >= '0' && character <= '9';
}
bool IsLetter(char character) noexcept {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

std::optional<Token> WordToken(std::string_view word) {
  if (SameText(word, "through") || SameText(word, "to")) return Token{'-', 0};
  for (std::int16_t month = 1; month <= 12; ++month) {
    const std::string_view name = EnglishMonthName(month);
    constexpr std::size_t abbreviation = 3;
    if (SameText(word, name) || SameText(word, name.substr(0, abbreviation))) return Token{'M', month};
  }
  return SameText(word, "sept") ? std::optional(Token{'M', 9}) : std::nullopt;
}

std::optional<Token> NumberToken(std::string_view digits) {
  int value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  constexpr std::string_view kinds = "DN?Y";
  const char kind = digits.size() <= kinds.size() ? kinds[digits.size() - 1] : '?';
  return kind == '?' ? std::nullopt : std::optional(Token{kind, value});
}

// Removes the longest beginning whose characters have a property.
template <typename Property>
std::string_view TakeWhile(std::string_view& text, Property property) {
  std::size_t length = 0;
  while (length < text.size() && property(text[length])) ++length;
  const std::string_view taken = text.substr(0, length);
  text.remove_prefix(length);
  return taken;
}

// Returns no tokens for a text that names no time.
std::vector<Token> Tokens(std::string_view text) {
  constexpr std::string_view enDash = "\u2013";
  std::vector<Token> tokens;
  while (!text.empty()) {
    std::optional<Token> token;
    if (IsDigit(text.front())) {
      token = NumberToken(TakeWhile(text, IsDigit));
    } else if (IsLetter(text.front())) {
      token = WordToken(TakeWhile(text, IsLetter));
    } else if (text.front() == '-' || text.starts_with(enDash)) {
      text.remove_prefix(text.front() == '-' ? 1 : enDash.size());
      token = Token{'-', 0};
    } else if (std::string_view(" ,'.\t").find(text.front()) != std::string_view::npos) {
      text.remove_prefix(1);
      continue;
    }
    if (!token || tokens.size() == mostTokens) return {};
    tokens.push_back(*token);
  }
  return tokens;
}

// The form of a time, a character per token. Kinds: M a month, y a year of two or four digits, Y one of four,
// d one or two digits. Roles: m, d and y are month, day and year of the beginning, M, D and Y those of the
// end; +, # and * those of both.
struct Form {
  std::string_view kinds;
  std::string_view roles;
};

constexpr std::array forms{
    Form{"My", "+*"},            // Jan 02
    Form{"M-y", "+-*"},          // Jan-02
    Form{"Y-d", "*-+"},          // 2002-01
    Form{"M-My", "m-M*"},        // Jan - Dec 02
    Form{"My-My", "my-MY"},      // Oct '01 - Sep 02
    Form{"Mdy", "+#*"},          // Jan 15, 02
    Form{"Md-dy", "+d-D*"},      // Jan 1 - 15, 02
    Form{"Md-Mdy", "md-MD*"},    // January 1 - December 31, 2002
    Form{"Mdy-Mdy", "mdy-MDY"},  // January 1, 2002 - June 30, 2002
};

bool Fits(const std::vector<Token>& tokens, std::string_view kinds) noexcept {
  if (tokens.size() != kinds.size()) return false;
  for (std::size_t index = 0; index < kinds.size(); ++index) {
    const char kind = tokens[index].kind;
    const bool fits = kinds[index] == kind || (kinds[index] == 'd' && (kind == 'D' || kind == 'N')) ||
                      (kinds[index] == 'y' && (kind == 'N' || kind == 'Y'));
    if (!fits) return false;
  }
  return true;
}

int FullYear(int year) noexcept {
  constexpr int pivot = 70;
  if (year >= 100) return year;
  return year < pivot ? 2000 + year : 1900 + year;
}

struct Ends {
  int year = 0;
  int month = 0;
  std::optional<int> day;
};

std::optional<year_month_day> DayOf(const Ends& end, bool last) {
  const std::chrono::year_month month =
      std::chrono::year(FullYear(end.year)) / std::chrono::month(static_cast<unsigned>(end.month));
  const bool usual = end.month >= 1 && end.month <= 12 && FullYear(end.year) >= 1900;
  if (!usual) return std::nullopt;
  if (!end.day) return last ? year_month_day(month / std::chrono::last) : month / 1;
  const year_month_day day = month / std::chrono::day(static_cast<unsigned>(*end.day));
  return day.ok() ? std::optional(day) : std::nullopt;
}

std::optional<DayRange> FromForm(const std::vector<Token>& tokens, std::string_view roles) {
  Ends begin;
  Ends end;
  for (std::size_t index = 0; index < roles.size(); ++index) {
    const int value = tokens[index].value;
    const char role = roles[index];
    if (role == 'y' || role == '*') begin.year = value;
    if (role == 'Y' || role == '*') end.year = value;
    if (role == 'm' || role == '+') begin.month = value;
    if (role == 'M' || role == '+') end.month = value;
    if (role == 'd' || role == '#') begin.day = value;
    if (role == 'D' || role == '#') end.day = value;
  }
  const std::optional<year_month_day> first = DayOf(begin, false);
  const std::optional<year_month_day> last = DayOf(end, true);
  if (!first || !last || *last < *first) return std::nullopt;
  return DayRange{.first = *first, .last = *last};
}

// Returns the parts of a date, three numbers, or nothing.
std::optional<std::array<std::string_view, 3>> DateParts(std::string_view text, char separator) {
  const std::size_t first = text.find(separator);
  if (first == std::string_view::npos) return std::nullopt;
  const std::size_t second = text.find(separator, first + 1);
  if (second == std::string_view::npos) return std::nullopt;
  const std::array parts{text.substr(0, first), text.substr(first + 1, second - first - 1),
                         text.substr(second + 1)};
  for (const std::string_view part : parts) {
    if (part.empty() || part.size() > 4 || part.find_first_not_of("0123456789") != std::string_view::npos)
      return std::nullopt;
  }
  return parts;
}

int Number(std::string_view digits) {
  int value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

std::optional<year_month_day> CheckedDate(std::string_view year, std::string_view month,
                                          std::string_view day) {
  const bool usual = (year.size() == 4 || year.size() == 2) && month.size() <= 2 && day.size() <= 2;
  if (!usual) return std::nullopt;
  return DayOf({.year = Number(year), .month = Number(month), .day = Number(day)}, false);
}

}  // namespace

std::optional<DayRange> ReadPeriod(std::string_view text) {
  const std::vector<Token> tokens = Tokens(text);
  for (const Form& form : forms) {
    if (Fits(tokens, form.kinds)) return FromForm(tokens, form.roles);
  }
  return std::nullopt;
}

DayRange DaysOf(const YearMonth& month) {
  const std::chrono::year_month whole =
      std::chrono::year(month.year) / std::chrono::month(static_cast<unsigned>(month.month));
  return {.first = whole / 1, .last = year_month_day(whole / std::chrono::last)};
}

StatementColumn ColumnOf(std::string_view title, const DayRange& days) {
  StatementColumn column{.title = std::string(title), .days = days, .month = {}};
  const YearMonth month{.year = static_cast<std::int16_t>(static_cast<int>(days.first.year())),
                        .month = static_cast<std::int16_t>(static_cast<unsigned>(days.first.month()))};
  if (days == DaysOf(month)) column.month = month;
  return column;
}

std::optional<year_month_day> ReadDate(std::string_view text) {
  if (const auto parts = DateParts(text, '-')) {
    const auto& [year, month, day] = *parts;
    return year.size() == 4 ? CheckedDate(year, month, day) : std::nullopt;
  }
  if (const auto parts = DateParts(text, '/')) return CheckedDate((*parts)[2], (*parts)[0], (*parts)[1]);
  if (const auto parts = DateParts(text, '.')) return CheckedDate((*parts)[2], (*parts)[1], (*parts)[0]);
  return std::nullopt;
}

}  // namespace krnqb::profit_and_loss
