#include "import/accounts/deserialize.h"
#include "fakes/import_surroundings.h"
#include "fuzz/input.h"
#include "fuzz/plan_promises.h"

// The documents of the two operations called `Deserialize`: the component's takes an account list and returns
// changed tables, the plan's takes changed tables. The first byte chooses.

namespace krnqb::fuzz {
namespace {

void MergeAccounts(Input input) {
  const auto product = static_cast<QBKRNproduct>(1 + input.Below(3));
  const auto plan = NewPlan(product);
  const std::string before = plan->Text();
  const Variant planData{plan};

  fakes::ImportSurroundings surroundings;
  surroundings.state.options.krnProduct = product;
  surroundings.state.selectedExpenses =
      XmlElement::Parse(fakes::SelectionText({{"E-1", "true"}, {"E-2", "false"}}));
  ImportContext context{.state = surroundings.state,
                        .session = surroundings.context.session,
                        .plan = HostPlan(planData, surroundings.observer),
                        .events = Events(surroundings.sinks),
                        .observer = surroundings.observer,
                        .clock = surroundings.clock};
  const std::string accounts = input.Rest();
  std::string changed = KRNDeserialize(context, accounts);
  Require(plan->Text() == before, "merging changes no plan");
  RequireKnownErrors(surroundings.observer.notices);
  if (changed.empty()) return;
  Require(KRNDeserialize(context, XmlElement::Parse(accounts)) == changed, "an element counts as its text",
          changed);
  const auto refusal = ErrorOf([&] { plan->Tables().Deserialize(changed); });
  Require(!refusal && plan->Tables().RefusedLoads().empty(), "a plan takes the tables changed for it",
          changed);
  RequirePlan(plan->Text());
  if (!NamesStay(XmlElement::Parse(accounts))) return;
  // The same list adds nothing to a plan that has its accounts.
  const std::string merged = plan->Text();
  changed = KRNDeserialize(context, accounts);
  plan->Tables().Deserialize(changed);
  Require(plan->Text() == merged, "an account list is merged once", merged);
}

void LoadTables(Input input) {
  const auto plan = NewPlan(static_cast<QBKRNproduct>(1 + input.Below(3)));
  const std::string before = plan->Text();
  std::string tables = input.Rest();
  const auto refusal = ErrorOf([&] { plan->Tables().Deserialize(tables); });
  const std::string after = plan->Text();
  if (refusal || !plan->Tables().RefusedLoads().empty()) {
    Require(after == before, "a refused document changes no plan", after);
    return;
  }
  RequirePlan(after);
  plan->Tables().Deserialize(tables);
  Require(plan->Text() == after, "a document that is loaded again changes nothing", after);
}

void Run(Input input) {
  if (input.Flag()) {
    MergeAccounts(input);
  } else {
    LoadTables(input);
  }
}

}  // namespace
}  // namespace krnqb::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krnqb::fuzz::Run({data, size});
  return 0;
}
