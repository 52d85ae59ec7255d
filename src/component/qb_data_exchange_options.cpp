// The properties of QBDataExchange that store a value, and the defaults of the periods.
#include "component/state.h"
#include "krnqb/qb_data_exchange.h"
#include "plan/period.h"

namespace krnqb {

Variant QBDataExchange::mQBDataExchangeObject() const {
  return state_->hostSlot;
}
void QBDataExchange::mQBDataExchangeObject(const Variant& object) {
  state_->hostSlot = object;
}

ImportOptions QBDataExchange::Options() const noexcept {
  return state_->importState.options;
}
void QBDataExchange::Options(const ImportOptions& options) noexcept {
  state_->importState.options = options;
}

bool QBDataExchange::IncludeExpenseAccounts() const noexcept {
  return state_->importState.options.includeExpenseAccounts;
}
void QBDataExchange::IncludeExpenseAccounts(bool include) noexcept {
  state_->importState.options.includeExpenseAccounts = include;
}

bool QBDataExchange::IncludeIncomeAccounts() const noexcept {
  return state_->importState.options.includeIncomeAccounts;
}
void QBDataExchange::IncludeIncomeAccounts(bool include) noexcept {
  state_->importState.options.includeIncomeAccounts = include;
}

bool QBDataExchange::IncludePastPerformance() const noexcept {
  return state_->importState.options.includePastPerformance;
}
void QBDataExchange::IncludePastPerformance(bool include) noexcept {
  state_->importState.options.includePastPerformance = include;
}

std::int16_t QBDataExchange::GrowthRateCOGS() const noexcept {
  return state_->importState.options.growthRateCogs;
}
void QBDataExchange::GrowthRateCOGS(std::int16_t percent) noexcept {
  state_->importState.options.growthRateCogs = percent;
}

std::int16_t QBDataExchange::GrowthRateIncome() const noexcept {
  return state_->importState.options.growthRateIncome;
}
void QBDataExchange::GrowthRateIncome(std::int16_t percent) noexcept {
  state_->importState.options.growthRateIncome = percent;
}

std::int16_t QBDataExchange::GrowthRateExpenses() const noexcept {
  return state_->importState.options.growthRateExpenses;
}
void QBDataExchange::GrowthRateExpenses(std::int16_t percent) noexcept {
  state_->importState.options.growthRateExpenses = percent;
}

QBKRN_BalancesImport QBDataExchange::BalancesImport() const noexcept {
  return state_->importState.options.balancesImport;
}
void QBDataExchange::BalancesImport(QBKRN_BalancesImport balances) noexcept {
  state_->importState.options.balancesImport = balances;
}

Variant QBDataExchange::KRNPlanData() const {
  return state_->planData;
}
void QBDataExchange::KRNPlanData(const Variant& plan) {
  state_->planData = plan;
}

std::int32_t QBDataExchange::ErrorNumber() const noexcept {
  return state_->errorPair.number;
}
void QBDataExchange::ErrorNumber(std::int32_t number) noexcept {
  state_->errorPair.number = number;
  state_->errorPair.kind = ErrorKind::Other;
}

ErrorKind QBDataExchange::LastErrorKind() const noexcept {
  return state_->errorPair.kind;
}

std::string QBDataExchange::ErrorDescription() const {
  return state_->errorPair.description;
}
void QBDataExchange::ErrorDescription(std::string_view description) {
  state_->errorPair.description = description;
}

std::int16_t QBDataExchange::KRNStartingMonth() {
  return SettleKRNStartingMonth(state_->importState.options.period);
}
void QBDataExchange::KRNStartingMonth(std::int16_t month) noexcept {
  state_->importState.options.period.krnStartingMonth = month;
}

std::int16_t QBDataExchange::KRNStartingYear() {
  return SettleKRNStartingYear(state_->importState.options.period);
}
void QBDataExchange::KRNStartingYear(std::int16_t year) noexcept {
  state_->importState.options.period.krnStartingYear = year;
}

std::int16_t QBDataExchange::StartingMonth() {
  state_->context.session.EnsureSession();
  return SettleStartingMonth(state_->importState.options.period);
}
void QBDataExchange::StartingMonth(std::int16_t month) noexcept {
  state_->importState.options.period.startingMonth = month;
}

std::int16_t QBDataExchange::StartingYear() {
  return SettleStartingYear(state_->importState.options.period);
}
void QBDataExchange::StartingYear(std::int16_t year) noexcept {
  state_->importState.options.period.startingYear = year;
}

std::int16_t QBDataExchange::QBStartingMonth() const noexcept {
  return state_->sessionState.qbStartingMonth;
}
void QBDataExchange::QBStartingMonth(std::int16_t month) noexcept {
  state_->sessionState.qbStartingMonth = month;
}

QBKRNproduct QBDataExchange::KRNProduct() const noexcept {
  return state_->importState.options.krnProduct;
}
void QBDataExchange::KRNProduct(QBKRNproduct product) noexcept {
  state_->importState.options.krnProduct = product;
}

std::int16_t QBDataExchange::QBMajorVersion() const noexcept {
  return state_->sessionState.qbMajorVersion;
}
void QBDataExchange::QBMajorVersion(std::int16_t version) noexcept {
  state_->sessionState.qbMajorVersion = version;
}

std::int16_t QBDataExchange::QBMinorVersion() const noexcept {
  return state_->sessionState.qbMinorVersion;
}
void QBDataExchange::QBMinorVersion(std::int16_t version) noexcept {
  state_->sessionState.qbMinorVersion = version;
}

}  // namespace krnqb
