#include "bench/import_run.h"

#include <fmt/format.h>

#include "bench/measured_processors.h"
#include "bench/request_file.h"
#include "company/processor.h"
#include "krnqb/qb_data_exchange.h"
#include "plan_file/file.h"

namespace krnqb::bench {
namespace {

// Reads each notice as a host would, so that notices are not free.
class CountingObserver : public Observer {
 public:
  void Notify(const Notice& notice) noexcept override {
    if (notice.kind == NoticeKind::AmountSkipped) ++skippedAmounts;
  }

  std::int64_t skippedAmounts = 0;
};

void Configure(QBDataExchange& exchange, const ImportRun& run,
               const std::shared_ptr<plan_file::PlanFile>& plan) {
  const std::optional<YearMonth> start = plan->Start();
  if (!start) throw Error(error_number::invalidProcedureCall, "the plan has no start");
  exchange.QBCompany(run.company.string());
  exchange.KRNPlanData(plan);
  exchange.KRNProduct(QBKRN_ALD);
  exchange.IncludeExpenseAccounts(true);
  exchange.IncludeIncomeAccounts(true);
  exchange.BalancesImport(BalImport_All);
  exchange.KRNStartingYear(start->year);
  exchange.KRNStartingMonth(start->month);
}

}  // namespace

void RunImport(const ImportRun& run) {
  Traffic traffic;
  const auto observer = std::make_shared<CountingObserver>();
  const auto plan = plan_file::PlanFile::Open(run.plan);
  QBDataExchange exchange(
      OutsideWorld{.processors = MeasuredProcessors(company::EmbeddedProcessors(), run.months, traffic),
                   .sinks = {},
                   .observer = observer,
                   .userInterface = nullptr,
                   .registry = nullptr,
                   .clock = nullptr});
  Configure(exchange, run, plan);
  const Stopwatch stopwatch;
  const bool went = exchange.Go();
  const Elapsed outside = stopwatch.Read() - traffic.insideProcessor;
  const std::int64_t peak = PeakMemory();
  if (!went || exchange.ErrorNumber() != 0) throw Error(exchange.ErrorNumber(), exchange.ErrorDescription());
  plan->Save();
  if (!run.requestFile.empty()) WriteRequests(run.requestFile, traffic.requests);
  fmt::print("wall {:.3f}\ncpu {:.3f}\npeak {}\nbytes {}\nlargest {}\nskipped {}\n", outside.wall.count(),
             outside.cpu.count(), peak, traffic.answerBytes, traffic.largestAnswer, observer->skippedAmounts);
}

}  // namespace krnqb::bench
