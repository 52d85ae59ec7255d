#include "bench/measured_processors.h"

#include <algorithm>
#include <utility>

#include "bench/request_file.h"

namespace krnqb::bench {
namespace {

constexpr std::string_view yearWithoutTransactions = "1900";

std::string MovedToAnEmptyYear(std::string_view request, const std::string& month) {
  std::string moved(request);
  for (auto at = moved.find(month); at != std::string::npos; at = moved.find(month, at)) {
    moved.replace(at, yearWithoutTransactions.size(), yearWithoutTransactions);
  }
  return moved;
}

class MeasuredProcessor : public RequestProcessor {
 public:
  MeasuredProcessor(std::unique_ptr<RequestProcessor> inner, const std::set<std::string>& months,
                    Traffic& traffic) noexcept
      : inner_(std::move(inner)), months_(months), traffic_(traffic) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    traffic_.requests.emplace_back(request);
    const std::string month = MonthOf(request);
    const bool empty = !month.empty() && !months_.empty() && !months_.contains(month);
    const std::string asked = empty ? MovedToAnEmptyYear(request, month) : std::string(request);
    std::string answer = Measured([&] { return inner_->ProcessRequest(ticket, asked); });
    const auto size = static_cast<std::int64_t>(answer.size());
    traffic_.answerBytes += size;
    traffic_.largestAnswer = std::max(traffic_.largestAnswer, size);
    return answer;
  }

  void UseAgain(std::string&& answer) noexcept override { inner_->UseAgain(std::move(answer)); }

  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    inner_->OpenConnection(applicationIdentifier, applicationName);
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    return Measured([&] { return inner_->BeginSession(companyFile, fileMode); });
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return inner_->GetCurrentCompanyFileName(ticket);
  }

  std::int16_t MajorVersion() override { return inner_->MajorVersion(); }
  std::int16_t MinorVersion() override { return inner_->MinorVersion(); }

 private:
  template <typename Call>
  std::string Measured(const Call& call) {
    const Stopwatch stopwatch;
    std::string result = call();
    traffic_.insideProcessor += stopwatch.Read();
    return result;
  }

  std::unique_ptr<RequestProcessor> inner_;
  const std::set<std::string>& months_;
  Traffic& traffic_;
};

class MeasuredFactory : public RequestProcessorFactory {
 public:
  MeasuredFactory(std::shared_ptr<RequestProcessorFactory> inner, std::set<std::string> months,
                  Traffic& traffic) noexcept
      : inner_(std::move(inner)), months_(std::move(months)), traffic_(traffic) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<MeasuredProcessor>(inner_->Create(), months_, traffic_);
  }

 private:
  std::shared_ptr<RequestProcessorFactory> inner_;
  const std::set<std::string> months_;
  Traffic& traffic_;
};

}  // namespace

std::shared_ptr<RequestProcessorFactory> MeasuredProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                            std::set<std::string> months, Traffic& traffic) {
  return std::make_shared<MeasuredFactory>(std::move(inner), std::move(months), traffic);
}

}  // namespace krnqb::bench
