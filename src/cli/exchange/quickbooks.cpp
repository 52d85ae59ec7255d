#include "cli/exchange/quickbooks.h"

#include <fmt/format.h>

#include <utility>
#include <vector>

#include "cli/console/failure.h"
#include "cli/exchange/machine_processors.h"
#include "support/error_handling.h"

namespace krnqb::cli {
namespace {

// Uses the processor that was created to see whether there is one, and creates others later.
class QuickBooksProcessors final : public RequestProcessorFactory {
 public:
  explicit QuickBooksProcessors(std::vector<ProcessorClass> classes)
      : classes_(std::move(classes)), first_(CreateFirstProcessor(classes_)) {}

  std::unique_ptr<RequestProcessor> Create() override {
    if (first_) return std::move(first_);
    return CreateFirstProcessor(classes_);
  }

  // Some processors state their version only in a session.
  ProcessorVersion Version() const {
    try {
      return {.major = first_->MajorVersion(), .minor = first_->MinorVersion()};
    } catch (const Error&) {
      return {};
    }
  }

 private:
  std::vector<ProcessorClass> classes_;
  std::unique_ptr<RequestProcessor> first_;
};

// The program is named by its width, since both have the same file name.
std::string WhatToDo(const std::vector<ProcessorClass>& classes) {
  const std::vector<std::string> otherWidth = ClassesForOtherWidth(classes);
  if (otherWidth.empty()) return "install QuickBooks on this machine, or import a recording with --replay";
  constexpr int otherBits = sizeof(void*) == 8 ? 32 : 64;
  return fmt::format("use the {0}-bit krnqb.exe, because {1} {2} registered for {0}-bit programs only",
                     otherBits, fmt::join(otherWidth, " and "), otherWidth.size() == 1 ? "is" : "are");
}

}  // namespace

OpenedQuickBooks OpenQuickBooks(const Surroundings& surroundings) {
  const std::vector<ProcessorClass> classes =
      surroundings.processorClasses ? surroundings.processorClasses() : MachineProcessorClasses();
  try {
    const auto processors = std::make_shared<QuickBooksProcessors>(classes);
    return {.processors = processors, .version = processors->Version()};
  } catch (const Error& error) {
    if (error.Number() != error_number::cannotCreateObject) throw;
    throw Failure(
        ExitCode::Failed, "opening QuickBooks failed",
        Error(error.Number(), fmt::format("no request processor can be created: {}", error.Description())),
        WhatToDo(classes));
  }
}

}  // namespace krnqb::cli
