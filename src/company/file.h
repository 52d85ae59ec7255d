#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/database.h"
#include "company/records/store.h"

namespace krnqb::company {

struct CompanyInfo {
  std::string path;  ///< absolute
  std::string name;
  std::string processorVersion;  ///< "1.0", "1.1" or "2.0"
  std::int16_t fiscalMonth =
      0;  ///< first month of the fiscal year, 1 to 12; 0 when the company names no English month
  std::vector<RecordCount> records;
};

/// What a document brought, counted by kind in the order in which the kinds first come in it. A record that
/// stands in the document twice is replaced by its second.
struct LoadSummary {
  std::string document;
  std::vector<RecordCount> added;
  std::vector<RecordCount> replaced;
};

/// A company of its own: a database file that keeps accounts, items and transactions as qbXML records and
/// answers requests for them as QuickBooks does. One opened for reading shows one state of the company for as
/// long as it is open, leaves the file and its folder as they are, and keeps others from loading into it
/// meanwhile.
///
/// Every operation throws Error: `company_error::cannotOpen` when the file cannot be used, with a text of its
/// own for a missing file, one that is no company file, and one that is locked.
class CompanyFile {
 public:
  /// Makes a company file without accounts, open for reading and writing. Error 5 when `fiscalMonth` is not 1
  /// to 12, `processorVersion` is not "1.0", "1.1" or "2.0", or `name` holds characters that XML cannot; 58
  /// when there is a file of that name, which is left as it is.
  static CompanyFile Create(const std::filesystem::path& file, std::string_view name,
                            std::int16_t fiscalMonth, std::string_view processorVersion);

  static CompanyFile Open(const std::filesystem::path& file, FileAccess access);

  const std::filesystem::path& Path() const noexcept { return path_; }
  const std::string& ProcessorVersion() const noexcept { return processorVersion_; }
  CompanyInfo Info() const;

  /// Takes in the records of a qbXML response document, whose `bytes` are in the encoding that it declares:
  /// all of them, or none and Error `company_error::cannotParse`, whose description names the document, the
  /// line and the reason. A record of the same kind and ListID or TxnID is replaced, and keeps its place in
  /// the list; CompanyRet replaces the company's name and fiscal year. Error `company_error::unexpected` when
  /// open for reading only.
  LoadSummary Load(std::string_view documentName, std::string_view bytes);

  /// The same for records that `produce` makes: it hands them, one by one, to the receiver that it is given.
  /// What it throws is thrown on, and none of its records is taken in.
  LoadSummary Store(std::string_view source, const std::function<void(const RecordReceiver&)>& produce);

  /// The answer to a request document. Error `company_error::cannotParse` when it cannot be parsed or is of a
  /// later version than the company's processor speaks.
  std::string Answer(std::string_view request) const;

 private:
  CompanyFile(std::filesystem::path absolutePath, FileAccess access);

  std::filesystem::path path_;
  FileAccess access_;
  Database database_;
  std::string processorVersion_;
};

}  // namespace krnqb::company
