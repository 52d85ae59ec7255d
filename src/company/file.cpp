#include "company/file.h"

#include <fcntl.h>
#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <system_error>

#include "company/answer.h"
#include "company/records/errors.h"
#include "company/records/request.h"
#include "company/records/schema.h"
#include "company/records/versions.h"
#include "files/descriptor.h"
#include "files/fault.h"
#include "krnqb/error.h"
#include "support/date.h"
#include "support/path_text.h"
#include "xml/parser.h"

namespace krnqb::company {
namespace {

void CheckNewCompany(std::int16_t fiscalMonth, std::string_view processorVersion) {
  if (fiscalMonth < 1 || fiscalMonth > 12) {
    throw Error(error_number::invalidProcedureCall,
                fmt::format("The fiscal year must begin in a month from 1 to 12, not {}.", fiscalMonth));
  }
  if (!VersionOrder(processorVersion)) {
    throw Error(error_number::invalidProcedureCall,
                fmt::format("The processor version must be 1.0, 1.1 or 2.0, not {}.", processorVersion));
  }
}

std::string SettingsDocument(std::string_view name, std::int16_t fiscalMonth) {
  std::string document = fmt::format(
      "<QBXML><QBXMLMsgsRs><CompanyQueryRs><CompanyRet><CompanyName>{}</CompanyName>"
      "<FirstMonthFiscalYear>{}</FirstMonthFiscalYear></CompanyRet></CompanyQueryRs></QBXMLMsgsRs></QBXML>",
      EscapedXmlText(name), EnglishMonthName(fiscalMonth));
  if (ParseXmlText(document).fault) {
    throw Error(error_number::invalidProcedureCall,
                "The company name contains characters that XML cannot represent.");
  }
  return document;
}

// Creates an empty file. Mode "x": a file that another program creates meanwhile is never overwritten.
void MakeNewFile(const std::filesystem::path& file) {
  constexpr int newFile = O_WRONLY | O_CREAT | O_EXCL;
  if (files::FileDescriptor::Open(file, newFile, 0666)) return;
  const std::error_code failure = files::LastSystemError();
  if (failure == std::errc::file_exists) {
    throw Error(company_error::fileAlreadyExists,
                fmt::format("The file {} already exists.", TextOfPath(file)));
  }
  throw Error(company_error::cannotOpen, fmt::format("The company file {} cannot be created: {}.",
                                                     TextOfPath(file), files::ReasonText(failure)));
}

void Count(std::vector<RecordCount>& counts, std::string_view kind) {
  const auto found = std::ranges::find(counts, kind, &RecordCount::kind);
  if (found == counts.end()) {
    counts.push_back({std::string(kind), 1});
  } else {
    ++found->count;
  }
}

}  // namespace

void RequireFile(const std::filesystem::path& file) {
  std::error_code fault;
  const std::filesystem::file_status status = std::filesystem::status(file, fault);
  if (status.type() == std::filesystem::file_type::not_found) {
    throw Error(company_error::cannotOpen, fmt::format("There is no company file {}.", TextOfPath(file)));
  }
  if (status.type() == std::filesystem::file_type::none) {
    throw Error(company_error::cannotOpen, fmt::format("The company file {} cannot be opened: {}.",
                                                       TextOfPath(file), files::ReasonText(fault)));
  }
  if (!std::filesystem::is_regular_file(status)) {
    throw Error(company_error::cannotOpen,
                fmt::format("The file {} is not a company file.", TextOfPath(file)));
  }
}

CompanyFile::CompanyFile(std::filesystem::path path, FileAccess access, Interruption interrupted)
    : path_(std::move(path)), access_(access), database_(path_, access_, std::move(interrupted)) {
  // A reader keeps one transaction open, so that it sees one state of the company.
  if (access_ == FileAccess::ReadOnly) database_.Execute("BEGIN");
  // Documents are loaded in the order of dates, so an index of postings is written in one page for each
  // account and item at a time: with a cache of 24 MiB a load seldom writes a page twice.
  if (access_ == FileAccess::ReadWrite) database_.Execute("PRAGMA cache_size = -24576");
  CheckSchema(database_, path_);
  processorVersion_ = ReadProcessorVersion(database_);
}

CompanyFile CompanyFile::Create(const std::filesystem::path& file, std::string_view name,
                                std::int16_t fiscalMonth, std::string_view processorVersion,
                                Interruption interrupted) {
  CheckNewCompany(fiscalMonth, processorVersion);
  const std::string settings = SettingsDocument(name, fiscalMonth);
  const std::filesystem::path path = std::filesystem::absolute(file);
  MakeNewFile(path);
  try {
    CreateSchema(Database(path, FileAccess::ReadWrite), processorVersion);
    CompanyFile company(path, FileAccess::ReadWrite, std::move(interrupted));
    company.Load("the company's settings", settings);
    return company;
  } catch (...) {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    throw;
  }
}

CompanyFile CompanyFile::Open(const std::filesystem::path& file, FileAccess access,
                              Interruption interrupted) {
  const std::filesystem::path path = std::filesystem::absolute(file);
  RequireFile(path);
  return CompanyFile(path, access, std::move(interrupted));
}

CompanyInfo CompanyFile::Info() const {
  const XmlElement company = ParseXmlText(ReadSetting(database_, "Company")).element;
  const auto textOf = [&](std::string_view name) {
    const XmlElement child = company.Child(name);
    return child ? child.Text() : std::string();
  };
  CompanyInfo info;
  info.path = TextOfPath(path_);
  info.name = textOf("CompanyName");
  info.processorVersion = processorVersion_;
  info.fiscalMonth = MonthNumber(textOf("FirstMonthFiscalYear")).value_or(0);
  info.records = CountRecords(database_);
  return info;
}

LoadSummary CompanyFile::Load(std::string_view documentName, const ByteSource& document,
                              UnknownKinds unknownKinds) {
  std::map<std::string, std::int64_t, std::less<>> passedOver;
  PassedOverReceiver passOver;
  if (unknownKinds == UnknownKinds::PassOver) {
    passOver = [&](std::string_view element) { ++passedOver[std::string(element)]; };
  }
  LoadSummary summary = Store(documentName, [&](const RecordReceiver& receive) {
    ReadDocument(documentName, document, receive, passOver);
  });
  for (const auto& [element, count] : passedOver) summary.passedOver.push_back({element, count});
  return summary;
}

LoadSummary CompanyFile::Store(std::string_view source,
                               const std::function<void(const RecordReceiver&)>& produce) {
  if (access_ == FileAccess::ReadOnly) {
    throw Error(company_error::unexpected,
                fmt::format("The company file {} is open for reading only.", TextOfPath(path_)));
  }
  LoadSummary summary{std::string(source), {}, {}, {}};
  Transaction transaction(database_);
  RecordStore records(database_);
  produce([&](CompanyRecord&& record) {
    const PutResult result = records.Put(record);
    Count(result == PutResult::Added ? summary.added : summary.replaced, record.kind->element);
  });
  records.OrderLists();
  transaction.Commit();
  return summary;
}

std::optional<LedgerDays> CompanyFile::TransactionDays() const {
  return ReadLedgerDays(database_);
}

std::vector<std::string> CompanyFile::TransactionMonths(std::string_view firstDay, std::string_view lastDay,
                                                        TransactionChoice choice) const {
  return ReadTransactionMonths(database_, firstDay, lastDay, choice);
}

std::vector<std::string> CompanyFile::PendingSales(std::string_view firstDay,
                                                   std::string_view lastDay) const {
  return ReadPendingSales(database_, firstDay, lastDay);
}

void CompanyFile::ReadLedgerEntries(std::string_view firstDay, std::string_view lastDay,
                                    const LedgerEntryReceiver& receive) const {
  company::ReadLedgerEntries(database_, firstDay, lastDay, receive);
}

company::ProfitAndLoss CompanyFile::ProfitAndLoss(std::string_view firstDay, std::string_view lastDay) const {
  return ComputeProfitAndLoss(database_, firstDay, lastDay);
}

std::string CompanyFile::Answer(std::string_view request, std::string used) const {
  return AnswerRequests(database_, processorVersion_, ParseRequests(request, processorVersion_),
                        std::move(used));
}

}  // namespace krnqb::company
