#include "spreadsheet/formula.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <utility>

namespace krnqb::spreadsheet {
namespace {

constexpr std::size_t longestFormula = 8192;  // of any spreadsheet
constexpr int deepestNesting = 60;

bool IsDigit(char character) noexcept {
  return character >= '0' && character <= '9';
}

bool IsLetter(char character) noexcept {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

char Upper(char character) noexcept {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

/// The numbers of a function's arguments.
struct Numbers {
  double sum = 0;
  double least = 0;
  double greatest = 0;
  std::size_t count = 0;

  void Add(double number) {
    least = count == 0 ? number : std::min(least, number);
    greatest = count == 0 ? number : std::max(greatest, number);
    sum += number;
    ++count;
  }
};

std::optional<double> ResultOf(std::string_view function, const Numbers& numbers) {
  if (function == "SUM") return numbers.sum;
  if (function == "MIN") return numbers.least;
  if (function == "MAX") return numbers.greatest;
  if (function == "AVERAGE" && numbers.count > 0) return numbers.sum / static_cast<double>(numbers.count);
  return std::nullopt;
}

// Reads a formula from left to right. Each function returns nothing if it cannot be computed.
class Calculation {
 public:
  Calculation(std::string_view text, const CellSource& cells) : rest_(text), cells_(cells) {}

  std::optional<double> Result() {
    const std::optional<double> result = Sum();
    SkipBlanks();
    return rest_.empty() ? result : std::nullopt;
  }

 private:
  using Value = std::optional<double>;

  void SkipBlanks() {
    while (rest_.starts_with(' ')) rest_.remove_prefix(1);
  }

  bool Take(char sign) {
    SkipBlanks();
    if (!rest_.starts_with(sign)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  Value Sum() {
    Value sum = Product();
    while (sum) {
      const bool plus = Take('+');
      if (!plus && !Take('-')) break;
      const Value next = Product();
      if (!next) return std::nullopt;
      sum = plus ? *sum + *next : *sum - *next;
    }
    return sum;
  }

  Value Product() {
    Value product = Signed();
    while (product) {
      const bool times = Take('*');
      if (!times && !Take('/')) break;
      const Value next = Signed();
      if (!next || (!times && *next == 0)) return std::nullopt;
      product = times ? *product * *next : *product / *next;
    }
    return product;
  }

  Value Signed() {
    if (++depth_ > deepestNesting) return std::nullopt;
    Value value;
    if (Take('-')) {
      value = Signed();
      if (value) value = -*value;
    } else if (Take('+')) {
      value = Signed();
    } else {
      value = Single();
    }
    --depth_;
    return value;
  }

  Value Single() {
    if (Take('(')) {
      const Value value = Sum();
      return value && Take(')') ? value : std::nullopt;
    }
    if (rest_.empty()) return std::nullopt;
    if (IsDigit(rest_.front()) || rest_.front() == '.') return Number();
    if (const std::optional<CellPlace> place = Place()) return Cell(*place);
    return Function();
  }

  Value Number() {
    double number = 0;
    const auto [end, failure] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    if (failure != std::errc()) return std::nullopt;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return number;
  }

  Value Cell(const CellPlace& place) const {
    const FoundCell cell = cells_(place);
    if (cell.kind == FoundCell::Kind::Number) return cell.number;
    if (cell.kind == FoundCell::Kind::Nothing) return 0.0;
    return std::nullopt;
  }

  // Takes a place such as "B7" or "$B$7"; leaves the text alone if it does not begin with one.
  std::optional<CellPlace> Place() {
    constexpr std::size_t mostLetters = 3;
    constexpr std::uint32_t letters = 26;
    std::string_view text = rest_;
    if (text.starts_with('$')) text.remove_prefix(1);
    std::uint32_t column = 0;
    std::size_t length = 0;
    for (; length < text.size() && IsLetter(text[length]); ++length) {
      if (length == mostLetters) return std::nullopt;
      column = column * letters + static_cast<std::uint32_t>(Upper(text[length]) - 'A') + 1;
    }
    if (length == 0) return std::nullopt;
    text.remove_prefix(length);
    if (text.starts_with('$')) text.remove_prefix(1);
    std::uint32_t row = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), row);
    if (failure != std::errc() || row == 0) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    const bool longer = !text.empty() && (IsLetter(text.front()) || text.front() == '(' ||
                                          text.front() == '_' || text.front() == '.' || text.front() == '!');
    if (longer) return std::nullopt;
    rest_ = text;
    return CellPlace{row, column - 1};
  }

  Value Function() {
    std::string name;
    while (!rest_.empty() && IsLetter(rest_.front())) {
      name += Upper(rest_.front());
      rest_.remove_prefix(1);
    }
    if (!rest_.starts_with('(')) return std::nullopt;
    rest_.remove_prefix(1);
    Numbers numbers;
    do {
      if (!AddArgument(numbers)) return std::nullopt;
    } while (Take(','));
    return Take(')') ? ResultOf(name, numbers) : std::nullopt;
  }

  // Adds the numbers of a range or a single cell, or the result of a calculation.
  bool AddArgument(Numbers& numbers) {
    SkipBlanks();
    const std::string_view before = rest_;
    if (const std::optional<CellPlace> first = Place()) {
      std::optional<CellPlace> last = first;
      if (Take(':')) {
        SkipBlanks();
        last = Place();
      }
      SkipBlanks();
      const bool ends = rest_.starts_with(',') || rest_.starts_with(')');
      if (!last) return false;
      if (ends) return AddRange(*first, *last, numbers);
      rest_ = before;
    }
    const Value value = Sum();
    if (value) numbers.Add(*value);
    return value.has_value();
  }

  bool AddRange(const CellPlace& one, const CellPlace& other, Numbers& numbers) const {
    for (const CellPlace& corner : {one, other}) {
      if (cells_(corner).kind == FoundCell::Kind::Unknown) return false;
    }
    const auto [top, bottom] = std::minmax(one.row, other.row);
    const auto [left, right] = std::minmax(one.column, other.column);
    for (std::uint32_t row = top; row <= bottom; ++row) {
      for (std::uint32_t column = left; column <= right; ++column) {
        const FoundCell cell = cells_({row, column});
        if (cell.kind == FoundCell::Kind::Unknown) return false;
        if (cell.kind == FoundCell::Kind::Number) numbers.Add(cell.number);
      }
    }
    return true;
  }

  std::string_view rest_;
  const CellSource& cells_;
  int depth_ = 0;
};

}  // namespace

std::optional<double> ComputeFormula(std::string_view formula, const CellSource& cells) {
  if (!formula.starts_with('=') || formula.size() > longestFormula) return std::nullopt;
  const std::optional<double> result = Calculation(formula.substr(1), cells).Result();
  return result && std::isfinite(*result) ? result : std::nullopt;
}

}  // namespace krnqb::spreadsheet
