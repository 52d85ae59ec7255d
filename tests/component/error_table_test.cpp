// The table of the guide for hosts with the errors that the component stores in the error pair: each row is
// provoked, and everything provoked has a row.
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <set>
#include <stdexcept>

#include "build_paths.h"
#include "document_table.h"
#include "fakes/releasable_object.h"
#include "fakes/test_host.h"

namespace krnqb {
namespace {

using fakes::TestHost;

constexpr std::int32_t ownNumber = -2147220991;

/// A plan object in which no plan is open.
class ClosedPlan : public PlanObject {
 public:
  bool OpenPlan(std::string_view /*planFile*/) override { return false; }
  std::shared_ptr<PlanData> Data() override { return nullptr; }
};

void ImportExpenses(TestHost& host) {
  host.component.IncludeExpenseAccounts(true);
  host.component.Go();
}

struct Provoked {
  const char* what;
  std::function<void(TestHost&)> provoke;
  std::int32_t number;
  std::string description;
  bool isOwn = false;  ///< the number and text are those of an object outside the component
};

const std::vector<Provoked>& AllProvoked() {
  static const std::vector<Provoked> all{
      {"no request processor",
       [](TestHost& host) {
         host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
         ImportExpenses(host);
       },
       429,
       "You must have a U.S. version of one of the following Quickbooks 2002 or 2003 products to perform "
       "this import:  "
       "Quickbooks Premier, Quickbooks Premier Accountant Edition, or QuickBooks Pro."},
      {"no open company",
       [](TestHost& host) {
         host.journal->Fail("BeginSession \"\" 2", Error(-2147220458, "own words"));
         ImportExpenses(host);
       },
       -2147220458, "Your QuickBooks company file must be open to perform this import."},
      {"a refused session",
       [](TestHost& host) {
         host.journal->Fail("BeginSession \"\" 2", Error(ownNumber, "own words"));
         ImportExpenses(host);
       },
       ownNumber, "Error (number): text", true},
      {"no fiscal month",
       [](TestHost& host) {
         host.quickBooks->answers["101"] = "<QBXML/>";
         ImportExpenses(host);
       },
       -2147221404, "To perform the import you need to provide the QuickBooks fiscal year start month."},
      {"a month of another language",
       [](TestHost& host) {
         host.quickBooks->answers["101"] = fakes::CompanyAnswer("Januar");
         ImportExpenses(host);
       },
       -2147221504,
       "To perform the import from QuickBooks Pro you need the United States version of QuickBooks Pro and "
       "an English "
       "regional setting locale."},
      {"qbXML 1.0 alone",
       [](TestHost& host) {
         host.quickBooks->answers["100"] = fakes::HostAnswer({"1.0"});
         ImportExpenses(host);
       },
       -2147221504, "Your QuickBooks must be updated to R2."},
      {"a year of 17 bits",
       [](TestHost& host) {
         host.component.BalancesImport(BalImport_Actual);
         host.component.KRNStartingYear(-32768);
         ImportExpenses(host);
       },
       6, "Overflow"},
      {"no memory",
       [](TestHost& host) {
         host.journal->OnOccurrence("Deserialize 20..0600 21..0600", 1, [] { throw std::bad_alloc(); });
         ImportExpenses(host);
       },
       7, "Out of memory"},
      {"a plan without a table of past performance",
       [](TestHost& host) {
         host.component.BalancesImport(BalImport_All);
         host.component.IncludeIncomeAccounts(true);
         host.component.IncludePastPerformance(true);
         host.planContent->tables.erase("20000000000000000000000000000800");
         ImportExpenses(host);
       },
       9, "Subscript out of range"},
      {"an exception that is not an Error",
       [](TestHost& host) {
         host.journal->OnOccurrence("Deserialize 20..0600 21..0600", 1,
                                    [] { throw std::runtime_error("x"); });
         ImportExpenses(host);
       },
       51, "Internal error"},
      {"no plan",
       [](TestHost& host) {
         host.component.KRNPlanData({});
         ImportExpenses(host);
       },
       91, "Object variable or With block variable not set"},
      {"a closed plan",
       [](TestHost& host) {
         host.component.KRNPlanData(Variant(std::make_shared<ClosedPlan>()));
         ImportExpenses(host);
       },
       91, "Object variable or With block variable not set"},
      {"an object that is not a plan",
       [](TestHost& host) {
         host.component.KRNPlanData(Variant(std::make_shared<Collection>()));
         ImportExpenses(host);
       },
       438, "Object doesn't support this property or method"},
      {"a text instead of a plan",
       [](TestHost& host) {
         host.component.KRNPlanData(Variant("nursery.kpf"));
         ImportExpenses(host);
       },
       438, "Object doesn't support this property or method"},
      {"a plan that refuses the changed tables",
       [](TestHost& host) {
         host.journal->Fail("Deserialize 20..0600 21..0600", Error(ownNumber, "own words"));
         ImportExpenses(host);
       },
       ownNumber, "text", true},
      {"a request that QuickBooks refuses",
       [](TestHost& host) {
         host.journal->FailOccurrence("ProcessRequest 4", 1, Error(ownNumber, "own words"));
         ImportExpenses(host);
       },
       ownNumber, "text", true},
  };
  return all;
}

// The number and text of a row. A row about the errors of other objects has no number.
using Row = std::pair<std::string, std::string>;

TEST(ErrorTable, HasEveryErrorOfTheErrorPair) {
  std::set<Row> shown;
  for (const Provoked& provoked : AllProvoked()) {
    SCOPED_TRACE(provoked.what);
    TestHost host;
    provoked.provoke(host);
    EXPECT_EQ(host.component.ErrorNumber(), provoked.number);
    if (provoked.isOwn) {
      EXPECT_TRUE(host.component.ErrorDescription().ends_with("own words"))
          << host.component.ErrorDescription();
      shown.emplace("its own", provoked.description);
    } else {
      EXPECT_EQ(host.component.ErrorDescription(), provoked.description);
      shown.emplace(std::to_string(host.component.ErrorNumber()), host.component.ErrorDescription());
    }
  }
  std::set<Row> documented;
  for (const auto& row : tests::RowsBelow(tests::HostGuide(), "### The error pair")) {
    ASSERT_EQ(row.size(), 4U);
    EXPECT_TRUE(documented.emplace(row.at(0), row.at(1)).second) << row.at(0) << " is there twice";
  }
  EXPECT_EQ(shown, documented);
}

}  // namespace
}  // namespace krnqb
