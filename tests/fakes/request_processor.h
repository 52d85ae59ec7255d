#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/journal.h"
#include "krnqb/request_processor.h"

namespace krnqb::fakes {

/// The accounting program behind all processors: the open company, the versions, and the answers by request
/// number.
struct FakeQuickBooks {
  std::string company = "C:\\Companies\\Nursery.qbw";
  std::int16_t majorVersion = 1;
  std::int16_t minorVersion = 1;
  std::map<std::string, std::string> answers;
  std::vector<std::string> requests;  // whole documents, in order
  int sessions = 0;
};

/// Returns the text between two marks, or an empty text.
inline std::string TextBetween(std::string_view text, std::string_view before, std::string_view after) {
  const auto start = text.find(before);
  if (start == std::string_view::npos) return {};
  const auto from = start + before.size();
  const auto end = text.find(after, from);
  return end == std::string_view::npos ? std::string{} : std::string(text.substr(from, end - from));
}

/// Returns the number of a request: its requestID, or for a report, which has no requestID, the number by its
/// filter.
inline std::string RequestNumber(std::string_view request) {
  static const std::map<std::string, std::string> reports = {
      {"OrdinaryIncome", "300"}, {"OrdinaryExpense", "310"}, {"CostOfSales", "320"}};
  std::string number = TextBetween(request, "requestID=\"", "\"");
  if (!number.empty()) return number;
  const auto report = reports.find(TextBetween(request, "<AccountTypeFilter>", "</AccountTypeFilter>"));
  return report == reports.end() ? "?" : report->second;
}

/// Answers from a FakeQuickBooks and records each call. Records the ticket of a call with another session's
/// ticket; a call without a session fails.
class FakeRequestProcessor : public RequestProcessor {
 public:
  FakeRequestProcessor(std::shared_ptr<FakeQuickBooks> quickBooks, std::shared_ptr<Journal> journal)
      : quickBooks_(std::move(quickBooks)), journal_(std::move(journal)) {}
  ~FakeRequestProcessor() override { journal_->Note("processor released"); }
  FakeRequestProcessor(const FakeRequestProcessor&) = delete;
  FakeRequestProcessor& operator=(const FakeRequestProcessor&) = delete;

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    quickBooks_->requests.emplace_back(request);
    const std::string number = RequestNumber(request);
    const std::string from = TextBetween(request, "<FromReportDate>", "</FromReportDate>") +
                             TextBetween(request, "<FromTxnDate>", "</FromTxnDate>");
    const std::string to = TextBetween(request, "<ToReportDate>", "</ToReportDate>") +
                           TextBetween(request, "<ToTxnDate>", "</ToTxnDate>");
    journal_->Record("ProcessRequest " + number + (from.empty() ? "" : " " + from + " " + to) +
                     Stranger(ticket));
    RequireSession();
    const auto answer = quickBooks_->answers.find(number);
    return answer == quickBooks_->answers.end() ? "<QBXML><QBXMLMsgsRs/></QBXML>" : answer->second;
  }

  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    journal_->Record("OpenConnection " + std::string(applicationIdentifier) + ", " +
                     std::string(applicationName));
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    journal_->Record("BeginSession \"" + std::string(companyFile) + "\" " + std::to_string(fileMode));
    sessionTicket_ = "ticket " + std::to_string(++quickBooks_->sessions);
    return sessionTicket_;
  }

  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    journal_->Record("GetCurrentCompanyFileName" + Stranger(ticket));
    RequireSession();
    return quickBooks_->company;
  }

  std::int16_t MajorVersion() override {
    journal_->Record("MajorVersion");
    return quickBooks_->majorVersion;
  }

  std::int16_t MinorVersion() override {
    journal_->Record("MinorVersion");
    return quickBooks_->minorVersion;
  }

 private:
  std::string Stranger(std::string_view ticket) const {
    return sessionTicket_.empty() || ticket == sessionTicket_ ? "" : " with \"" + std::string(ticket) + "\"";
  }
  void RequireSession() const {
    if (sessionTicket_.empty()) throw Error(error_number::unspecified, "there is no session");
  }

  std::shared_ptr<FakeQuickBooks> quickBooks_;
  std::shared_ptr<Journal> journal_;
  std::string sessionTicket_;
};

class FakeProcessorFactory : public RequestProcessorFactory {
 public:
  FakeProcessorFactory(std::shared_ptr<FakeQuickBooks> quickBooks, std::shared_ptr<Journal> journal)
      : quickBooks_(std::move(quickBooks)), journal_(std::move(journal)) {}

  std::unique_ptr<RequestProcessor> Create() override {
    journal_->Record("create processor");
    return std::make_unique<FakeRequestProcessor>(quickBooks_, journal_);
  }

 private:
  std::shared_ptr<FakeQuickBooks> quickBooks_;
  std::shared_ptr<Journal> journal_;
};

}  // namespace krnqb::fakes
