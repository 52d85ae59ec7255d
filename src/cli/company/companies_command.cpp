#include "cli/company/companies_command.h"

#include <fmt/format.h>

#include <set>
#include <utility>

#include "cli/company/json_output.h"
#include "cli/company/quickbooks_folder.h"
#include "cli/console/text_table.h"
#include "krnqb/qb_data_exchange.h"
#include "support/system_files.h"

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

// The machine's files, without those that cannot be listed.
class ListableFiles final : public FileSystem {
 public:
  explicit ListableFiles(std::set<std::string> omitted)
      : files_(SystemFiles()), omitted_(std::move(omitted)) {}

  std::vector<std::string> FileNames(const std::string& folder) override {
    std::vector<std::string> names = files_->FileNames(folder);
    std::erase_if(names, [&](const std::string& name) { return omitted_.contains(folder + name); });
    return names;
  }
  bool FileExists(const std::string& path) override { return files_->FileExists(path); }

 private:
  std::shared_ptr<FileSystem> files_;
  std::set<std::string> omitted_;
};

// A list either has all companies or is nothing; `notices` says why.
XmlElement ListOf(const std::string& folder, std::shared_ptr<FileSystem> files,
                  std::vector<Notice>& notices) {
  const auto listener = std::make_shared<Listener>();
  OutsideWorld world;
  world.observer = listener;
  world.files = std::move(files);
  world.quickBooksFolder = folder;
  XmlElement list = QBDataExchange(world).QBCompanies();
  notices = listener->notices;
  return list;
}

// The companies of a folder, and the reports about files that cannot be listed.
struct Listing {
  std::vector<Company> companies;
  std::vector<UnlistedCompany> unlisted;
};

Listing ListCompanies(const std::string& folder) {
  Listing listing;
  std::vector<Notice> notices;
  XmlElement list = ListOf(folder, nullptr, notices);
  std::set<std::string> omitted;
  for (const Notice& notice : notices) {
    if (notice.kind != NoticeKind::CompanyFileUnlisted) continue;
    listing.unlisted.push_back({notice.file, notice.description});
    omitted.insert(notice.file);
  }
  if (!list && !omitted.empty()) list = ListOf(folder, std::make_shared<ListableFiles>(omitted), notices);
  if (!list) {
    throw CommandFailure(listingFailed, fmt::format("the folder {} cannot be read", folder),
                         "check the path and its permissions");
  }
  listing.companies = CompaniesIn(list);
  return listing;
}

}  // namespace

ExitCode Run(const CompaniesOptions& options, const Console& console, const Surroundings& surroundings) {
  const Listing listing = ListCompanies(QuickBooksFolderPath(options.quickBooksFolder, surroundings));
  for (const UnlistedCompany& company : listing.unlisted) {
    Warn(console, fmt::format("{} is not listed: {}; rename the file", company.path, company.reason));
  }
  if (options.json) {
    console.out << CompaniesJson(listing.companies, listing.unlisted) << '\n';
  } else {
    for (const Company& company : listing.companies) console.out << OneLine(company.path) << '\n';
  }
  return listing.unlisted.empty() ? ExitCode::Done : ExitCode::Incomplete;
}

}  // namespace krnqb::cli
