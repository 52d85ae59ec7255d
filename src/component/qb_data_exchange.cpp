#include "krnqb/qb_data_exchange.h"

#include "component/company_list.h"
#include "component/import_driver.h"
#include "component/state.h"
#include "import/accounts/deserialize.h"
#include "import/accounts/selection.h"
#include "plan/months.h"
#include "plan/table_identifiers.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"
#include "support/system_clock.h"
#include "support/system_files.h"

namespace krnqb {
namespace {

class SilentObserver final : public Observer {
 public:
  void Notify(const Notice& /*notice*/) noexcept override {}
};

OutsideWorld Completed(OutsideWorld world) {
  if (world.observer == nullptr) world.observer = std::make_shared<SilentObserver>();
  if (world.clock == nullptr) world.clock = SystemClock();
  if (world.files == nullptr) world.files = SystemFiles();
  return world;
}

XmlElement AccountsOf(ImportContext& context, std::int32_t requestNumber, Operation operation) {
  XmlElement accounts;
  EndOnError(context.observer, {.operation = operation},
             [&] { accounts = context.session.Ask(requestNumber, operation); });
  return accounts;
}

}  // namespace

QBDataExchange::State::State(OutsideWorld outsideWorld)
    : world(Completed(std::move(outsideWorld))),
      context{.state = importState,
              .session = Session(sessionState, errorPair, world.processors.get(), *world.observer),
              .plan = HostPlan(planData, *world.observer),
              .events = Events(world.sinks),
              .observer = *world.observer,
              .clock = *world.clock} {}

QBDataExchange::QBDataExchange(OutsideWorld world) : state_(std::make_unique<State>(std::move(world))) {}

QBDataExchange::~QBDataExchange() {
  state_->hostSlot = {};
  state_->sessionState.requestProcessor.reset();
  state_->planData = {};
  ImportState& import = state_->importState;
  import.itemListDocument = {};
  import.expenseAccounts = {};
  import.incomeAccounts = {};
  import.costAccounts = {};
  import.billableExpenses.reset();
  import.expenseSubtotals.reset();
  import.incomeSubtotals.reset();
  import.costSubtotals.reset();
  import.pastPerformance.reset();
}

bool QBDataExchange::Go() {
  return RunImport(state_->context, state_->errorPair);
}

Variant QBDataExchange::IsSDKVersionSupported(std::string_view sVersion) {
  return ThrowingErrorsOnly([&] { return state_->context.session.IsSDKVersionSupported(sVersion); });
}

std::string QBDataExchange::QBCompany() {
  return ThrowingErrorsOnly([&] { return state_->context.session.QBCompany(); });
}
void QBDataExchange::QBCompany(std::string_view path) {
  state_->sessionState.companyPath = path;
}

Variant QBDataExchange::QbSerialize(const Variant& SerialData,
                                    QBKRN_DeserializeOptions /*DeserializeOptions*/) {
  return ThrowingErrorsOnly(
      [&] { return state_->context.session.QbSerialize(SerialData, {.operation = Operation::QbSerialize}); });
}

bool QBDataExchange::KRNOpenPlan(std::string_view PlanFile) {
  return ThrowingErrorsOnly([&] { return state_->context.plan.OpenPlan(PlanFile); });
}

Variant QBDataExchange::KRNDeserialize(const Variant& SerialData,
                                       QBKRN_DeserializeOptions /*DeserializeOptions*/) {
  return krnqb::KRNDeserialize(state_->context, SerialData);
}

// A host calls this on an object, as it does every other operation.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
Variant QBDataExchange::KRNSerialize(QBKRN_SerializeOptions /*SerializeOptions*/) {
  return {};
}

std::int16_t QBDataExchange::MonthsOfActivity(const std::shared_ptr<Collection>& colMonthSubtotals) {
  ActivityScan scan;
  const bool complete = EndOnError(*state_->world.observer, {.operation = Operation::MonthsOfActivity}, [&] {
    if (colMonthSubtotals == nullptr) return;
    for (const Variant& item : *colMonthSubtotals) {
      const auto record = item.AsObject<cSubtotals>();
      if (record == nullptr) throw Error(error_number::typeMismatch);
      scan.Add(*record);
    }
  });
  return complete ? scan.HighestMonth() : std::int16_t{0};
}

Variant QBDataExchange::ShowDialog(QBKRN_Dialogs DialogOption) {
  Variant result;
  EndOnError(*state_->world.observer, {.operation = Operation::ShowDialog}, [&] {
    if (state_->world.userInterface != nullptr)
      result = state_->world.userInterface->ShowDialog(*this, DialogOption);
  });
  return result;
}

Variant QBDataExchange::SubmitCustomRequest(std::string_view /*QBRequestXML*/) {
  EndOnError(*state_->world.observer, {.operation = Operation::SubmitCustomRequest}, [&] {
    if (state_->world.userInterface != nullptr)
      state_->world.userInterface->ShowMessage("future implementation");
  });
  return {};
}

XmlElement QBDataExchange::QBExpenseAccounts() {
  return AccountsOf(state_->context, request_number::expenseAccounts, Operation::QBExpenseAccounts);
}

XmlElement QBDataExchange::QBIncomeAccounts() {
  return AccountsOf(state_->context, request_number::incomeAccounts, Operation::QBIncomeAccounts);
}

XmlElement QBDataExchange::QBCompanies() {
  XmlElement companies;
  EndOnError(*state_->world.observer, {.operation = Operation::QBCompanies},
             [&] { companies = CompanyList(state_->world); });
  return companies;
}

// As `KRNSerialize`.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
Variant QBDataExchange::Execute(std::string& /*Action*/, const Variant& /*Args*/) {
  return {};
}

XmlElement QBDataExchange::SelectedExpenses() {
  XmlElement& selection = state_->importState.selectedExpenses;
  if (!selection) selection = BuildSelectedExpenses(state_->context);
  return selection;
}

void QBDataExchange::SelectedExpenses(const Variant& selection) {
  if (const XmlElement* element = selection.AsElement()) {
    state_->importState.selectedExpenses = *element;
  } else if (selection.IsEmpty() || selection.IsNothing()) {
    state_->importState.selectedExpenses = {};
  } else {
    throw Error(error_number::typeMismatch);
  }
}

std::shared_ptr<Collection> QBDataExchange::GetTablesAffected() const {
  auto tables = std::make_shared<Collection>();
  for (const std::string_view id : TablesAffected(state_->importState.options.krnProduct)) tables->Add(id);
  return tables;
}

}  // namespace krnqb
