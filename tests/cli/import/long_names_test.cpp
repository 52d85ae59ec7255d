#include <fmt/format.h>
#include <gtest/gtest.h>

#include "cli/workplace.h"
#include "limited_child.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::RunProgram;
using tests::Workplace;
using Words = std::vector<std::string>;

constexpr std::size_t nameLength = 300'000;
constexpr int subAccounts = 100;

// An expense account with a name of 300 KB and many sub-accounts, on each of which a check has been booked.
std::string Documents() {
  const std::string name(nameLength, 'n');
  const auto account = [](const std::string& id, const std::string& named, const std::string& parent,
                          int level) {
    return fmt::format(
        "<AccountRet><ListID>{}</ListID><Name>{}</Name>{}<Sublevel>{}</Sublevel><AccountType>Expense"
        "</AccountType><Balance>1.00</Balance><TotalBalance>1.00</TotalBalance></AccountRet>",
        id, named, parent, level);
  };
  std::string accounts = account("top", name, "", 0);
  std::string checks;
  for (int number = 0; number < subAccounts; ++number) {
    const std::string id = fmt::format("sub{}", number);
    accounts += account(id, id, "<ParentRef><ListID>top</ListID></ParentRef>", 1);
    checks += fmt::format(
        "<CheckRet><TxnID>t{0}</TxnID><TxnDate>2002-05-01</TxnDate><ExpenseLineRet><AccountRef><ListID>{0}"
        "</ListID></AccountRef><Amount>5.00</Amount></ExpenseLineRet></CheckRet>",
        id);
  }
  return "<QBXML><QBXMLMsgsRs><AccountQueryRs>" + accounts + "</AccountQueryRs><CheckQueryRs>" + checks +
         "</CheckQueryRs></QBXMLMsgsRs></QBXML>";
}

class LongNames : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    const std::string company = place / "nursery.qbw";
    ASSERT_EQ(RunProgram({"company", "new", company, "--name", "Long", "--fiscal-month", "January",
                          "--processor", GetParam()})
                  .code,
              0);
    tests::WriteText(place / "long.xml", Documents());
    ASSERT_EQ(RunProgram({"company", "load", company, place / "long.xml"}).code, 0);
  }

  const Workplace place;
};

// The output does not grow with the name times the number of accounts, months or rows.
TEST_P(LongNames, AreImportedAndListedWithinLimits) {
  const auto run = [&](const Words& words) {
    const ProgramRun result = RunProgram(words);
    return result.code == 0 && result.err.empty() && result.out.size() < 3 * nameLength;
  };
  const Words importing = place.ImportArguments("ald.kpf", {"--expenses", "--balances", "all", "--dry-run"});
  Words json = importing;
  json.emplace_back("--json");
  for (const Words& words :
       {importing, json, Words{"accounts", "expense", "--company", place / "nursery.qbw"},
        Words{"accounts", "expense", "--company", place / "nursery.qbw", "--json"}}) {
    EXPECT_TRUE(krnqb::tests::StaysWithinLimits(nameLength, [&] { return run(words); })) << words.front();
  }
}

INSTANTIATE_TEST_SUITE_P(OfBothProcessors, LongNames, testing::Values("1.1", "2.0"));

}  // namespace
}  // namespace krnqb::cli
