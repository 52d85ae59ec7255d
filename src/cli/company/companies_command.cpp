#include "cli/company/companies_command.h"

#include <fmt/format.h>

#include "cli/company/json_output.h"
#include "cli/company/quickbooks_folder.h"
#include "cli/console/text_table.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view listingFailed = "listing companies failed";

class Listener final : public Observer {
 public:
  void Notify(const Notice& notice) noexcept override { notices.push_back(notice); }

  std::vector<Notice> notices;
};

std::vector<Company> CompaniesIn(const XmlElement& list) {
  std::vector<Company> companies;
  for (const XmlElement& company : list.Children()) {
    companies.push_back({company.Child("name").Text(), company.Child("fullpath").Text()});
  }
  return companies;
}

// Prints every file that could not be listed except the last, which the failure reports.
Failure ListingFailure(const Listener& listener, const std::string& folder, const Console& console) {
  constexpr std::string_view rename = "rename the file and try again";
  std::string reason = fmt::format("the folder {} cannot be read", folder);
  std::string_view whatToDo = "check the path and its permissions";
  std::string pending;
  for (const Notice& notice : listener.notices) {
    if (notice.kind != NoticeKind::CompanyFileUnlisted) continue;
    if (!pending.empty())
      PrintError(console, fmt::format("krnqb: {}: {}; {}", listingFailed, pending, rename));
    pending = reason = fmt::format("{}: {}", notice.file, notice.description);
    whatToDo = rename;
  }
  return CommandFailure(listingFailed, reason, whatToDo);
}

}  // namespace

ExitCode Run(const CompaniesOptions& options, const Console& console, const Surroundings& surroundings) {
  const std::string folder = QuickBooksFolderPath(options.quickBooksFolder, surroundings);
  const auto listener = std::make_shared<Listener>();
  OutsideWorld world;
  world.observer = listener;
  world.quickBooksFolder = folder;
  QBDataExchange exchange(world);
  const XmlElement list = exchange.QBCompanies();
  if (!list) throw ListingFailure(*listener, folder, console);

  const std::vector<Company> companies = CompaniesIn(list);
  if (options.json) {
    console.out << CompaniesJson(companies) << '\n';
  } else {
    for (const Company& company : companies) console.out << OneLine(company.path) << '\n';
  }
  return ExitCode::Done;
}

}  // namespace krnqb::cli
