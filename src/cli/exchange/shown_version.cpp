#include "cli/exchange/shown_version.h"

#include <fmt/format.h>

#include <utility>

#include "qbxml/forwarding_processor.h"
#include "qbxml/response_element.h"

namespace krnqb::cli {
namespace {

class ShownVersionProcessor final : public ForwardingProcessor {
 public:
  ShownVersionProcessor(std::unique_ptr<RequestProcessor> inner, std::shared_ptr<SessionFacts> facts) noexcept
      : ForwardingProcessor(std::move(inner)), facts_(std::move(facts)) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    std::string answer = ForwardingProcessor::ProcessRequest(ticket, request);
    if (AsksForHost(request)) listsReports_ = ListsVersion(answer, "2.0");
    return answer;
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    std::string path = ForwardingProcessor::GetCurrentCompanyFileName(ticket);
    if (!path.empty()) facts_->companyPath = path;
    return path;
  }

  std::int16_t MajorVersion() override {
    const std::int16_t own = ForwardingProcessor::MajorVersion();
    const auto shown = Counts(own) ? own : static_cast<std::int16_t>(listsReports_ ? 2 : 1);
    facts_->majorVersion = shown;
    return shown;
  }

  std::int16_t MinorVersion() override {
    if (Counts(ForwardingProcessor::MajorVersion())) return ForwardingProcessor::MinorVersion();
    return static_cast<std::int16_t>(listsReports_ ? 0 : 1);
  }

 private:
  static bool Counts(std::int16_t majorVersion) noexcept { return majorVersion == 1 || majorVersion == 2; }

  std::shared_ptr<SessionFacts> facts_;
  bool listsReports_ = false;
};

class ShownVersionFactory final : public RequestProcessorFactory {
 public:
  ShownVersionFactory(std::shared_ptr<RequestProcessorFactory> inner,
                      std::shared_ptr<SessionFacts> facts) noexcept
      : inner_(std::move(inner)), facts_(std::move(facts)) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<ShownVersionProcessor>(inner_->Create(), facts_);
  }

 private:
  std::shared_ptr<RequestProcessorFactory> inner_;
  std::shared_ptr<SessionFacts> facts_;
};

}  // namespace

std::shared_ptr<RequestProcessorFactory> ProcessorsWithShownVersion(
    std::shared_ptr<RequestProcessorFactory> inner, std::shared_ptr<SessionFacts> facts) {
  return std::make_shared<ShownVersionFactory>(std::move(inner), std::move(facts));
}

bool ListsVersion(const std::string& hostAnswer, const std::string& version) {
  const XmlElement answer = ResponseElement(hostAnswer, {});
  return answer &&
         static_cast<bool>(answer.Select(fmt::format("//SupportedQBXMLVersion[text() = \"{}\"]", version)));
}

bool AsksForHost(std::string_view request) noexcept {
  return request.find("<HostQueryRq") != std::string_view::npos;
}

}  // namespace krnqb::cli
