#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/import_surroundings.h"
#include "fakes/past_performance_table.h"
#include "import/past_performance/writing.h"

namespace krnqb {
namespace {

using fakes::Cells;
using fakes::CellsOf;
using fakes::PastPerformanceTable;
using Texts = std::vector<std::string>;

constexpr auto sales = "db_pastperformance_sales";
constexpr auto shortTermAssets = "db_pastperformance_shorttermassets";

/// A type and its figures: `base` plus 0.25 per period.
struct TypeFigures {
  const char* type;
  double base;
};
const TypeFigures allTypes[] = {{"Income", 9000},
                                {"Expense", 300},
                                {"CostOfGoodSold", 77},
                                {"Depreciation", -60},
                                {"RetainedEarnings", 70},
                                {"CostOfGoodsSold", 400},
                                {"Bank", 1},
                                {"AccountsReceivable", 2},
                                {"OtherAsset", 3},
                                {"OtherCurrentAsset", 5},
                                {"FixedAsset", 8},
                                {"AccountsPayable", 13},
                                {"CreditCard", 21},
                                {"OtherCurrentLiability", 34},
                                {"LongTermLiability", 55},
                                {"Equity", 89}};

class WritingPastPerformance : public testing::Test {
 protected:
  WritingPastPerformance() { Collect(); }

  /// Creates the collection of an earlier run, without one type.
  void Collect(std::string_view without = {}) {
    surroundings.state.pastPerformance.emplace();
    for (const auto& [type, base] : allTypes) {
      if (type == without) continue;
      cSubtotals record(type);
      for (std::int16_t period = 1; period <= 14; ++period) record.SubTotal(period, base + 0.25 * period);
      surroundings.state.pastPerformance->Add(record, type);
    }
  }
  cSubtotals& Figures(std::string_view type) { return surroundings.state.pastPerformance->At(type); }
  std::string Write(const std::string& table = PastPerformanceTable()) {
    return WritePastPerformance(surroundings.context, table, surroundings.sessionState.qbMajorVersion);
  }
  /// Returns the expected row: a name, the figures of the first periods, then the previous cells.
  static Texts Row(const Texts& figures) {
    Texts cells{"name"};
    cells.insert(cells.end(), figures.begin(), figures.end());
    cells.resize(15, "old");
    return cells;
  }

  fakes::ImportSurroundings surroundings;
};

const Texts untouched = Cells("name", 14, "old");

TEST_F(WritingPastPerformance, WritesEachFigureIntoItsRow) {
  const std::string written = Write();
  EXPECT_EQ(CellsOf(written, sales, 0), Row({"9000.25", "9000.5", "9000.75"}));
  EXPECT_EQ(CellsOf(written, sales, 1), Row({"8600", "8600", "8600"})) << "income minus cost of goods sold";
  EXPECT_EQ(CellsOf(written, sales, 2), untouched);
  EXPECT_EQ(CellsOf(written, sales, 3), Row({"300.25", "300.5", "300.75"}));
  EXPECT_EQ(CellsOf(written, shortTermAssets, 0), Row({"1.25", "1.5", "1.75"}));
  EXPECT_EQ(CellsOf(written, shortTermAssets, 1), Row({"2.25", "2.5", "2.75"}));
  EXPECT_EQ(CellsOf(written, shortTermAssets, 2), untouched);
  EXPECT_EQ(CellsOf(written, shortTermAssets, 3), Row({"8.5", "9", "9.5"})) << "both kinds of other assets";
  EXPECT_EQ(CellsOf(written, "db_pastperformance_longtermassets", 0), Row({"8.25", "8.5", "8.75"}));
  EXPECT_EQ(CellsOf(written, "db_pastperformance_longtermassets", 1), Row({"-59.75", "-59.5", "-59.25"}));
  EXPECT_EQ(CellsOf(written, "db_pastperformance_liabilities", 0), Row({"13.25", "13.5", "13.75"}));
  EXPECT_EQ(CellsOf(written, "db_pastperformance_liabilities", 1), Row({"21.25", "21.5", "21.75"}));
  EXPECT_EQ(CellsOf(written, "db_pastperformance_liabilities", 2), Row({"34.25", "34.5", "34.75"}));
  EXPECT_EQ(CellsOf(written, "db_pastperformance_longtermliabilities", 0), Row({"55.25", "55.5", "55.75"}));
  EXPECT_EQ(CellsOf(written, "db_pastperformance_capital", 0), Row({"89.25", "89.5", "89.75"}));
  EXPECT_EQ(CellsOf(written, "db_pastperformance_capital", 1), Row({"70.25", "70.5", "70.75"}));
  EXPECT_TRUE(surroundings.observer.notices.empty());
}

TEST_F(WritingPastPerformance, ReturnsTheWholeTable) {
  const std::string table = PastPerformanceTable();
  const auto firstRow = table.find("<row>");
  const std::string written = Write(table);
  EXPECT_EQ(written.substr(0, firstRow), table.substr(0, firstRow));
  EXPECT_TRUE(written.ends_with("</block></tableblocks></tableitem>")) << written;
}

TEST_F(WritingPastPerformance, HasFourteenPeriodsForCORAndThreeForAnyOther) {
  for (const int product : {1, 2, 3, 0}) {
    surroundings.state.options.krnProduct = static_cast<QBKRNproduct>(product);
    const bool isCor = product == QBKRN_COR;
    EXPECT_EQ(PastPeriodCount(surroundings.state.options), isCor ? 14 : 3);
    const std::string written = Write();
    for (const auto& [id, rowCount] : fakes::PastPerformanceBlocks()) {
      const Texts cells = CellsOf(written, id, 0);
      EXPECT_NE(cells.at(3), "old") << id;
      EXPECT_EQ(cells.at(4) != "old", isCor) << id;
      EXPECT_EQ(cells.at(14) != "old", isCor) << id;
    }
  }
}

TEST_F(WritingPastPerformance, WritesTheLastOfFourteenPeriods) {
  surroundings.state.options.krnProduct = QBKRN_COR;
  const std::string written = Write();
  EXPECT_EQ(CellsOf(written, sales, 0).at(14), "9003.5");
  EXPECT_EQ(CellsOf(written, "db_pastperformance_capital", 1).at(14), "73.5");
}

struct FigureCase {
  double figure;
  const char* text;
};

TEST_F(WritingPastPerformance, WritesFiguresWithoutAnExponent) {
  for (const auto& [figure, text] : {FigureCase{1200, "1200"},
                                     {-250.5, "-250.5"},
                                     {-0.0, "0"},
                                     {0.1 + 0.2, "0.3"},
                                     {1.0 / 3, "0.333333333333333"},
                                     {1E15, "1000000000000000"},
                                     {-1E15, "-1000000000000000"},
                                     {1234567890123456, "1234567890123460"},
                                     {1E20, "100000000000000000000"},
                                     {0.0001, "0.0001"},
                                     {0.00001, "0.00001"},
                                     {-2.5E-7, "-0.00000025"},
                                     {1.25E-10, "0.000000000125"}}) {
    Figures("Bank").SubTotal(2, figure);
    EXPECT_EQ(CellsOf(Write(), shortTermAssets, 0).at(2), text);
  }
}

// Failures.

TEST_F(WritingPastPerformance, EndsInTheFirstColumnWithoutCostOfGoodsSold) {
  Collect("CostOfGoodsSold");
  const std::string written = Write();
  EXPECT_EQ(CellsOf(written, sales, 0), Row({"9000.25"}));
  EXPECT_EQ(CellsOf(written, sales, 1), untouched);
  EXPECT_EQ(CellsOf(written, sales, 3), untouched);
  EXPECT_EQ(CellsOf(written, shortTermAssets, 0), untouched);
  ASSERT_EQ(surroundings.NoticesOf(NoticeKind::PastPerformanceEnded), 1U);
  for (const Notice& notice : surroundings.observer.notices) {
    if (notice.kind != NoticeKind::PastPerformanceEnded) continue;
    EXPECT_EQ(notice.description, "CostOfGoodsSold");
    EXPECT_EQ(notice.place.operation, Operation::WritePastPerformance);
  }
  EXPECT_EQ(surroundings.errorPair.number, 0);
}

TEST_F(WritingPastPerformance, EndsInTheFirstColumnOfTheAssetsWithoutOtherAssets) {
  for (const std::string_view missing : {"OtherAsset", "OtherCurrentAsset"}) {
    Collect(missing);
    const std::string written = Write();
    EXPECT_EQ(CellsOf(written, sales, 3), Row({"300.25", "300.5", "300.75"}));
    EXPECT_EQ(CellsOf(written, shortTermAssets, 0), Row({"1.25"}));
    EXPECT_EQ(CellsOf(written, shortTermAssets, 1), Row({"2.25"}));
    EXPECT_EQ(CellsOf(written, shortTermAssets, 3), untouched);
    EXPECT_EQ(CellsOf(written, "db_pastperformance_longtermassets", 0), untouched);
  }
}

TEST_F(WritingPastPerformance, EndsAtAnyMissingType) {
  const std::string whole = Write();
  for (const auto& [type, base] : allTypes) {
    surroundings.observer.notices.clear();
    Collect(type);
    const std::string written = Write();
    const bool isNamed = std::string_view(type) != "CostOfGoodSold";
    EXPECT_EQ(written == whole, !isNamed) << type;
    EXPECT_EQ(surroundings.NoticesOf(NoticeKind::PastPerformanceEnded), isNamed ? 1U : 0U) << type;
  }
}

TEST_F(WritingPastPerformance, ReturnsTheEmptyTextIfNothingWasWritten) {
  Collect("Income");
  EXPECT_EQ(Write(), "");
  surroundings.state.pastPerformance.reset();
  EXPECT_EQ(Write(), "");
}

TEST_F(WritingPastPerformance, ReturnsTheEmptyTextForAMalformedTable) {
  EXPECT_EQ(Write("<tableitem>"), "");
  EXPECT_EQ(Write(""), "");
}

TEST_F(WritingPastPerformance, EndsAtAMissingBlock) {
  EXPECT_EQ(Write(PastPerformanceTable(14, sales)), "") << "no cell was written";
  const std::string written = Write(PastPerformanceTable(14, "db_pastperformance_longtermassets"));
  EXPECT_EQ(CellsOf(written, shortTermAssets, 3), Row({"8.5", "9", "9.5"}));
  EXPECT_EQ(CellsOf(written, "db_pastperformance_liabilities", 0), untouched);
}

TEST_F(WritingPastPerformance, EndsAtAMissingCell) {
  const std::string written = Write(PastPerformanceTable(2));
  EXPECT_EQ(CellsOf(written, sales, 0), (Texts{"name", "9000.25", "9000.5"}));
  EXPECT_EQ(CellsOf(written, sales, 3), (Texts{"name", "300.25", "300.5"}));
  EXPECT_EQ(CellsOf(written, shortTermAssets, 0), Cells("name", 2, "old"));
}

TEST_F(WritingPastPerformance, EndsIfASumIsOutOfRange) {
  Figures("OtherAsset").SubTotal(2, 1.7E308);
  Figures("OtherCurrentAsset").SubTotal(2, 1.7E308);
  const std::string written = Write();
  EXPECT_EQ(CellsOf(written, shortTermAssets, 3), Row({"8.5"}));
  EXPECT_EQ(CellsOf(written, shortTermAssets, 0), Row({"1.25", "1.5"}));
}

TEST_F(WritingPastPerformance, CountsOnlyElementsAsRowsAndCells) {
  std::string table = PastPerformanceTable();
  const auto replaceAll = [&table](const std::string& what, const std::string& with) {
    for (auto at = table.find(what); at != std::string::npos; at = table.find(what, at + with.size())) {
      table.replace(at, what.size(), with);
    }
  };
  replaceAll("<row>", "\n<!-- row --><row> ");
  replaceAll("<c>", "<?cell?> <c>");
  const std::string written = Write(table);
  EXPECT_EQ(CellsOf(written, sales, 3), Row({"300.25", "300.5", "300.75"}));
}

// Collecting before writing.

TEST_F(WritingPastPerformance, CollectsOnlyWithBalancesAndPastPerformance) {
  struct Case {
    QBKRN_BalancesImport balances;
    bool include;
    bool collects;
  };
  for (const auto& [balances, include, collects] : {Case{BalImport_None, false, false},
                                                    {BalImport_None, true, false},
                                                    {BalImport_All, false, false},
                                                    {BalImport_Planned, true, true},
                                                    {BalImport_Actual, true, true},
                                                    {BalImport_All, true, true}}) {
    surroundings.journal->Clear();
    surroundings.state.options.balancesImport = balances;
    surroundings.state.options.includePastPerformance = include;
    Write();
    EXPECT_EQ(surroundings.journal->Count("ProcessRequest 60"), collects ? 1 : 0) << balances << include;
  }
}

TEST_F(WritingPastPerformance, WritesNothingIfTheAccountRequestIsRefused) {
  surroundings.state.options.balancesImport = BalImport_All;
  surroundings.state.options.includePastPerformance = true;
  surroundings.journal->Fail("ProcessRequest 60", Error(-2147220477, "unexpected"));
  EXPECT_EQ(Write(), "");
  EXPECT_FALSE(surroundings.state.pastPerformance) << "the earlier collection is discarded";
  EXPECT_EQ(surroundings.errorPair.number, 0);
}

}  // namespace
}  // namespace krnqb
