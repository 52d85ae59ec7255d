#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fakes/journal.h"
#include "fakes/request_processor.h"

namespace krnqb::fakes {

/// Returns a request as a line of words: its number, for a balance sheet the account type, and the first and
/// last day of its period, as in "10 2002-01-01 2002-01-31" or "330 Bank 2002-12-31 2002-12-31".
inline std::string Question(std::string_view request) {
  const bool balanceSheet = request.find("BalanceSheetStandard") != std::string_view::npos;
  std::string question = balanceSheet
                             ? "330 " + TextBetween(request, "<AccountTypeFilter>", "</AccountTypeFilter>")
                             : RequestNumber(request);
  for (const std::string name : {"FromTxnDate", "ToTxnDate", "FromReportDate", "ToReportDate"}) {
    const std::string date = TextBetween(request, "<" + name + ">", "</" + name + ">");
    if (!date.empty()) question += " " + date;
  }
  return question;
}

/// QuickBooks with answers by question, see `Question`. A key may be the first words of a question:
/// "10 2002-01-01" answers the request for the bills of January, "10" that of every other month.
struct DatedQuickBooks {
  std::string company = "C:\\Companies\\Nursery.qbw";
  std::int16_t majorVersion = 1;
  std::map<std::string, std::string> answers;
  std::vector<std::string> requests;   // whole documents, in order
  std::vector<std::string> takenBack;  // answers whose memory may be used again

  std::string AnswerTo(std::string question) const {
    while (!question.empty()) {
      const auto answer = answers.find(question);
      if (answer != answers.end()) return answer->second;
      const auto lastBlank = question.rfind(' ');
      question.resize(lastBlank == std::string::npos ? 0 : lastBlank);
    }
    return "<QBXML><QBXMLMsgsRs/></QBXML>";
  }
};

/// Records each question in the journal and answers it.
class DatedProcessor : public RequestProcessor {
 public:
  DatedProcessor(std::shared_ptr<DatedQuickBooks> quickBooks, std::shared_ptr<Journal> journal)
      : quickBooks_(std::move(quickBooks)), journal_(std::move(journal)) {}

  std::string ProcessRequest(std::string_view /*ticket*/, std::string_view request) override {
    quickBooks_->requests.emplace_back(request);
    const std::string question = Question(request);
    journal_->Record("ProcessRequest " + question);
    return quickBooks_->AnswerTo(question);
  }
  void UseAgain(std::string&& answer) noexcept override {
    if (!answer.empty()) quickBooks_->takenBack.push_back(std::move(answer));
  }
  void OpenConnection(std::string_view /*applicationIdentifier*/,
                      std::string_view /*applicationName*/) override {}
  std::string BeginSession(std::string_view /*companyFile*/, std::int32_t /*fileMode*/) override {
    isOpen_ = true;
    return "ticket";
  }
  std::string GetCurrentCompanyFileName(std::string_view /*ticket*/) override {
    return isOpen_ ? quickBooks_->company : "";
  }
  std::int16_t MajorVersion() override { return quickBooks_->majorVersion; }
  std::int16_t MinorVersion() override { return 0; }

 private:
  std::shared_ptr<DatedQuickBooks> quickBooks_;
  std::shared_ptr<Journal> journal_;
  bool isOpen_ = false;
};

class DatedProcessorFactory : public RequestProcessorFactory {
 public:
  DatedProcessorFactory(std::shared_ptr<DatedQuickBooks> quickBooks, std::shared_ptr<Journal> journal)
      : quickBooks_(std::move(quickBooks)), journal_(std::move(journal)) {}

  std::unique_ptr<RequestProcessor> Create() override {
    if (refusal) throw Error(*refusal);
    return std::make_unique<DatedProcessor>(quickBooks_, journal_);
  }

  /// The error that every `Create` throws, if set.
  std::optional<Error> refusal;

 private:
  std::shared_ptr<DatedQuickBooks> quickBooks_;
  std::shared_ptr<Journal> journal_;
};

}  // namespace krnqb::fakes
