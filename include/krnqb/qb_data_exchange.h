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

/// Brings accounting data from a QuickBooks company into a plan.
///
/// A host makes one, hands it its plan (`KRNPlanData`), sets the options and calls `Go`. Failures are told by
/// an operation's empty result and by the pair `ErrorNumber` / `ErrorDescription`, which keeps the last
/// failure; only the operations that say so below throw Error. All calls and all events happen on the
/// caller's thread. Integer properties are 16-bit; texts are UTF-8.
class QBDataExchange {
 public:
  explicit QBDataExchange(OutsideWorld world);
  /// Releases the host's slot, the request processor, the plan and then the lists and collections, in this
  /// order.
  ~QBDataExchange();
  QBDataExchange(const QBDataExchange&) = delete;
  QBDataExchange& operator=(const QBDataExchange&) = delete;

  /// A slot for the host's own use; released at termination, before everything else.
  Variant mQBDataExchangeObject() const;
  void mQBDataExchangeObject(const Variant& object);

  // Options of an import: all of them as one struct, and each as a property that reads and writes the same
  // field.

  /// Returns the options as they are stored; a period field that is 0 stays 0 and no default is stored.
  ImportOptions Options() const noexcept;
  /// Replaces all options, the period and the product included.
  void Options(const ImportOptions& options) noexcept;

  bool IncludeExpenseAccounts() const noexcept;
  void IncludeExpenseAccounts(bool include) noexcept;
  bool IncludeIncomeAccounts() const noexcept;
  void IncludeIncomeAccounts(bool include) noexcept;
  bool IncludePastPerformance() const noexcept;
  void IncludePastPerformance(bool include) noexcept;
  /// Annual growth in whole percent.
  std::int16_t GrowthRateCOGS() const noexcept;
  void GrowthRateCOGS(std::int16_t percent) noexcept;
  std::int16_t GrowthRateIncome() const noexcept;
  void GrowthRateIncome(std::int16_t percent) noexcept;
  std::int16_t GrowthRateExpenses() const noexcept;
  void GrowthRateExpenses(std::int16_t percent) noexcept;
  QBKRN_BalancesImport BalancesImport() const noexcept;
  void BalancesImport(QBKRN_BalancesImport balances) noexcept;

  // QuickBooks.

  /// Whether QuickBooks lists exactly this qbXML version. Throws when the session cannot be opened (91), when
  /// QuickBooks refuses the request (its own error) or when the text holds a double quote (-2147467259).
  Variant IsSDKVersionSupported(std::string_view sVersion = "1.1");
  /// Opens a session and reads the open company's path and the processor's versions from QuickBooks. Without
  /// a session the stored path; empty, with the error pair set, when QuickBooks must be updated. Throws when
  /// an open session refuses a request or a question.
  std::string QBCompany();
  /// Stores the path that the next session opens.
  void QBCompany(std::string_view path);
  /// Sends one request and gives the answer's text; Empty when no session can be opened. Throws when an open
  /// session refuses the request, or when `SerialData` has no text (13, 91).
  Variant QbSerialize(const Variant& SerialData, QBKRN_DeserializeOptions DeserializeOptions = qbkrndDefault);

  // The plan.

  Variant KRNPlanData() const;
  /// Stores the host's plan object; no check is made until it is used.
  void KRNPlanData(const Variant& plan);
  /// Forwards to the plan. Throws 91 without a plan, 438 when the stored object is no plan, or the plan's own
  /// error.
  bool KRNOpenPlan(std::string_view PlanFile);
  /// Turns an account list of QuickBooks (an answer's text or element) into the "<tables>" document of the
  /// plan tables that it changes, new account rows merged in. The empty text when nothing could be produced.
  Variant KRNDeserialize(const Variant& SerialData,
                         QBKRN_DeserializeOptions DeserializeOptions = qbkrndDefault);
  /// Gives Empty.
  Variant KRNSerialize(QBKRN_SerializeOptions SerializeOptions = qbkrnsDefault);
  /// The highest month, 1 to 12, in which any `cSubtotals` of the collection holds an amount other than 0; 0
  /// when there is none, without a collection, or when an item is no `cSubtotals`.
  std::int16_t MonthsOfActivity(const std::shared_ptr<Collection>& colMonthSubtotals);
  /// Shows one of the dialogs and returns when it has been closed. The chosen path where a file is asked for;
  /// Empty otherwise, and when nothing was chosen. A company file that was chosen becomes the one that the
  /// next session opens.
  Variant ShowDialog(QBKRN_Dialogs DialogOption);

  /// Runs the import. False with the reason in the error pair when QuickBooks cannot be used; otherwise true,
  /// also when an error ended the import: then `ErrorNumber` tells, and `AfterImport` was not raised.
  bool Go();

  /// Shows that custom requests are not there yet; gives Empty.
  Variant SubmitCustomRequest(std::string_view QBRequestXML);
  /// The company's expense (income) accounts as QuickBooks answers them, read anew each time; none without an
  /// answer.
  XmlElement QBExpenseAccounts();
  XmlElement QBIncomeAccounts();
  /// The company files in the folder of the QuickBooks program: "qbcompanies" with a "company" of "name" and
  /// "fullpath" for each, sorted by name without regard to letter case. None when the folder is not known or
  /// cannot be read, and when a path holds what no XML text can: the observer is told which.
  XmlElement QBCompanies();
  /// Gives Empty.
  Variant Execute(std::string& Action, const Variant& Args = {});

  // The last failure. Nothing clears it but the host.

  std::int32_t ErrorNumber() const noexcept;
  void ErrorNumber(std::int32_t number) noexcept;
  std::string ErrorDescription() const;
  void ErrorDescription(std::string_view description);
  /// Returns the kind of the error in the pair, which tells two meanings of one number apart; `Other` if
  /// there is no error or the host has set the number.
  ErrorKind LastErrorKind() const noexcept;

  // Periods. A getter that finds 0 stores the default that it gives: the plan's start is the import's start,
  // the import's month is the plan's, the import's year is the year before the plan's.

  std::int16_t KRNStartingMonth();
  void KRNStartingMonth(std::int16_t month) noexcept;
  std::int16_t KRNStartingYear();
  void KRNStartingYear(std::int16_t year) noexcept;
  /// Makes sure that a session is open first.
  std::int16_t StartingMonth();
  void StartingMonth(std::int16_t month) noexcept;
  /// Throws 6 when the year before the plan's does not fit 16 bits.
  std::int16_t StartingYear();
  void StartingYear(std::int16_t year) noexcept;
  /// First month of the company's fiscal year, 1 to 12; 0 until a session's company check has read it. A host
  /// that sets it spares the check.
  std::int16_t QBStartingMonth() const noexcept;
  void QBStartingMonth(std::int16_t month) noexcept;

  QBKRNproduct KRNProduct() const noexcept;
  void KRNProduct(QBKRNproduct product) noexcept;

  /// The selection of expense accounts: the element that was set, or for QBKRN_BRI one built from the company
  /// and the plan; none otherwise.
  XmlElement SelectedExpenses();
  /// Stores an XML element (shared, not copied); Empty and Nothing clear it. Throws 13 for anything else.
  void SelectedExpenses(const Variant& selection);

  /// The ids of the plan tables that an import for the current product may change.
  std::shared_ptr<Collection> GetTablesAffected() const;

  /// The request processor's version, filled by `QBCompany`; 1 imports from transactions, 2 from reports.
  std::int16_t QBMajorVersion() const noexcept;
  void QBMajorVersion(std::int16_t version) noexcept;
  std::int16_t QBMinorVersion() const noexcept;
  void QBMinorVersion(std::int16_t version) noexcept;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace krnqb
