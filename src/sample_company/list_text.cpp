#include "sample_company/list_text.h"

namespace krnqb::sample_company {
namespace {

void WriteAddress(ElementText& text, std::string_view element) {
  text.Open(element);
  text.Text("Addr1", "410 Larch Street");
  text.Text("City", "Larch Valley");
  text.Text("State", "OR");
  text.Text("PostalCode", "97048");
  text.Close(element);
}

}  // namespace

std::string CompanyText(const GeneratorSettings& settings) {
  const std::string name = Escaped(settings.companyName);
  ElementText text;
  text.Open("CompanyRet");
  text.Text("CompanyName", name);
  text.Text("LegalCompanyName", name);
  WriteAddress(text, "Address");
  WriteAddress(text, "LegalAddress");
  text.Text("FirstMonthFiscalYear", "January");
  text.Text("FirstMonthIncomeTaxYear", "January");
  text.Text("CompanyType", "Retail");
  text.Close("CompanyRet");
  return text.Xml();
}

std::string PreferencesText(const GeneratorSettings& settings) {
  ElementText text;
  text.Open("PreferencesRet");
  text.Open("AccountingPreferences");
  text.Boolean("IsUsingAccountNumbers", settings.features.accountNumbers);
  text.Boolean("IsRequiringAccounts", true);
  text.Boolean("IsUsingClassTracking", false);
  text.Boolean("IsUsingAuditTrail", false);
  text.Boolean("IsAssigningJournalEntryNumbers", true);
  text.Close("AccountingPreferences");
  text.Open("JobsAndEstimatesPreferences");
  text.Boolean("IsUsingEstimates", false);
  text.Boolean("IsUsingProgressInvoicing", false);
  text.Boolean("IsPrintingItemsWithZeroAmounts", false);
  text.Close("JobsAndEstimatesPreferences");
  text.Open("PurchasesAndVendorsPreferences");
  text.Boolean("IsUsingInventory", settings.features.inventory);
  text.Number("DaysBillsAreDue", 30);
  text.Boolean("IsAutomaticallyUsingDiscounts", false);
  text.Close("PurchasesAndVendorsPreferences");
  text.Open("ReportsPreferences");
  text.Text("AgingReportBasis", "AgeFromDueDate");
  text.Text("SummaryReportBasis", "Accrual");
  text.Close("ReportsPreferences");
  text.Close("PreferencesRet");
  return text.Xml();
}

std::string AccountText(const ChartOfAccounts& accounts, std::size_t index, Cents totalBalance,
                        bool withNumber) {
  const Account& account = accounts[index];
  ElementText text;
  text.Open("AccountRet");
  text.Text("ListID", account.listId);
  text.Times(account.created);
  text.Text("Name", Escaped(account.name));
  text.Text("FullName", Escaped(account.fullName));
  text.Boolean("IsActive", true);
  if (account.sublevel > 0) text.Block("ParentRef", accounts[account.parent].reference);
  text.Number("Sublevel", account.sublevel);
  text.Text("AccountType", account.type);
  if (withNumber) text.Text("AccountNumber", account.number);
  text.Money("Balance", accounts.Balance(index));
  text.Money("TotalBalance", totalBalance);
  text.Close("AccountRet");
  return text.Xml();
}

}  // namespace krnqb::sample_company
