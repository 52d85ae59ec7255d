#include <filesystem>

#include "build_paths.h"
#include "company/reports/testing.h"

namespace krnqb::company {
namespace {

using testing::ProfitAndLossRequest;
using testing::RowsOf;

// The sample company with the transactions that no request is answered with.
class CompanyOtherBooks : public testing::CompanyTest {
 protected:
  void LoadSamples(const std::string& sample) {
    const std::filesystem::path samples = tests::SamplesFolder();
    for (const auto& document : std::filesystem::directory_iterator(samples / sample)) {
      company.Load(document.path().filename().string(), tests::ReadText(document.path()),
                   UnknownKinds::Refuse);
    }
  }

  std::string Transactions() const {
    std::string answers;
    for (const std::int32_t request :
         {request_number::bills, request_number::checks, request_number::creditCardCharges,
          request_number::invoices, request_number::salesReceipts}) {
      answers += company.Answer(BuildRequest(request, "", ""));
    }
    return answers;
  }

  std::vector<std::string> Report(std::string_view filter) const {
    return RowsOf(company.Answer(ProfitAndLossRequest(filter, "2002-12-01", "2002-12-31")));
  }

  CompanyFile company = NewCompany("2.0");
};

TEST_F(CompanyOtherBooks, ChangeReportsButNoTransactions) {
  LoadSamples("nursery");
  const std::string before = Transactions();
  EXPECT_EQ(Report("OtherIncome"), std::vector<std::string>());
  LoadSamples("nursery-books");
  EXPECT_EQ(Transactions(), before);
  EXPECT_EQ(
      Report("OtherIncome"),
      (std::vector<std::string>{"TextRow | Other Income/Expense", "TextRow | Other Income",
                                "DataRow Interest Income | Interest Income | 81.89",
                                "SubtotalRow | Total Other Income | 81.89",
                                "SubtotalRow | Net Other Income | 81.89", "TotalRow | Net Income | 81.89"}));
  const std::vector<std::string> expenses = Report("OrdinaryExpense");
  EXPECT_NE(std::ranges::find(expenses, "DataRow Depreciation | Depreciation | 605.00"), expenses.end());
  EXPECT_NE(std::ranges::find(expenses, "DataRow Payroll Expenses:Wages | Wages - Other | 1560.00"),
            expenses.end());
}

// The other books have transactions of every month, but none that is answered to a request.
TEST_F(CompanyOtherBooks, HaveMonthsOfTheirOwn) {
  using Months = std::vector<std::string>;
  const auto months = [&](std::string_view first, std::string_view last, TransactionChoice choice) {
    return company.TransactionMonths(first, last, choice);
  };
  EXPECT_EQ(months("2002-01-01", "2002-12-31", TransactionChoice::All), Months());
  LoadSamples("nursery-books");
  EXPECT_EQ(months("2002-01-01", "2002-12-31", TransactionChoice::All).size(), 12U);
  EXPECT_EQ(months("2002-01-01", "2002-12-31", TransactionChoice::Requested), Months());
  LoadSamples("nursery");
  EXPECT_EQ(months("2002-02-01", "2002-04-30", TransactionChoice::Requested),
            (Months{"2002-02", "2002-03", "2002-04"}));
  EXPECT_EQ(months("2003-01-01", "2003-12-31", TransactionChoice::Requested), Months());
}

TEST_F(CompanyOtherBooks, PostAsMuchToDebitAsToCredit) {
  LoadSamples("nursery");
  const auto sum = [&] {
    return Database(folder / "company.qbw", FileAccess::ReadOnly)
        .Integer(
            "SELECT sum(amount) FROM posting JOIN record ON id = record_id WHERE kind NOT IN"
            " ('InvoiceRet', 'SalesReceiptRet')");
  };
  const std::int64_t before = sum();
  LoadSamples("nursery-books");
  EXPECT_EQ(sum(), before);
}

}  // namespace
}  // namespace krnqb::company
