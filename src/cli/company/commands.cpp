#include "cli/company/commands.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/company/interruptible.h"
#include "cli/company/json_output.h"
#include "cli/company/loaded_document.h"
#include "cli/console/attempt.h"
#include "cli/console/text_table.h"
#include "cli/exchange/company_file.h"
#include "files/operations.h"
#include "support/date.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

using company::CompanyFile;
using company::FileAccess;
using company::RecordCount;
using company::UnknownKinds;

// "52 AccountRet, 3 ItemServiceRet", or "nothing".
std::string CountsText(const std::vector<RecordCount>& counts) {
  std::string text;
  for (const RecordCount& record : counts) {
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ", record.count, record.kind);
  }
  return text.empty() ? "nothing" : text;
}

std::string LoadText(const company::LoadSummary& summary) {
  std::string text = fmt::format("{}: added {}", summary.document, CountsText(summary.added));
  if (!summary.replaced.empty()) text += fmt::format("; replaced {}", CountsText(summary.replaced));
  return text + '\n';
}

void WarnOfPassedOver(const company::LoadSummary& summary, const Console& console) {
  constexpr std::size_t mostKinds = 20;
  if (summary.passedOver.empty()) return;
  std::vector<RecordCount> named = summary.passedOver;
  const std::size_t kinds = named.size();
  named.resize(std::min(kinds, mostKinds));
  std::string text = CountsText(named);
  if (kinds > mostKinds) text += fmt::format(" and {} more kinds", kinds - mostKinds);
  Warn(console,
       fmt::format("{}: passed over {}: company files cannot store such records", summary.document, text));
}

// Opens all documents, so that a missing one is found before any is loaded.
std::vector<LoadedDocument> Documents(const std::vector<std::string>& names,
                                      files::FileOperations& operations) {
  return Attempt("loading failed", "check the path and load again (nothing was loaded)", [&] {
    std::vector<LoadedDocument> documents;
    documents.reserve(names.size());
    for (const std::string& name : names) documents.emplace_back(name, operations);
    return documents;
  });
}

std::string InfoText(const company::CompanyInfo& info) {
  TextTable table({Alignment::Left, Alignment::Left});
  table.AddRow({"Company", info.name});
  table.AddRow({"File", info.path});
  table.AddRow({"Fiscal year from", info.fiscalMonth == 0 ? "(not an English month name)"
                                                          : std::string(EnglishMonthName(info.fiscalMonth))});
  table.AddRow({"Answers qbXML", "up to " + info.processorVersion});
  std::string text = table.Text();
  TextTable records({Alignment::Right, Alignment::Left});
  for (const RecordCount& record : info.records)
    records.AddRow({fmt::format("{}", record.count), record.kind});
  text += info.records.empty() ? "No records yet; load documents with krnqb company load.\n" : "Records\n";
  return text + records.Text("  ");
}

void WarnOfChecksums(const CompanyFile& company, const std::string& path, const Console& console) {
  if (const auto warning = ChecksumWarning(path, company.HasChecksums())) Warn(console, *warning);
}

company::CompanyInfo InfoOf(const CompanyFile& company) {
  try {
    return company.Info();
  } catch (...) {
    throw CompanyFailure("reading the company failed", CaughtError(), "run krnqb company check");
  }
}

// Returns the failure of a load from the exception being handled. Each document is loaded whole or not at
// all.
Failure LoadFailure(std::size_t loaded, const InterruptWatch& interrupts) {
  const ExitCode code = loaded > 0 ? ExitCode::Incomplete : ExitCode::Failed;
  constexpr std::string_view interrupted = "loading interrupted";
  if (interrupts.Requested()) {
    Failure nothingLoaded = interrupts.Interruption(interrupted, "nothing was loaded");
    if (loaded == 0) return nothingLoaded;
    return {code, interrupted, nothingLoaded, "load the rest of the documents (those before are loaded)"};
  }
  const std::string rest = loaded == 0
                               ? "fix the document and load it again (nothing was loaded)"
                               : "fix the document, then load it and the rest (those before it are loaded)";
  try {
    throw;
  } catch (const Failure& failure) {
    return failure;
  } catch (...) {
    const Error error = CaughtError();
    if (error.Kind() == ErrorKind::Unspecified) return {code, error};
    return {code, "loading failed", error, rest};
  }
}

}  // namespace

CommandEnd Run(const NewCompanyOptions& options, const Console& console) {
  Attempt("creating the company failed", "give another path or name", [&] {
    CompanyFile::Create(PathFrom(options.file), options.name, options.fiscalMonth, options.processorVersion);
  });
  console.out << fmt::format("Created {}: company {}, fiscal year from {}, answers qbXML up to {}.\n",
                             options.file, options.name, EnglishMonthName(options.fiscalMonth),
                             options.processorVersion);
  return {ExitCode::Done, true};
}

CommandEnd Run(const LoadCompanyOptions& options, const Console& console) {
  const InterruptWatch interrupts;
  std::size_t loaded = 0;
  try {
    files::SystemFileOperations operations;
    std::vector<LoadedDocument> documents = Documents(options.documents, operations);
    CompanyFile company = OpenCompany(options.file, FileAccess::ReadWrite, interrupts);
    WarnOfChecksums(company, options.file, console);
    for (LoadedDocument& document : documents) {
      const UnknownKinds unknown = options.strict ? UnknownKinds::Refuse : UnknownKinds::PassOver;
      const company::LoadSummary summary = document.LoadInto(company, unknown);
      console.out << LoadText(summary);
      WarnOfPassedOver(summary, console);
      ++loaded;
    }
  } catch (...) {
    throw LoadFailure(loaded, interrupts);
  }
  return {ExitCode::Done, true};
}

CommandEnd Run(const GenerateCompanyOptions& options, const Console& console) {
  sample_company::GeneratorSettings settings = options.settings;
  settings.firstYear = options.years.first;
  settings.lastYear = options.years.last;
  settings.seed = static_cast<std::uint64_t>(options.seed);
  sample_company::GeneratorSummary made;
  RunInterruptibly("creating the company", "no file was created", [&](const InterruptWatch& interrupts) {
    made = Attempt("creating the company failed", "change the setting or give another path", [&] {
      return sample_company::GenerateCompany(PathFrom(options.file), settings, FollowInterrupts(interrupts));
    });
    return ExitCode::Done;
  });
  console.out << fmt::format("Created {}: company {}, {} to {}, answers qbXML up to {}.\n", options.file,
                             settings.companyName, settings.firstYear, settings.lastYear,
                             settings.processorVersion);
  console.out << fmt::format("Records: {}.\n", CountsText(made.records));
  console.out << fmt::format("Transaction lines: {}. File: {:.1f} MiB.\n", made.transactionLines,
                             static_cast<double>(made.fileSize) / (1024.0 * 1024.0));
  return {ExitCode::Done, true};
}

ExitCode Run(const CompanyInfoOptions& options, const Console& console) {
  return RunInterruptibly(
      "reading the company", "nothing was changed", [&](const InterruptWatch& interrupts) {
        const CompanyFile company = OpenCompany(options.file, FileAccess::ReadOnly, interrupts);
        const company::CompanyInfo info = InfoOf(company);
        WarnOfChecksums(company, options.file, console);
        console.out << (options.json ? CompanyInfoJson(info) + '\n' : InfoText(info));
        return ExitCode::Done;
      });
}

}  // namespace krnqb::cli
