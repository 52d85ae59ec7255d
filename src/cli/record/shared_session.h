#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "cli/console/failure.h"
#include "cli/console/interrupt_watch.h"
#include "cli/record/partial_file.h"
#include "krnqb/request_processor.h"

namespace krnqb::cli {

/// One session with a company that many imports use, each as if it were its own. A request that the recording
/// has an answer to is answered from it; any other is sent once and its answer added.
class SharedSession final : public RequestProcessorFactory,
                            public std::enable_shared_from_this<SharedSession> {
 public:
  /// Whether a refused request is part of the recording: QuickBooks may refuse some kinds of requests, while
  /// a company file refuses none unless it is damaged.
  enum class RefusedRequests { Recorded, EndTheRecording };

  /// `recording` and `interrupts` must outlive the session.
  SharedSession(std::shared_ptr<RequestProcessorFactory> processors, RefusedRequests refused,
                PartialFile& recording, const InterruptWatch& interrupts);

  std::unique_ptr<RequestProcessor> Create() override;

  /// Returns the open company and its processor's version, once a session has been opened.
  const std::string& Company() const noexcept { return company_; }
  const ProcessorVersion& Version() const noexcept { return version_; }

  /// Returns how many requests were refused.
  std::size_t Refusals() const noexcept { return recording_.Refusals(); }

  /// Returns the answer to a request of an earlier import, or null if it was not asked or was refused.
  const std::string* AnswerTo(std::string_view request) const;

  /// Throws the failure that ended the recording, if one has: imports skip some errors.
  void RequireSound() const;

 private:
  class Use;
  void Connect(std::string_view identifier, std::string_view name);
  std::string Begin(std::string_view companyFile, std::int32_t fileMode);
  std::string Ask(std::string_view request);
  void Refuse(std::string_view request, const Error& error);
  bool IsOpen() noexcept;

  std::shared_ptr<RequestProcessorFactory> processors_;
  const RefusedRequests refused_;
  PartialFile& recording_;
  const InterruptWatch& interrupts_;
  std::unique_ptr<RequestProcessor> processor_;
  std::optional<std::string> ticket_;
  std::string company_;
  ProcessorVersion version_;
  std::optional<Failure> failure_;
};

}  // namespace krnqb::cli
