#include "cli/record/shared_session.h"

#include <utility>

#include "support/error_handling.h"

namespace krnqb::cli {

// An import's processor. Releasing it ends nothing.
class SharedSession::Use final : public RequestProcessor {
 public:
  explicit Use(std::shared_ptr<SharedSession> session) noexcept : session_(std::move(session)) {}

  std::string ProcessRequest(std::string_view /*ticket*/, std::string_view request) override {
    return session_->Ask(request);
  }
  void OpenConnection(std::string_view identifier, std::string_view name) override {
    session_->Connect(identifier, name);
  }
  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    return session_->Begin(companyFile, fileMode);
  }
  std::string GetCurrentCompanyFileName(std::string_view /*ticket*/) override { return session_->company_; }
  std::int16_t MajorVersion() override { return session_->version_.major; }
  std::int16_t MinorVersion() override { return session_->version_.minor; }

 private:
  std::shared_ptr<SharedSession> session_;
};

SharedSession::SharedSession(std::shared_ptr<RequestProcessorFactory> processors, RefusedRequests refused,
                             PartialFile& recording, const InterruptWatch& interrupts)
    : processors_(std::move(processors)), refused_(refused), recording_(recording), interrupts_(interrupts) {}

std::unique_ptr<RequestProcessor> SharedSession::Create() {
  return std::make_unique<Use>(shared_from_this());
}

const std::string* SharedSession::AnswerTo(std::string_view request) const {
  const RecordedAnswer* answer = recording_.Find(request);
  return answer == nullptr ? nullptr : std::get_if<std::string>(answer);
}

void SharedSession::RequireSound() const {
  if (failure_) throw Failure(*failure_);
}

void SharedSession::Connect(std::string_view identifier, std::string_view name) {
  if (ticket_) return;
  processor_ = processors_->Create();
  processor_->OpenConnection(identifier, name);
}

std::string SharedSession::Begin(std::string_view companyFile, std::int32_t fileMode) {
  if (ticket_) return *ticket_;
  std::string ticket = processor_->BeginSession(companyFile, fileMode);
  company_ = processor_->GetCurrentCompanyFileName(ticket);
  version_ = {.major = processor_->MajorVersion(), .minor = processor_->MinorVersion()};
  return ticket_.emplace(std::move(ticket));
}

std::string SharedSession::Ask(std::string_view request) {
  RequireSound();
  if (const RecordedAnswer* known = recording_.Find(request)) {
    if (const auto* refusal = std::get_if<Error>(known)) throw Error(*refusal);
    return std::get<std::string>(*known);
  }
  interrupts_.StopWhenRequested();
  std::string answer;
  try {
    answer = processor_->ProcessRequest(ticket_.value_or(""), request);
  } catch (...) {
    const Error error = CaughtError();
    Refuse(request, error);
    throw;
  }
  try {
    recording_.Add(request, answer);
  } catch (const Failure& failure) {
    failure_ = failure;
    throw;
  }
  return answer;
}

// If the session is still open, the refusal is about the request and not about QuickBooks.
void SharedSession::Refuse(std::string_view request, const Error& error) {
  if (interrupts_.Requested()) return;
  const bool aboutTheRequest =
      refused_ == RefusedRequests::Recorded && error.Number() != error_number::outOfMemory && IsOpen();
  if (aboutTheRequest) {
    recording_.Add(request, error);
  } else {
    failure_.emplace(ExitCode::Failed, "recording failed", error,
                     "fix the cause and run the same command again to go on");
  }
}

bool SharedSession::IsOpen() noexcept {
  try {
    return ticket_ && !processor_->GetCurrentCompanyFileName(*ticket_).empty();
  } catch (...) {
    return false;
  }
}

}  // namespace krnqb::cli
