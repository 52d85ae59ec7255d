#include <gtest/gtest.h>

#include <cstdio>
#include <functional>

#include "cli/workplace.h"
#include "company/processor.h"
#include "krnqb/qb_data_exchange.h"
#include "plan_file/file.h"
#include "soak/heap.h"

// Many imports in one process: neither memory nor descriptors grow.

namespace krnqb::soak {
namespace {

using cli::tests::ReadText;
using cli::tests::RunProgram;
using cli::tests::Workplace;
using cli::tests::WriteText;

constexpr long long toleratedGrowth = 64LL * 1024;

class Soak : public testing::Test {
 protected:
  Soak() : plan_(place_ / "ald.kpf"), oldText_(ReadText(plan_)) {}

  // Runs an import again and again and compares the heap early and late.
  void ExpectNoGrowth(const std::function<void()>& import) {
    const auto [first, all] = SoakRounds();
    long long early = 0;
    long descriptors = 0;
    for (int round = 1; round <= all; ++round) {
      import();
      if (round == first) {
        early = BytesInUse();
        descriptors = OpenDescriptors();
      }
    }
    const long long late = BytesInUse();
    std::printf("%lld bytes after %d imports, %lld after %d\n", early, first, late, all);
    EXPECT_EQ(OpenDescriptors(), descriptors);
    if (!HeapIsVisible()) GTEST_SKIP() << "the heap of this build cannot be measured";
    EXPECT_LT(late - early, toleratedGrowth);
  }

  // Without an observer: a report would keep the notices of all imports.
  static OutsideWorld World() {
    OutsideWorld world;
    world.processors = company::EmbeddedProcessors();
    world.clock = cli::tests::JanuaryClock();
    return world;
  }

  static ImportOptions Options() {
    ImportOptions options;
    options.includeExpenseAccounts = true;
    options.includeIncomeAccounts = true;
    options.balancesImport = BalImport_All;
    options.period.krnStartingMonth = 1;
    options.period.krnStartingYear = 2003;
    return options;
  }

  // Imports once; each import starts with the plan that a user would open.
  void Import(QBDataExchange& component, const std::string& company) const {
    component.KRNPlanData(Variant(plan_file::PlanFile::Open(plan_)));
    component.Options(Options());
    component.QBCompany(company);
    ASSERT_TRUE(component.Go());
    ASSERT_EQ(component.ErrorNumber(), 0) << component.ErrorDescription();
  }

  Workplace place_;
  std::string plan_;
  std::string oldText_;
};

TEST_F(Soak, ManyComponentsLeaveNothing) {
  const std::string company = place_.Nursery("2.0");
  ExpectNoGrowth([&] {
    QBDataExchange component(World());
    Import(component, company);
  });
}

TEST_F(Soak, OneComponentDoesNotGrow) {
  const std::string company = place_.Nursery("2.0");
  QBDataExchange component(World());
  ExpectNoGrowth([&] { Import(component, company); });
}

TEST_F(Soak, TheCommandLineLeavesNothing) {
  place_.Nursery("2.0");
  const std::vector<std::string> arguments =
      place_.ImportArguments("ald.kpf", {"--expenses", "--income", "--balances", "all"});
  std::string newText;
  ExpectNoGrowth([&] {
    WriteText(plan_, oldText_);
    ASSERT_EQ(RunProgram(arguments).code, 0);
    if (newText.empty()) newText = ReadText(plan_);
    ASSERT_EQ(ReadText(plan_), newText);
  });
  EXPECT_NE(newText, oldText_);
}

}  // namespace
}  // namespace krnqb::soak
