#include "profit_and_loss/csv_lines.h"

#include <utility>

#include "profit_and_loss/report.h"
#include "profit_and_loss/words.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::size_t mostCellsOfALine = 512;
constexpr std::size_t mostCells = 20'000'000;

class CsvReader {
 public:
  CsvReader(std::string_view text, char separator) : rest_(text), separator_(separator) {}

  CsvText Read() {
    while (!rest_.empty() && !result_.fault) {
      CsvRecord record = Record();
      while (!record.cells.empty() && Trimmed(record.cells.back()).empty()) record.cells.pop_back();
      if (record.cells.empty() || result_.fault) continue;
      cells_ += record.cells.size();
      if (result_.records.size() == mostRows || cells_ > mostCells)
        Stop(record.line, "the document is too long", "give fewer months at once");
      result_.records.push_back(std::move(record));
    }
    return std::move(result_);
  }

 private:
  CsvRecord Record() {
    CsvRecord record{.line = line_, .cells = {}};
    for (;;) {
      record.cells.push_back(Cell());
      if (record.cells.size() > mostCellsOfALine) {
        Stop(line_, "the line has more than 512 cells",
             "check that the document is a profit and loss as CSV");
      }
      if (result_.fault || AtLineEnd()) break;
      rest_.remove_prefix(1);
    }
    TakeLineEnd();
    return record;
  }

  std::string Cell() {
    std::string_view ahead = rest_;
    while (ahead.starts_with(' ')) ahead.remove_prefix(1);
    if (ahead.starts_with('"')) {
      rest_ = ahead.substr(1);
      return QuotedCell();
    }
    std::size_t length = 0;
    while (length < rest_.size() && rest_[length] != separator_ && !IsLineEnd(rest_[length])) ++length;
    std::string cell(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return cell;
  }

  std::string QuotedCell() {
    const std::size_t begin = line_;
    std::string cell;
    for (;;) {
      const std::size_t mark = rest_.find('"');
      if (mark == std::string_view::npos) {
        Stop(begin, "a quotation mark is not closed, so the document may be cut off",
             "export the report again and give the whole file");
        return cell;
      }
      for (const char character : rest_.substr(0, mark)) line_ += character == '\n' ? 1 : 0;
      cell += rest_.substr(0, mark);
      rest_.remove_prefix(mark + 1);
      if (!rest_.starts_with('"')) break;
      cell += '"';
      rest_.remove_prefix(1);
    }
    while (rest_.starts_with(' ')) rest_.remove_prefix(1);
    if (!AtLineEnd() && rest_.front() != separator_) {
      Stop(line_, "there is text after a quoted cell",
           R"(write quotation marks within a cell twice, and separate cells with "," or ";")");
    }
    return cell;
  }

  static bool IsLineEnd(char character) noexcept { return character == '\n' || character == '\r'; }
  bool AtLineEnd() const noexcept { return rest_.empty() || IsLineEnd(rest_.front()); }

  void TakeLineEnd() noexcept {
    rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : rest_.empty() ? 0 : 1);
    ++line_;
  }

  void Stop(std::size_t line, std::string_view what, std::string_view advice) {
    if (!result_.fault) result_.fault = CsvFault{.line = line, .what = std::string(what), .advice = advice};
  }

  std::string_view rest_;
  char separator_;
  std::size_t line_ = 1;
  std::size_t cells_ = 0;
  CsvText result_;
};

}  // namespace

CsvText ReadCsv(std::string_view text, char separator) {
  return CsvReader(text, separator).Read();
}

}  // namespace krnqb::profit_and_loss
