#include "cli/explain/command.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/workplace.h"
#include "support/display_width.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;

class Explain : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    place_ = new Workplace();
    place_->NurseryYear();
    RunProgram(place_->ImportArguments("ald.kpf", {"--expenses", "--income", "--balances", "all",
                                                   "--past-performance", "--ledger", *place_ / "n.kql"}));
  }
  static void TearDownTestSuite() { delete place_; }

  static ProgramRun Run(const Words& more) { return RunProgram(With({"explain", *place_ / "n.kql"}, more)); }
  static nlohmann::json Json(const Words& more) {
    const ProgramRun run = Run(With(more, {"--json"}));
    EXPECT_EQ(run.code, 0) << run.err;
    return nlohmann::json::parse(run.out);
  }

  // Shared, since the tests only read.
  static inline Workplace* place_ = nullptr;
};

TEST_F(Explain, ShowsTheLinesOfAMonth) {
  const ProgramRun run = Run({"--row", "job expenses", "--month", "2002-03"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out, R"(Job Expenses, March 2002: -140.00
  in Planned expenses row 7: =-140* (1 + B15), Actual expenses row 7: -140
  Charged to the expense account:
    2002-03-12  Credit card c…  44120  Stone & Grav…  Materials  212.50   212.50
    2002-03-12  Credit card c…  44120  Stone & Grav…  Materials   64.75    64.75
  Billed to a customer, taken back:
    2002-03-29  Invoice         1043   Cedar Street…  Materials  212.50  -212.50
    2002-03-29  Invoice         1043   Cedar Street…  Materials   64.75   -64.75
    2002-03-29  Invoice         1043   Cedar Street…  Permits    140.00  -140.00
    Sum                                                                  -140.00

Growth rate, Planned expenses row 7: 0
)");
}

TEST_F(Explain, ShowsTheCostOfEachSale) {
  const ProgramRun run = Run({"--row", "Cost of Goods Sold", "--month", "2002-01"});
  EXPECT_NE(run.out.find("5 x 3.375  16.875\n"), std::string::npos) << run.out;
}

TEST_F(Explain, ShowsASpreadBalance) {
  const ProgramRun run = Run({"--row", "Payroll Expenses", "--month", "2002-02"});
  EXPECT_NE(run.out.find("2,214.80 / 12 months"), std::string::npos) << run.out;
}

TEST_F(Explain, ShowsAYearWithItsSumAndTheGrowthRates) {
  const ProgramRun run = Run({"--row", "Rent", "--table", "planned expenses"});
  EXPECT_NE(run.out.find("rent, January 2002: "), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("rent, December 2002: "), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("Growth rate, Planned expenses row 2: 0\n"), std::string::npos) << run.out;
  EXPECT_TRUE(run.out.ends_with("rent, the year: 11,610.00\n")) << run.out;
  EXPECT_EQ(run.out.find("Actual expenses"), std::string::npos) << run.out;
}

TEST_F(Explain, ShowsTheTermsOfPastPerformance) {
  const ProgramRun run = Run({"--row", "gross margin"});
  EXPECT_NE(run.out.find("Gross Margin, 2002: 97,484.95 = Income 97,484.95 - CostOfGoodsSold 0.00\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("  less CostOfGoodsSold:\n"), std::string::npos) << run.out;
}

TEST_F(Explain, FitsTheTerminal) {
  for (const std::size_t width : {60U, 80U, 132U}) {
    Surroundings surroundings{.clock = tests::JanuaryClock(), .errorIsTerminal = false};
    surroundings.outputWidth = [width] { return width; };
    const ProgramRun run = RunProgram({"explain", *place_ / "n.kql", "--row", "Job Expenses"}, surroundings);
    std::istringstream lines(run.out);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(DisplayWidth(line), width) << line;
  }
}

TEST_F(Explain, AddsUpInJson) {
  for (const char* row : {"Rent", "Job Expenses", "Cost of Goods Sold", "Plant Sales", "Gross Margin"}) {
    const nlohmann::json object = Json({"--row", row});
    int figures = 0;
    for (const auto& line : object.at("rows")) {
      for (const auto& figure : line.at("figures")) {
        double amount = 0;
        for (const auto& sum : figure.at("sums")) {
          double total = 0;
          for (const auto& booked : sum.at("lines")) {
            if (!booked.at("replaced")) total += std::stod(booked.at("amount").get<std::string>());
          }
          EXPECT_NEAR(total, std::stod(sum.at("sum").get<std::string>()), 1e-6);
          amount += sum.at("subtracted") ? -total : total;
        }
        EXPECT_NEAR(amount, std::stod(figure.at("amount").get<std::string>()), 1e-6) << row;
        ++figures;
      }
    }
    EXPECT_GE(figures, 3) << row;
  }
}

TEST_F(Explain, ShowsWhereATransactionWent) {
  const ProgramRun run = Run({"--transaction", "FC-1016216676"});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_TRUE(run.out.starts_with(R"(Sales receipt 315 of 2002-03-15, Counter Sales (TxnID FC-1016216676)
  SalesReceiptLineRet Tomato Seedling: 238.95
    68.85 to Cost of Goods Sold, March 2002: cost of the sale, 81 x 0.85
      in Planned sales and costs row 1, Actual sales and costs row 1
    238.95 to Plant Sales, March 2002: sale
      in Planned sales and costs row 1, Actual sales and costs row 1
)")) << run.out;
}

TEST_F(Explain, SaysWhyALineWentNowhere) {
  const ProgramRun run = Run({"--transaction", "AD-1014048689"});
  EXPECT_NE(run.out.find("1005.00\n    left out: "), std::string::npos) << run.out;
  const nlohmann::json object = Json({"--transaction", "243-1023122007"});
  std::vector<std::string> reasons;
  for (const auto& transaction : object.at("transactions")) {
    for (const auto& line : transaction.at("lines")) {
      for (const auto& omission : line.at("left_out")) reasons.push_back(omission.at("reason"));
    }
  }
  EXPECT_NE(std::ranges::find(reasons, "inside-item-group"), reasons.end());
}

TEST_F(Explain, NamesTheNearestRowTableAndTransaction) {
  EXPECT_EQ(Run({"--row", "Jub Expenses"}).err,
            "krnqb: explaining the figure failed: the import wrote no figures into a row \"Jub Expenses\"; "
            "did you mean \"Job Expenses\"?\n");
  EXPECT_EQ(Run({"--row", "Rent", "--table", "planned expensed"}).err,
            "krnqb: explaining the figure failed: " + (*place_ / "n.kql") +
                " has no figures of a table \"planned expensed\"; did you mean \"Planned expenses\"?\n");
  EXPECT_EQ(Run({"--transaction", "FC-1016"}).err,
            "krnqb: explaining the transaction failed: the import read no lines of a transaction "
            "\"FC-1016\"; did you mean \"FC-1016216676\"?\n");
  EXPECT_EQ(Run({"--row", "Rent", "--month", "2003-01"}).err,
            "krnqb: explaining the figure failed: the import wrote no figure of January 2003 into the row "
            "\"Rent\"; its amounts are those of 2002-01 to 2002-12; leave out --month to see them all\n");
  EXPECT_EQ(Run({"--row", "Nonesuch at all"}).code, 1);
}

TEST_F(Explain, RefusesOptionsThatContradictEachOther) {
  EXPECT_EQ(Run({}).code, 2);
  EXPECT_EQ(Run({"--row", "Rent", "--transaction", "1"}).code, 2);
  EXPECT_EQ(Run({"--transaction", "1", "--month", "2002-01"}).code, 2);
  EXPECT_EQ(Run({"--transaction", "1", "--table", "x"}).code, 2);
}

TEST_F(Explain, SaysWhatBecameOfThePlan) {
  const Workplace place;
  place.NurseryYear();
  const auto import = [&](const Words& more) {
    RunProgram(place.ImportArguments(
        "ald.kpf", With({"--expenses", "--balances", "all", "--ledger", place / "l.kql"}, more)));
  };
  const auto explained = [&] { return RunProgram({"explain", place / "l.kql", "--row", "Rent"}).out; };
  const std::string plan = place / "ald.kpf";
  import({"--dry-run"});
  EXPECT_TRUE(explained().ends_with("\nThe import was a dry run: the plan " + plan +
                                    " does not contain these figures.\n"));
  import({});
  EXPECT_EQ(explained().find(plan), std::string::npos);
  tests::WriteText(plan, tests::ReadText(plan) + "\n");
  EXPECT_TRUE(explained().ends_with("\nThe plan " + plan +
                                    " has changed since: these are the figures that the import wrote.\n"));
  std::filesystem::remove(plan);
  EXPECT_TRUE(explained().ends_with("\nThe plan " + plan + " is not there any more.\n"));
}

TEST_F(Explain, RefusesWhatIsNoLedger) {
  const ProgramRun run = RunProgram({"explain", *place_ / "ald.kpf", "--row", "Rent", "--json"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: reading the ledger failed: The file " + (*place_ / "ald.kpf") +
                         " is not a ledger; run the import again with --ledger\n");
  EXPECT_EQ(RunProgram({"explain", *place_ / "none", "--row", "Rent"}).code, 1);
}

TEST_F(Explain, SaysThatAnImportWithoutAmountsWroteNoFigures) {
  const Workplace place;
  place.Nursery();
  RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--ledger", place / "l.kql"}));
  EXPECT_EQ(RunProgram({"explain", place / "l.kql", "--row", "Rent"}).err,
            "krnqb: explaining the figure failed: the import of " + (place / "l.kql") +
                " wrote no figures; run an import with --balances planned, actual or all\n");
}

}  // namespace
}  // namespace krnqb::cli
