#include "component/company_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "component/helper.h"
#include "krnqb/keyed_collection.h"
#include "xml/parser.h"

namespace krnqb {
namespace {

constexpr std::string_view programKey = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\qbw32.exe)";
constexpr std::string_view companyExtension = ".qbw";

QuickBooksFolder NamedFolder(std::string path) {
  const char separator = static_cast<char>(std::filesystem::path::preferred_separator);
  while (path.ends_with(separator)) path.pop_back();
  return {.path = std::move(path), .separator = std::string(1, separator)};
}

bool IsCompanyFile(std::string_view name) {
  return name.size() >= companyExtension.size() &&
         FoldedKey(name.substr(name.size() - companyExtension.size())) == companyExtension;
}

// Case-insensitive order; names that differ only in case are ordered by their bytes.
std::vector<std::string> Sorted(const std::vector<std::string>& names) {
  std::vector<std::pair<std::string, std::string>> byKey;
  byKey.reserve(names.size());
  for (const std::string& name : names) byKey.emplace_back(FoldedKey(name), name);
  std::sort(byKey.begin(), byKey.end());
  std::vector<std::string> sorted;
  sorted.reserve(names.size());
  for (auto& [key, name] : byKey) sorted.push_back(std::move(name));
  return sorted;
}

std::string Record(std::string_view name, std::string_view path) {
  return fmt::format("<company><name><![CDATA[{}]]></name><fullpath><![CDATA[{}]]></fullpath></company>",
                     name, path);
}

// Returns why the document cannot contain a company's record, or nothing if it can. A path with "]]>" is
// rejected even if the record is well-formed: the text after it would not be read as part of the path.
std::optional<std::string> FaultOf(const std::string& record, std::string_view path) {
  if (path.find("]]>") != std::string_view::npos) return "its path contains \"]]>\"";
  const auto fault = ParseXmlText(record).fault;
  if (!fault) return std::nullopt;
  return "its path contains bytes that are not text: " + fault->message;
}

void ReportUnlisted(Observer& observer, const std::string& path, const std::string& reason) {
  Notice notice;
  notice.kind = NoticeKind::CompanyFileUnlisted;
  notice.place.operation = Operation::QBCompanies;
  notice.number = error_number::objectNotSet;
  notice.errorKind = ErrorKind::ObjectNotSet;
  notice.description = reason;
  notice.file = path;
  observer.Notify(notice);
}

}  // namespace

QuickBooksFolder FindQuickBooksFolder(const OutsideWorld& world) {
  if (world.quickBooksFolder) return NamedFolder(*world.quickBooksFolder);
  const std::string program =
      RegistryValue(world.registry.get(), RegistryHive::LocalMachine, programKey, {}, registry_rights::all)
          .ToText();
  const std::size_t lastSeparator = program.rfind('\\');
  if (lastSeparator == std::string::npos) throw Error(error_number::invalidProcedureCall);
  return {.path = program.substr(0, lastSeparator), .separator = "\\"};
}

XmlElement CompanyList(const OutsideWorld& world) {
  const QuickBooksFolder folder = FindQuickBooksFolder(world);
  const std::string prefix = folder.path + folder.separator;
  // Listed with the separator: without it, "C:" would mean the drive's current folder.
  std::vector<std::string> names = world.files->FileNames(prefix);
  std::erase_if(names, [](const std::string& name) { return !IsCompanyFile(name); });

  std::string document = "<qbcompanies>";
  bool broken = false;
  for (const std::string& name : Sorted(names)) {
    const std::string path = prefix + name;
    const std::string record = Record(name, path);
    if (const auto fault = FaultOf(record, path)) {
      ReportUnlisted(*world.observer, path, *fault);
      broken = true;
    }
    document += record;
  }
  return broken ? XmlElement() : XmlElement::Parse(document + "</qbcompanies>");
}

}  // namespace krnqb
