#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace krnqb::profit_and_loss {

/// A document has at most this many rows.
inline constexpr std::size_t mostRows = 2'000'000;
/// A profit and loss has at most this many accounts and columns of amounts.
inline constexpr std::size_t mostAccounts = 20'000;
inline constexpr std::size_t mostAmountColumns = 120;

/// What a document says about a row. Rows of CSV documents are Unstated.
enum class RowKind : std::uint8_t { Unstated, Heading, Account, Total };

/// A row as captured: texts only.
struct ReportRow {
  std::size_t number = 0;  ///< the line or row number, for messages
  RowKind kind = RowKind::Unstated;
  std::size_t depth = 0;  ///< grows with the indentation; 0 if the document has none
  std::string label;
  std::string account;  ///< the account's full name, if the document states it
  /// The texts that are not blank, with the position of their column, in ascending order.
  std::vector<std::pair<std::size_t, std::string>> cells;
};

struct ReportColumn {
  std::string title;
  std::string type;  ///< as the document states it, such as "TxnType"; may be empty
};

/// How the document separates and writes amounts.
enum class AmountNotation : std::uint8_t { Point, PointOrComma };

/// A report as captured from a document, before its texts are interpreted.
struct CapturedReport {
  std::string document;      ///< named in messages
  std::string_view rowWord;  ///< what rows are called in messages: "line" or "row"
  bool detail = false;       ///< whether its rows are transactions
  bool indented = false;     ///< whether depths tell which account is below which
  AmountNotation notation = AmountNotation::Point;
  std::string title;
  std::string company;
  std::string basis;
  std::string period;                 ///< a text such as "January through December 2002"
  std::vector<ReportColumn> columns;  ///< those before the amounts have no meaning in a summary report
  std::size_t firstAmount = 0;        ///< the position of the first column after those of the labels
  std::vector<ReportRow> rows;
  std::vector<std::string> findings;
};

}  // namespace krnqb::profit_and_loss
