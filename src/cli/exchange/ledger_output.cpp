#include "cli/exchange/ledger_output.h"

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "cli/console/version.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view failed = "writing the ledger failed";

}  // namespace

LedgerOutput::LedgerOutput(const std::string& file, std::string_view remedy)
    : remedy_(remedy), writer_(Attempt(failed, remedy, [&] {
        return ledger::LedgerWriter(PathFrom(file), InterruptRequested, operations_);
      })) {}

void LedgerOutput::Finish(const ledger::LedgerFacts& facts) {
  Attempt(failed, remedy_, [&] { writer_.Finish(facts); });
}

void LedgerOutput::Place() {
  Attempt(failed, remedy_, [&] { writer_.Place(); });
}

ledger::LedgerFacts FactsForLedger(const plan_file::ImportFacts& import) {
  ledger::LedgerFacts facts;
  facts.program = ProgramVersion();
  facts.product = import.product;
  facts.planStart = import.planStart;
  facts.periodFrom = import.periodFrom;
  facts.periodTo = import.periodTo;
  facts.options = import.options;
  return facts;
}

}  // namespace krnqb::cli
