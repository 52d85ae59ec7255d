#include "import/past_performance/writing.h"

#include <cmath>
#include <span>
#include <vector>

#include "import/past_performance/collection.h"
#include "krnqb/booking.h"
#include "plan/table_identifiers.h"
#include "qbxml/response_element.h"
#include "support/error_handling.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

constexpr Operation operation = Operation::WritePastPerformance;

// The source of a row's figure: an account type, with another added or subtracted.
struct PastRow {
  std::size_t row;
  std::string_view type;
  std::string_view addedType = {};
  std::string_view subtractedType = {};
};

struct PastBlock {
  std::string_view id;
  std::vector<PastRow> rows;
};

// Rows not listed here keep the plan's content.
const std::vector<PastBlock>& PastBlocks() {
  static const std::vector<PastBlock> blocks = {
      {"db_pastperformance_sales",
       {{.row = 0, .type = "Income"},
        {.row = 1, .type = "Income", .subtractedType = "CostOfGoodsSold"},
        {.row = 3, .type = "Expense"}}},
      {"db_pastperformance_shorttermassets",
       {{.row = 0, .type = "Bank"},
        {.row = 1, .type = "AccountsReceivable"},
        {.row = 3, .type = "OtherAsset", .addedType = "OtherCurrentAsset"}}},
      {"db_pastperformance_longtermassets",
       {{.row = 0, .type = "FixedAsset"}, {.row = 1, .type = "Depreciation"}}},
      {"db_pastperformance_liabilities",
       {{.row = 0, .type = "AccountsPayable"},
        {.row = 1, .type = "CreditCard"},
        {.row = 2, .type = "OtherCurrentLiability"}}},
      {"db_pastperformance_longtermliabilities", {{.row = 0, .type = "LongTermLiability"}}},
      {"db_pastperformance_capital", {{.row = 0, .type = "Equity"}, {.row = 1, .type = "RetainedEarnings"}}}};
  return blocks;
}

class PastWriter {
 public:
  PastWriter(SubtotalCollection* pastPerformance, Observer& observer)
      : collection_(pastPerformance), observer_(observer) {}

  void Write(const XmlElement& table, std::int16_t periodCount) {
    for (const PastBlock& block : PastBlocks()) {
      const std::vector<XmlElement> rows =
          table.Select("//block[@id = \"" + std::string(block.id) + "\"]").Children();
      for (std::int16_t period = 1; period <= periodCount; ++period) {
        for (const PastRow& row : block.rows) {
          const std::string text = WriteCell(rows, row, period);
          Report(block, rows[row.row], row, period, text);
        }
      }
    }
  }

  bool AnyWritten() const noexcept { return anyWritten_; }

 private:
  // Returns the cell's new text.
  std::string WriteCell(std::span<const XmlElement> rows, const PastRow& row, std::int16_t period) {
    double figure = FigureOf(row.type, period);
    if (!row.addedType.empty()) figure += FigureOf(row.addedType, period);
    if (!row.subtractedType.empty()) figure -= FigureOf(row.subtractedType, period);
    if (!std::isfinite(figure)) throw Error(error_number::overflow);
    if (row.row >= rows.size()) throw Error(error_number::objectNotSet);
    XmlElement cell = rows[row.row].FirstChild();
    for (std::int16_t column = 0; column < period; ++column) cell = cell.NextSibling();
    std::string text = PlainNumberText(figure);
    cell.SetText(text);
    anyWritten_ = true;
    return text;
  }

  // Passes on the cell, if bookings are received.
  void Report(const PastBlock& block, const XmlElement& cells, const PastRow& row, std::int16_t period,
              const std::string& text) {
    BookingReceiver* const receiver = observer_.Bookings();
    if (receiver == nullptr) return;
    const std::string name = cells.FirstChild().Text();
    std::vector<CellTerm> terms;
    for (const std::string_view type : {row.type, row.addedType, row.subtractedType}) {
      if (type.empty()) continue;
      terms.push_back({.slot = {.group = AmountGroup::PastPerformance, .name = type, .number = period},
                       .subtracted = type == row.subtractedType});
    }
    receiver->WriteCell({.content = CellContent::PastFigure,
                         .table = table_id::pastPerformance,
                         .block = block.id,
                         .row = name,
                         .rowNumber = static_cast<std::int32_t>(row.row) + 1,
                         .column = period,
                         .number = period,
                         .text = text,
                         .terms = terms});
  }

  double FigureOf(std::string_view type, std::int16_t period) {
    if (collection_ == nullptr) throw Error(error_number::invalidProcedureCall);
    return RequireType(*collection_, type, operation, observer_).SubTotal(period);
  }

  SubtotalCollection* collection_;
  Observer& observer_;
  bool anyWritten_ = false;
};

}  // namespace

std::int16_t PastPeriodCount(const ImportOptions& options) noexcept {
  return options.krnProduct == QBKRN_COR ? cSubtotals::slotCount : std::int16_t{3};
}

std::string WritePastPerformance(ImportContext& context, const std::string& tableText,
                                 std::int16_t majorVersion) {
  const ImportOptions& options = context.state.options;
  const Place place{.operation = operation};
  const std::int16_t periodCount = PastPeriodCount(options);
  if (options.balancesImport != BalImport_None && options.includePastPerformance)
    CollectPastPerformance(context, majorVersion);
  auto& collection = context.state.pastPerformance;
  PastWriter writer(collection ? &*collection : nullptr, context.observer);
  const XmlElement table = ResponseElement(tableText, {});
  const bool complete = EndOnError(
      context.observer, place,
      [&] {
        if (!table) throw Error(error_number::objectNotSet);
        writer.Write(table, periodCount);
      },
      endOfPastPerformance);
  return complete || writer.AnyWritten() ? table.Xml() : std::string();
}

cSubtotals& RequireType(SubtotalCollection& collection, std::string_view type, Operation endedOperation,
                        Observer& observer) {
  cSubtotals* const item = collection.Find(type);
  if (item == nullptr) {
    observer.Notify(Notice{.kind = NoticeKind::PastPerformanceEnded,
                           .place = {.operation = endedOperation},
                           .number = error_number::invalidProcedureCall,
                           .description = std::string(type),
                           .errorKind = ErrorKind::InvalidProcedureCall});
    throw Error(error_number::invalidProcedureCall);
  }
  return *item;
}

}  // namespace krnqb
