#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/database.h"
#include "company/records/document.h"
#include "company/records/ledger.h"
#include "company/records/store.h"
#include "company/reports/entries.h"
#include "company/reports/profit_and_loss.h"

namespace krnqb::company {

struct CompanyInfo {
  std::string path;  ///< absolute
  std::string name;
  std::string processorVersion;  ///< "1.0", "1.1" or "2.0"
  /// First month of the fiscal year, 1 to 12; 0 if the company's record has no English month name.
  std::int16_t fiscalMonth = 0;
  std::vector<RecordCount> records;
};

/// The records loaded from a document, counted by kind, in order of first occurrence. If a record occurs
/// twice in the document, the second replaces the first.
struct LoadSummary {
  std::string document;
  std::vector<RecordCount> added;
  std::vector<RecordCount> replaced;
  /// The records of kinds that company files cannot store, by element name, in alphabetical order.
  std::vector<RecordCount> passedOver;
};

/// What a load does with records of kinds that company files cannot store.
enum class UnknownKinds {
  PassOver,  ///< load the rest of the document
  Refuse     ///< load nothing of the document
};

/// A company file: a database of accounts, items and transactions, stored as qbXML records, that answers
/// requests for them as QuickBooks does. A file opened for reading shows one state of the company as long as
/// it is open, changes neither the file nor its folder, and blocks loading meanwhile. Every page has a
/// checksum, which is verified whenever the page is read.
///
/// Every operation throws Error `company_error::cannotOpen` if the file cannot be used; the description
/// distinguishes a missing file, a file that is not a company file, a locked one, and a damaged one. The
/// error is of kind `Unspecified` if its description says what to do about it. Operations end with the error
/// "interrupted" soon after `interrupted` returns true.
class CompanyFile {
 public:
  /// Creates a company file without accounts and opens it for reading and writing. Throws Error 5 if
  /// `fiscalMonth` is not 1 to 12, `processorVersion` is not "1.0", "1.1" or "2.0", or `name` contains
  /// characters that XML cannot represent; Error 58 if the file exists, which is then unchanged.
  static CompanyFile Create(const std::filesystem::path& file, std::string_view name,
                            std::int16_t fiscalMonth, std::string_view processorVersion,
                            Interruption interrupted = {});

  /// A load that was interrupted is undone if the file is opened for writing; a reader refuses the file then.
  static CompanyFile Open(const std::filesystem::path& file, FileAccess access,
                          Interruption interrupted = {});

  const std::filesystem::path& Path() const noexcept { return path_; }
  const std::string& ProcessorVersion() const noexcept { return processorVersion_; }
  /// Returns false for a file of layout 1, whose pages have no checksums.
  bool HasChecksums() const noexcept { return database_.HasChecksums(); }
  CompanyInfo Info() const;

  /// Loads the records of a qbXML response document, whose bytes are in the encoding that it declares. Keeps
  /// one record at a time in memory.
  /// Throws Error `company_error::cannotParse` and loads nothing if the document is faulty; the description
  /// names the document, the line and the reason. A record with the same kind and ListID or TxnID is replaced
  /// and keeps its place in the list; CompanyRet replaces the company's name and fiscal year. Throws Error
  /// `company_error::unexpected` if the file is open for reading only. If `document` throws, no records are
  /// loaded and the exception is passed on.
  LoadSummary Load(std::string_view documentName, const ByteSource& document,
                   UnknownKinds unknownKinds = UnknownKinds::PassOver);
  /// Loads a document that is in memory.
  LoadSummary Load(std::string_view documentName, std::string_view bytes,
                   UnknownKinds unknownKinds = UnknownKinds::PassOver) {
    return Load(documentName, BytesOf(bytes), unknownKinds);
  }

  /// Loads the records that `produce` passes, one by one, to its receiver. If `produce` throws, no records
  /// are loaded and the exception is passed on.
  LoadSummary Store(std::string_view source, const std::function<void(const RecordReceiver&)>& produce);

  /// Returns the dates of the company's first and last transaction; nullopt if it has none.
  std::optional<LedgerDays> TransactionDays() const;

  /// Returns the months that have transactions; see `company::ReadTransactionMonths`.
  std::vector<std::string> TransactionMonths(std::string_view firstDay, std::string_view lastDay,
                                             TransactionChoice choice) const;

  /// Returns the TxnIDs of the pending sales in a period; see `company::ReadPendingSales`.
  std::vector<std::string> PendingSales(std::string_view firstDay, std::string_view lastDay) const;

  /// Passes what the company's transactions post to the accounts of a profit and loss to `receive`; see
  /// `company::ReadLedgerEntries`.
  void ReadLedgerEntries(std::string_view firstDay, std::string_view lastDay,
                         const LedgerEntryReceiver& receive) const;

  /// Returns the company's profit and loss, whatever its processor's version, and how much of each account's
  /// balance the loaded transactions explain; see `company::ComputeProfitAndLoss`.
  company::ProfitAndLoss ProfitAndLoss(std::string_view firstDay, std::string_view lastDay) const;

  /// Returns the response to a request document. Throws Error `company_error::cannotParse` if the request
  /// cannot be parsed or its version is later than the processor's. The response is built in the memory of
  /// `used`.
  std::string Answer(std::string_view request, std::string used = {}) const;

 private:
  CompanyFile(std::filesystem::path path, FileAccess access, Interruption interrupted);

  std::filesystem::path path_;
  FileAccess access_;
  Database database_;
  std::string processorVersion_;
};

/// Throws Error `company_error::cannotOpen` unless a file is there and can be a company.
void RequireFile(const std::filesystem::path& file);

}  // namespace krnqb::company
