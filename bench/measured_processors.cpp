#include "bench/measured_processors.h"

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
  MeasuredProcessor(std::unique_ptr<RequestProcessor> innerProcessor,
                    const std::set<std::string>& chosenMonths, Traffic& countedTraffic) noexcept
      : inner(std::move(innerProcessor)), months(chosenMonths), traffic(countedTraffic) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    traffic.requests.emplace_back(request);
    const std::string month = MonthOf(request);
    const bool empty = !month.empty() && !months.empty() && !months.contains(month);
    const std::string asked = empty ? MovedToAnEmptyYear(request, month) : std::string(request);
    std::string answer = Measured([&] { return inner->ProcessRequest(ticket, asked); });
    traffic.answerBytes += static_cast<std::int64_t>(answer.size());
    return answer;
  }

  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    inner->OpenConnection(applicationIdentifier, applicationName);
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    return Measured([&] { return inner->BeginSession(companyFile, fileMode); });
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return inner->GetCurrentCompanyFileName(ticket);
  }

  std::int16_t MajorVersion() override { return inner->MajorVersion(); }
  std::int16_t MinorVersion() override { return inner->MinorVersion(); }

 private:
  template <typename Call>
  std::string Measured(const Call& call) {
    const Stopwatch stopwatch;
    std::string result = call();
    traffic.insideProcessor += stopwatch.Read();
    return result;
  }

  std::unique_ptr<RequestProcessor> inner;
  const std::set<std::string>& months;
  Traffic& traffic;
};

class MeasuredFactory : public RequestProcessorFactory {
 public:
  MeasuredFactory(std::shared_ptr<RequestProcessorFactory> innerFactory, std::set<std::string> chosenMonths,
                  Traffic& countedTraffic) noexcept
      : inner(std::move(innerFactory)), months(std::move(chosenMonths)), traffic(countedTraffic) {}

  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<MeasuredProcessor>(inner->Create(), months, traffic);
  }

 private:
  std::shared_ptr<RequestProcessorFactory> inner;
  const std::set<std::string> months;
  Traffic& traffic;
};

}  // namespace

std::shared_ptr<RequestProcessorFactory> MeasuredProcessors(std::shared_ptr<RequestProcessorFactory> inner,
                                                            std::set<std::string> months, Traffic& traffic) {
  return std::make_shared<MeasuredFactory>(std::move(inner), std::move(months), traffic);
}

}  // namespace krnqb::bench
