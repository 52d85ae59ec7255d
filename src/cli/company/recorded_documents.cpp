#include "cli/company/recorded_documents.h"

#include <fmt/format.h>

#include <map>
#include <vector>

#include "company/records/document.h"
#include "qbxml/exchange_replaying.h"

namespace krnqb::cli {
namespace {

// A report's answer has figures and no records.
bool IsReport(const std::string& answer) {
  return answer.find("<GeneralSummaryReportQueryRs") != std::string::npos;
}

}  // namespace

bool IsRecording(std::string_view beginning) noexcept {
  const std::size_t first = beginning.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && beginning[first] == '{';
}

company::LoadSummary LoadRecording(company::CompanyFile& company, const std::string& name,
                                   std::istream& recording, company::UnknownKinds unknownKinds) {
  std::map<std::string, std::int64_t, std::less<>> passedOver;
  company::PassedOverReceiver passOver;
  if (unknownKinds == company::UnknownKinds::PassOver)
    passOver = [&](std::string_view element) { ++passedOver[std::string(element)]; };
  company::LoadSummary summary = company.Store(name, [&](const company::RecordReceiver& receive) {
    std::size_t number = 0;
    ReadExchange(recording, name, [&](std::string&& /*request*/, RecordedAnswer&& answer) {
      ++number;
      const auto* response = std::get_if<std::string>(&answer);
      if (response == nullptr || IsReport(*response)) return;
      company::ReadDocument(fmt::format("{}, answer {}", name, number), BytesOf(*response), receive,
                            passOver);
    });
  });
  for (const auto& [element, count] : passedOver) summary.passedOver.push_back({element, count});
  return summary;
}

}  // namespace krnqb::cli
