#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "fakes/amount_tables.h"
#include "fakes/import_surroundings.h"
#include "import/growth/formulas.h"

// Tests of all three writers: sales, costs and expenses.

namespace krnqb {
namespace {

using fakes::ActualRow;
using fakes::AmountBlock;
using fakes::Cells;
using fakes::CellsOf;
using fakes::PlannedRow;
using Texts = std::vector<std::string>;

struct Writer {
  const char* name;
  void (*write)(const ImportState&, TablesDocument&, Observer&);
  QBKRNproduct product;
  const char* plannedBlock;
  const char* joint;
  std::optional<SubtotalCollection> ImportState::*subtotals;
  std::int16_t ImportOptions::*rate;
};

void PrintTo(const Writer& writer, std::ostream* output) {
  *output << writer.name;
}

const Writer writers[] = {{"Sales", &WriteSalesGrowth, QBKRN_ALD, "db_sales_values_sales", " * (1 + B",
                           &ImportState::incomeSubtotals, &ImportOptions::growthRateIncome},
                          {"Costs", &WriteCostGrowth, QBKRN_ALD, "db_sales_values_costs", "* (1 + B",
                           &ImportState::costSubtotals, &ImportOptions::growthRateCogs},
                          {"Expenses", &WriteExpenseGrowth, QBKRN_ALD, "db_income_range_cat3", "* (1 + B",
                           &ImportState::expenseSubtotals, &ImportOptions::growthRateExpenses},
                          {"ExpensesOfCOR", &WriteExpenseGrowth, QBKRN_COR, "db_income_range_cat3",
                           "* (1 + B", &ImportState::expenseSubtotals, &ImportOptions::growthRateExpenses},
                          {"ExpensesOfBRI", &WriteExpenseGrowth, QBKRN_BRI, "db_contributionmargin_cat2",
                           "* (1 + B", &ImportState::expenseSubtotals, &ImportOptions::growthRateExpenses}};

const Texts blue = {"1200", "2400", "3600",  "4800",  "6000",  "7200",
                    "8400", "9600", "10800", "12000", "13200", "14400"};
const Texts red = {"-0.5", "-1", "-1.5", "-2", "-2.5", "-3", "-3.5", "-4", "-4.5", "-5", "-5.5", "-6"};

class GrowthWriters : public testing::TestWithParam<Writer> {
 protected:
  GrowthWriters() {
    state.options.krnProduct = GetParam().product;
    state.options.balancesImport = BalImport_All;
    state.options.*GetParam().rate = 10;
    state.*GetParam().subtotals = fakes::ImportSurroundings::Zeros({"Blue", "Red"});
    for (std::int16_t month = 1; month <= 12; ++month) {
      Subtotals().At("Blue").SubTotal(month, 1200 * month);
      Subtotals().At("Red").SubTotal(month, -0.5 * month);
    }
  }

  SubtotalCollection& Subtotals() { return *(state.*GetParam().subtotals); }
  std::string Planned() const { return GetParam().plannedBlock; }
  std::string Actual() const { return Planned() + "_actual"; }
  /// Returns the default blocks: rows Blue, Other and Red in both, from row 5 on.
  std::string Table() const {
    return AmountBlock(Planned(), "startrow=\"5\"",
                       PlannedRow("Blue") + PlannedRow("Other") + PlannedRow("Red")) +
           AmountBlock(Actual(), "", ActualRow("Blue") + ActualRow("Other") + ActualRow("Red"));
  }
  /// Returns the text of a document with one table of these blocks, as a writer leaves it.
  static std::string TextOf(const std::string& blocks) {
    return "<tables>\n\n<tableitem id=\"1\">\n<lastsavedid>QB37257</lastsavedid>\n<tableblocks>" + blocks +
           "</tableblocks>\n</tableitem>\n</tables>";
  }
  /// Runs the writer on a document with one table per text of blocks and returns the document's text.
  std::string Write(const std::vector<std::string>& tables) {
    TablesDocument document;
    int tableId = 0;
    for (const std::string& blocks : tables) {
      const XmlElement tableBlocks = XmlElement::Parse("<tableblocks>" + blocks + "</tableblocks>");
      document.Add(std::to_string(++tableId), tableBlocks, clock);
    }
    GetParam().write(state, document, observer);
    return document.Text();
  }
  std::string Write(const std::string& blocks) { return Write(std::vector<std::string>{blocks}); }

  /// Returns the cells of a planned row with the formulas for these amounts.
  Texts PlannedCells(const std::string& name, const Texts& amounts, const std::string& row) const {
    Texts cells{name, "0.1"};
    for (const std::string& amount : amounts) cells.push_back("=" + amount + GetParam().joint + row + ")");
    return cells;
  }
  static Texts ActualCells(const std::string& name, const Texts& amounts) {
    Texts cells{name};
    cells.insert(cells.end(), amounts.begin(), amounts.end());
    return cells;
  }

  ImportState state;
  fakes::RecordingObserver observer;
  fakes::FixedClock clock{LocalDateTime{2002, 1, 1, 9, 0, 0}};
};

INSTANTIATE_TEST_SUITE_P(Growth, GrowthWriters, testing::ValuesIn(writers),
                         [](const auto& writer) { return std::string(writer.param.name); });

TEST_P(GrowthWriters, WriteRatesFormulasAndActualAmounts) {
  const std::string written = Write(Table());
  EXPECT_EQ(CellsOf(written, Planned(), 0), PlannedCells("Blue", blue, "5"));
  EXPECT_EQ(CellsOf(written, Planned(), 2), PlannedCells("Red", red, "7"));
  EXPECT_EQ(CellsOf(written, Actual(), 0), ActualCells("Blue", blue));
  EXPECT_EQ(CellsOf(written, Actual(), 2), ActualCells("Red", red));
}

TEST_P(GrowthWriters, WriteTheExactFormula) {
  Subtotals().At("Red").SubTotal(1, -250.5);
  EXPECT_EQ(CellsOf(Write(Table()), Planned(), 2)[2], std::string("=-250.5") + GetParam().joint + "7)");
}

TEST_P(GrowthWriters, LeaveARowWithoutASubtotalUnchanged) {
  const std::string written = Write(Table());
  EXPECT_EQ(CellsOf(written, Planned(), 1), Cells("Other", 13, "p"));
  EXPECT_EQ(CellsOf(written, Actual(), 1), Cells("Other", 12, "a"));
}

TEST_P(GrowthWriters, ChangeNothingWithoutBalances) {
  state.options.balancesImport = BalImport_None;
  EXPECT_EQ(Write(Table()), TextOf(Table()));
  state.options.balancesImport = static_cast<QBKRN_BalancesImport>(-1);
  EXPECT_EQ(Write(Table()), TextOf(Table()));
}

TEST_P(GrowthWriters, WriteNoActualAmountsForPlannedBalances) {
  state.options.balancesImport = BalImport_Planned;
  const std::string written = Write(Table());
  EXPECT_EQ(CellsOf(written, Planned(), 0), PlannedCells("Blue", blue, "5"));
  EXPECT_EQ(CellsOf(written, Actual(), 0), Cells("Blue", 12, "a"));
}

TEST_P(GrowthWriters, WriteRatesButNoFormulasForActualBalances) {
  state.options.balancesImport = BalImport_Actual;
  const std::string written = Write(Table());
  Texts planned = Cells("Blue", 13, "p");
  planned[1] = "0.1";
  EXPECT_EQ(CellsOf(written, Planned(), 0), planned);
  EXPECT_EQ(CellsOf(written, Actual(), 0)[1], "1200");
  EXPECT_EQ(CellsOf(written, Actual(), 0)[12], "14400");
}

TEST_P(GrowthWriters, WriteOnlyTheRateForAnyOtherBalances) {
  state.options.balancesImport = static_cast<QBKRN_BalancesImport>(4);
  const std::string written = Write(Table());
  Texts planned = Cells("Blue", 13, "p");
  planned[1] = "0.1";
  EXPECT_EQ(CellsOf(written, Planned(), 0), planned);
  EXPECT_EQ(CellsOf(written, Actual(), 0), Cells("Blue", 12, "a"));
}

TEST_P(GrowthWriters, CountRowsWithoutASubtotal) {
  const std::string written =
      Write(AmountBlock(Planned(), "startrow=\"12\"", PlannedRow("Other") + PlannedRow("Blue")));
  EXPECT_EQ(CellsOf(written, Planned(), 1)[2], std::string("=1200") + GetParam().joint + "13)");
}

TEST_P(GrowthWriters, CountChildElementsOnly) {
  const std::string written =
      Write(AmountBlock(Planned(), "startrow=\"1\"",
                        "\n <!-- rows --> <?note?>" + PlannedRow("Other") + "<!-- next -->\n" +
                            "<row> <!-- name --> <c>Blue</c> <!-- rate --> <c>p</c><?note?><c>p</c></row>"));
  const Texts cells = CellsOf(written, Planned(), 1);
  EXPECT_EQ(cells, (Texts{"Blue", "0.1", std::string("=1200") + GetParam().joint + "2)"}));
}

TEST_P(GrowthWriters, FindSubtotalsCaseInsensitivelyButWithTheirBlanks) {
  const std::string written = Write(
      AmountBlock(Planned(), "startrow=\"1\"", PlannedRow("BLUE") + PlannedRow(" Red") + PlannedRow("red")));
  EXPECT_EQ(CellsOf(written, Planned(), 0)[1], "0.1");
  EXPECT_EQ(CellsOf(written, Planned(), 1), Cells(" Red", 13, "p"));
  EXPECT_EQ(CellsOf(written, Planned(), 2)[1], "0.1");
}

TEST_P(GrowthWriters, FoldTheCaseOfEveryLetter) {
  state.*GetParam().subtotals = fakes::ImportSurroundings::Zeros({"Café Ω", "Straße"});
  const std::string written =
      Write(AmountBlock(Planned(), "startrow=\"1\"", PlannedRow("CAFÉ ω") + PlannedRow("STRASSE")));
  EXPECT_EQ(CellsOf(written, Planned(), 0)[1], "0.1");
  EXPECT_EQ(CellsOf(written, Planned(), 1)[1], "p");
}

TEST_P(GrowthWriters, WriteEveryRowOfTheSameName) {
  const std::string written =
      Write(AmountBlock(Planned(), "startrow=\"1\"", PlannedRow("Blue") + PlannedRow("Blue")));
  EXPECT_EQ(CellsOf(written, Planned(), 0), PlannedCells("Blue", blue, "1"));
  EXPECT_EQ(CellsOf(written, Planned(), 1), PlannedCells("Blue", blue, "2"));
}

struct StartRowCase {
  const char* attribute;
  const char* secondRow;
};

TEST_P(GrowthWriters, CountFromTheBlocksStartRow) {
  for (const auto& [attribute, secondRow] : {StartRowCase{"startrow=\"7\"", "8"},
                                             {"startrow=\"5.5\"", "7"},
                                             {"startrow=\"6.5\"", "7"},
                                             {"startrow=\"0\"", "1"},
                                             {"", "1"},
                                             {"startrow=\"\"", "1"},
                                             {"startrow=\"first\"", "1"},
                                             {"startrow=\"32767\"", "32768"},
                                             {"startrow=\"32768\"", "1"},
                                             {"startrow=\"-3\"", "-2"},
                                             {"startrow=\"99999999999\"", "1"}}) {
    const std::string written =
        Write(AmountBlock(Planned(), attribute, PlannedRow("Other") + PlannedRow("Blue")));
    EXPECT_EQ(CellsOf(written, Planned(), 1)[2], std::string("=1200") + GetParam().joint + secondRow + ")")
        << attribute;
  }
}

TEST_P(GrowthWriters, SkipRowsAndCellsMissingFromTheActualBlock) {
  const std::string planned =
      AmountBlock(Planned(), "startrow=\"5\"", PlannedRow("Other") + PlannedRow("Blue"));
  const std::string narrow = fakes::WideRow("Blue", 3, "a");
  for (const std::string& actual : {std::string(), AmountBlock(Actual(), "", ActualRow("Other")),
                                    AmountBlock(Actual(), "", ActualRow("Other") + narrow)}) {
    const std::string written = Write(planned + actual);
    EXPECT_EQ(CellsOf(written, Planned(), 1), PlannedCells("Blue", blue, "6")) << actual;
  }
  const std::string written = Write(planned + AmountBlock(Actual(), "", ActualRow("Other") + narrow));
  EXPECT_EQ(CellsOf(written, Actual(), 1), (Texts{"Blue", "1200", "2400", "3600"}));
}

TEST_P(GrowthWriters, MatchActualRowsByPosition) {
  const std::string written =
      Write(AmountBlock(Planned(), "startrow=\"5\"", PlannedRow("Other") + PlannedRow("Blue")) +
            AmountBlock(Actual(), "", ActualRow("Blue") + ActualRow("*null*")));
  EXPECT_EQ(CellsOf(written, Actual(), 0), Cells("Blue", 12, "a"));
  EXPECT_EQ(CellsOf(written, Actual(), 1)[0], "*null*");
  EXPECT_EQ(CellsOf(written, Actual(), 1)[1], "1200");
}

TEST_P(GrowthWriters, SkipCellsMissingFromThePlannedRow) {
  const std::string written =
      Write(AmountBlock(Planned(), "startrow=\"5\"",
                        "<row/><row><c>Red</c></row>" + fakes::WideRow("Blue", 2, "p") + PlannedRow("Red")) +
            AmountBlock(Actual(), "", ActualRow("1") + ActualRow("2") + ActualRow("3") + ActualRow("4")));
  EXPECT_EQ(CellsOf(written, Planned(), 1), Texts{"Red"});
  EXPECT_EQ(CellsOf(written, Planned(), 2),
            (Texts{"Blue", "0.1", std::string("=1200") + GetParam().joint + "7)"}));
  EXPECT_EQ(CellsOf(written, Planned(), 3), PlannedCells("Red", red, "8"));
  EXPECT_EQ(CellsOf(written, Actual(), 0), Cells("1", 12, "a"));
  EXPECT_EQ(CellsOf(written, Actual(), 1)[12], "-6") << "the actual row is still written";
}

TEST_P(GrowthWriters, WriteNothingWithoutThePlannedBlock) {
  const std::string actual = AmountBlock(Actual(), "", ActualRow("Blue"));
  EXPECT_EQ(Write(actual), TextOf(actual));
}

TEST_P(GrowthWriters, UseTheFirstBlockOfAnIdInTheDocument) {
  const std::string planned = AmountBlock(Planned(), "startrow=\"5\"", PlannedRow("Blue"));
  const std::string actual = AmountBlock(Actual(), "", ActualRow("Blue"));
  const std::string written = Write({planned + actual, planned + actual});
  const std::string second = written.substr(written.rfind("<tableblocks>"));
  EXPECT_EQ(CellsOf(written, Planned(), 0)[1], "0.1");
  EXPECT_EQ(CellsOf(written, Actual(), 0)[1], "1200");
  EXPECT_EQ(second, "<tableblocks>" + planned + actual + "</tableblocks>\n</tableitem>\n</tables>");
}

TEST_P(GrowthWriters, FindTheActualBlockAnywhereInTheDocument) {
  const std::string written = Write({"<a>" + AmountBlock(Actual(), "", ActualRow("Blue")) + "</a>",
                                     AmountBlock(Planned(), "startrow=\"5\"", PlannedRow("Blue"))});
  EXPECT_EQ(CellsOf(written, Actual(), 0)[12], "14400");
}

TEST_P(GrowthWriters, LeaveADocumentWithoutTablesEmpty) {
  EXPECT_EQ(Write(std::vector<std::string>()), "<tables>\n\n</tables>");
  for (const Notice& notice : observer.notices) EXPECT_EQ(notice.kind, NoticeKind::Warning);
}

TEST_P(GrowthWriters, LeaveAllRowsUnchangedWithoutSubtotals) {
  state.*GetParam().subtotals = std::nullopt;
  EXPECT_EQ(Write(Table()), TextOf(Table()));
}

TEST_P(GrowthWriters, ReplaceTheWholeContentOfACell) {
  const std::string row = "<row><c>Bl<b>ue</b></c><c>1<b>2</b><!-- 3 --></c><c><![CDATA[4]]></c></row>";
  const std::string written = Write(AmountBlock(Planned(), "startrow=\"5\"", row));
  EXPECT_NE(written.find("<c>0.1</c>"), std::string::npos) << written;
  EXPECT_NE(written.find(std::string("<c>=1200") + GetParam().joint + "5)</c>"), std::string::npos)
      << written;
}

TEST_P(GrowthWriters, KeepTheRestOfATable) {
  const std::string rest = "<t a=\"b\">\r\n<!-- e --><![CDATA[<f>]]></t>";
  EXPECT_EQ(Write(rest), TextOf("<t a=\"b\">\n<!-- e --><![CDATA[<f>]]></t>"));
}

TEST_P(GrowthWriters, ReportABlockWithoutAStartRow) {
  Write(AmountBlock(Planned(), "startrow=\"5\"", PlannedRow("Blue")));
  EXPECT_FALSE(observer.Reported(NoticeKind::StatementSkipped, error_number::typeMismatch));
  Write(AmountBlock(Planned(), "", PlannedRow("Blue")));
  EXPECT_TRUE(observer.Reported(NoticeKind::StatementSkipped, error_number::typeMismatch));
}

}  // namespace
}  // namespace krnqb
