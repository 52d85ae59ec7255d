#include "cli/company/commands.h"

#include <fmt/format.h>

#include "cli/company/json_output.h"
#include "cli/console/attempt.h"
#include "cli/console/text_table.h"
#include "company/file.h"
#include "company/records/errors.h"
#include "files/reading.h"
#include "support/date.h"

namespace krnqb::cli {
namespace {

using company::CompanyFile;
using company::FileAccess;
using company::RecordCount;

constexpr std::string_view createCompany = "check the path, or create a company with krnqb company new";

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

struct Document {
  std::string name;
  std::string bytes;
};

// Reads all documents, so that a missing one is found before any is loaded.
std::vector<Document> Documents(const std::vector<std::string>& names) {
  return Attempt("loading failed", "check the path and load again (nothing was loaded)", [&] {
    std::vector<Document> documents;
    documents.reserve(names.size());
    for (const std::string& name : names) documents.push_back({name, files::ReadDocument(name, {})});
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

}  // namespace

ExitCode Run(const NewCompanyOptions& options, const Console& console) {
  Attempt("creating the company failed", "give another path or name", [&] {
    CompanyFile::Create(options.file, options.name, options.fiscalMonth, options.processorVersion);
  });
  console.out << fmt::format("Created {}: company {}, fiscal year from {}, answers qbXML up to {}.\n",
                             options.file, options.name, EnglishMonthName(options.fiscalMonth),
                             options.processorVersion);
  return ExitCode::Done;
}

ExitCode Run(const LoadCompanyOptions& options, const Console& console) {
  const std::vector<Document> documents = Documents(options.documents);
  CompanyFile company = Attempt("opening the company failed", createCompany,
                                [&] { return CompanyFile::Open(options.file, FileAccess::ReadWrite); });
  std::size_t loaded = 0;
  for (const auto& [document, bytes] : documents) {
    try {
      console.out << LoadText(company.Load(document, bytes));
      ++loaded;
    } catch (...) {
      const std::string rest =
          loaded == 0 ? "fix the document and load it again (nothing was loaded)"
                      : "fix the document, then load it and the rest (those before it are loaded)";
      throw Failure(loaded == 0 ? ExitCode::Failed : ExitCode::Incomplete, "loading failed", CaughtError(),
                    rest);
    }
  }
  return ExitCode::Done;
}

ExitCode Run(const GenerateCompanyOptions& options, const Console& console) {
  sample_company::GeneratorSettings settings = options.settings;
  settings.firstYear = options.years.first;
  settings.lastYear = options.years.last;
  settings.seed = static_cast<std::uint64_t>(options.seed);
  const sample_company::GeneratorSummary made =
      Attempt("creating the company failed", "change the setting or give another path",
              [&] { return sample_company::GenerateCompany(options.file, settings); });
  console.out << fmt::format("Created {}: company {}, {} to {}, answers qbXML up to {}.\n", options.file,
                             settings.companyName, settings.firstYear, settings.lastYear,
                             settings.processorVersion);
  console.out << fmt::format("Records: {}.\n", CountsText(made.records));
  console.out << fmt::format("Transaction lines: {}. File: {:.1f} MiB.\n", made.transactionLines,
                             static_cast<double>(made.fileSize) / (1024.0 * 1024.0));
  return ExitCode::Done;
}

ExitCode Run(const CompanyInfoOptions& options, const Console& console) {
  const company::CompanyInfo info = Attempt("opening the company failed", createCompany, [&] {
    return CompanyFile::Open(options.file, FileAccess::ReadOnly).Info();
  });
  console.out << (options.json ? CompanyInfoJson(info) + '\n' : InfoText(info));
  return ExitCode::Done;
}

}  // namespace krnqb::cli
