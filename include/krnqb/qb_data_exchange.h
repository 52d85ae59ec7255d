#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "krnqb/enumerations.h"
#include "krnqb/import_options.h"
#include "krnqb/outside_world.h"
#include "krnqb/subtotals.h"
#include "krnqb/variant.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// Imports accounting data from a QuickBooks company into a plan.
///
/// A host creates one, sets its plan (`KRNPlanData`) and the options, and calls `Go`. Only the operations
/// whose comments say so throw Error; every other operation that fails returns an empty result and reports
/// the failure to the observer. A session that cannot be opened, a failed company check, a QuickBooks that
/// must be updated and an error that ends `Go` are also stored in the error pair, `ErrorNumber` and
/// `ErrorDescription`. All calls and all events happen on the caller's thread. Integer properties are 16-bit;
/// texts are UTF-8.
class QBDataExchange {
 public:
  /// Creates a component without a plan, with the initial options.
  explicit QBDataExchange(OutsideWorld world);
  /// Releases the host's slot, the request processor, the plan, and then the lists and collections.
  ~QBDataExchange();
  QBDataExchange(const QBDataExchange&) = delete;
  QBDataExchange& operator=(const QBDataExchange&) = delete;

  /// A slot for the host's own use; released at termination, before everything else.
  Variant mQBDataExchangeObject() const;
  void mQBDataExchangeObject(const Variant& object);

  // Options of an import: all of them as one struct, and each as a property of the same field.

  /// Returns the stored options. A period field that is 0 is returned as 0, and no default is stored.
  ImportOptions Options() const noexcept;
  /// Replaces all options, including the period and the product.
  void Options(const ImportOptions& options) noexcept;

  /// Whether expense accounts are imported.
  bool IncludeExpenseAccounts() const noexcept;
  void IncludeExpenseAccounts(bool include) noexcept;
  /// Whether income accounts are imported, and with balances the cost-of-goods accounts.
  bool IncludeIncomeAccounts() const noexcept;
  void IncludeIncomeAccounts(bool include) noexcept;
  /// Whether past performance is imported; requires an import of balances.
  bool IncludePastPerformance() const noexcept;
  void IncludePastPerformance(bool include) noexcept;
  /// Annual growth of cost-of-goods rows in whole percent.
  std::int16_t GrowthRateCOGS() const noexcept;
  void GrowthRateCOGS(std::int16_t percent) noexcept;
  /// Annual growth of sales rows in whole percent.
  std::int16_t GrowthRateIncome() const noexcept;
  void GrowthRateIncome(std::int16_t percent) noexcept;
  /// Annual growth of expense rows in whole percent.
  std::int16_t GrowthRateExpenses() const noexcept;
  void GrowthRateExpenses(std::int16_t percent) noexcept;
  /// Which monthly amounts are imported.
  QBKRN_BalancesImport BalancesImport() const noexcept;
  void BalancesImport(QBKRN_BalancesImport balances) noexcept;

  // QuickBooks.

  /// Returns whether QuickBooks supports exactly this qbXML version. Throws Error 91 if no session can be
  /// opened or the response is not readable, the processor's own Error if QuickBooks refuses the request, and
  /// Error -2147467259 if the text contains a double quote.
  Variant IsSDKVersionSupported(std::string_view sVersion = "1.1");
  /// Opens a session if necessary, reads the open company's path and the processor's versions from
  /// QuickBooks, and returns the path. If no session can be opened, returns the stored path; if QuickBooks
  /// does not support qbXML 1.1, sets the error pair and returns an empty text. Throws the processor's own
  /// Error if a call in the open session fails (what was stored before it stays), and Error 91 if the
  /// response that lists the supported versions is not readable.
  std::string QBCompany();
  /// Stores the path of the company file that the next session opens; empty selects the company that is open
  /// in QuickBooks.
  void QBCompany(std::string_view path);
  /// Sends one request and returns the response text, or Empty if no session can be opened. Throws the
  /// processor's own Error if QuickBooks refuses the request, Error 91 if `SerialData` is Nothing, and Error
  /// 13 if it is any other object.
  Variant QbSerialize(const Variant& SerialData, QBKRN_DeserializeOptions DeserializeOptions = qbkrndDefault);

  // The plan.

  /// Returns the host's plan object, or Empty if none was set.
  Variant KRNPlanData() const;
  /// Stores the host's plan object (shared, not copied). The object is checked only when it is used.
  void KRNPlanData(const Variant& plan);
  /// Opens another plan file in the host, see `PlanObject::OpenPlan`, and returns the plan's answer. Throws
  /// Error 91 if no plan is set, Error 438 if the stored object is not a plan, or the plan's own Error.
  bool KRNOpenPlan(std::string_view PlanFile);
  /// Merges an account list from QuickBooks (a response's text or element) into copies of the plan tables
  /// that it changes and returns them as a "<tables>" document. If a later table fails, returns the tables
  /// that were complete; if there are none, the empty text. The plan itself is unchanged.
  Variant KRNDeserialize(const Variant& SerialData,
                         QBKRN_DeserializeOptions DeserializeOptions = qbkrndDefault);
  /// Returns Empty.
  Variant KRNSerialize(QBKRN_SerializeOptions SerializeOptions = qbkrnsDefault);
  /// Returns the highest month, 1 to 12, in which any `cSubtotals` of the collection has an amount other than
  /// 0. Returns 0 if there is no such month, if the collection is null, or if an item is not a `cSubtotals`.
  std::int16_t MonthsOfActivity(const std::shared_ptr<Collection>& colMonthSubtotals);
  /// Shows one of the dialogs and returns after it is closed: the chosen path for a dialog that asks for a
  /// file, otherwise, or if the user chose no file, Empty. A chosen company file is the one that the next
  /// session opens.
  Variant ShowDialog(QBKRN_Dialogs DialogOption);

  /// Runs the import, closes the session and clears the stored company path. Returns true without doing
  /// anything else if neither accounts nor past performance are included. Returns false, with the reason in
  /// the error pair and the session not closed, if QuickBooks cannot be used. If an error ends the import,
  /// returns true, stores the error in the pair and does not raise `AfterImport`; tables that were already
  /// loaded into the plan stay there.
  bool Go();

  /// Shows the message "future implementation" and returns Empty.
  Variant SubmitCustomRequest(std::string_view QBRequestXML);
  /// Returns the document element of QuickBooks' response with the company's expense accounts, read on every
  /// call, or an empty element if there is no readable response.
  XmlElement QBExpenseAccounts();
  /// Returns the company's income accounts; otherwise like `QBExpenseAccounts`.
  XmlElement QBIncomeAccounts();
  /// Returns the company files in the folder of the QuickBooks program, as an element "qbcompanies" that
  /// contains a "company" with "name" and "fullpath" for each file, sorted by name, case-insensitive. Returns
  /// an empty element if the folder is unknown or cannot be read, or if a path contains characters that XML
  /// cannot represent; each such path is reported to the observer.
  XmlElement QBCompanies();
  /// Returns Empty.
  Variant Execute(std::string& Action, const Variant& Args = {});

  // The error pair.

  /// The number of the last failure, or 0. Only the host clears it.
  std::int32_t ErrorNumber() const noexcept;
  void ErrorNumber(std::int32_t number) noexcept;
  /// The description of the last failure, or an empty text. Only the host clears it.
  std::string ErrorDescription() const;
  void ErrorDescription(std::string_view description);
  /// Returns the kind of the error in the pair, which distinguishes errors that have the same number; `Other`
  /// if there is no error or the host has set the number.
  ErrorKind LastErrorKind() const noexcept;

  // Periods. A getter that reads 0 stores and returns the default: for the plan's start the import's start,
  // for the import's month the plan's, for the import's year the year before the plan's.

  /// First month of the plan, 1 to 12; by default the import's.
  std::int16_t KRNStartingMonth();
  void KRNStartingMonth(std::int16_t month) noexcept;
  /// First year of the plan; by default the import's.
  std::int16_t KRNStartingYear();
  void KRNStartingYear(std::int16_t year) noexcept;
  /// First month of the period that is imported, 1 to 12; by default the plan's. Opens a session first if
  /// none is open; a failure is stored in the error pair and otherwise ignored.
  std::int16_t StartingMonth();
  void StartingMonth(std::int16_t month) noexcept;
  /// Year of the first month that is imported; by default the year before the plan's. Throws Error 6 if that
  /// year does not fit in 16 bits.
  std::int16_t StartingYear();
  void StartingYear(std::int16_t year) noexcept;
  /// First month of the company's fiscal year, 1 to 12; 0 until the company check of a session has read it.
  /// The check is skipped if the host sets the month.
  std::int16_t QBStartingMonth() const noexcept;
  void QBStartingMonth(std::int16_t month) noexcept;

  /// The edition of the planning program that owns the plan.
  QBKRNproduct KRNProduct() const noexcept;
  void KRNProduct(QBKRNproduct product) noexcept;

  /// Returns the selection of expense accounts: the element that was set, or for QBKRN_BRI one that the first
  /// call builds from the company and the plan. Returns an empty element for other products, or if the
  /// selection cannot be built.
  XmlElement SelectedExpenses();
  /// Stores an XML element (shared, not copied), or clears the selection if passed Empty or Nothing. Throws
  /// Error 13, leaving the selection unchanged, for any other value.
  void SelectedExpenses(const Variant& selection);

  /// Returns the ids of the plan tables that an import for the current product may change, in a new
  /// collection; empty for an unknown product.
  std::shared_ptr<Collection> GetTablesAffected() const;

  /// The request processor's version, as `QBCompany` last read it or the host set it. An import reads
  /// transactions with major version 1, reports with 2, and no amounts with any other.
  std::int16_t QBMajorVersion() const noexcept;
  void QBMajorVersion(std::int16_t version) noexcept;
  /// The second part of the request processor's version; it affects nothing.
  std::int16_t QBMinorVersion() const noexcept;
  void QBMinorVersion(std::int16_t version) noexcept;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace krnqb
