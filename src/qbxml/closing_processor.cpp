#include "qbxml/closing_processor.h"

#include <string>
#include <utility>
#include <vector>

#include "qbxml/forwarding_processor.h"

namespace krnqb {
namespace {

class Closing final : public ForwardingProcessor {
 public:
  explicit Closing(std::unique_ptr<ClosableProcessor> inner) noexcept : Closing(*inner, std::move(inner)) {}
  Closing(const Closing&) = delete;
  Closing& operator=(const Closing&) = delete;
  ~Closing() override {
    for (const std::string& ticket : tickets_) Quietly([&] { closable_.EndSession(ticket); });
    if (connected_) Quietly([&] { closable_.CloseConnection(); });
  }

  void OpenConnection(std::string_view applicationIdentifier, std::string_view applicationName) override {
    ForwardingProcessor::OpenConnection(applicationIdentifier, applicationName);
    connected_ = true;
  }

  std::string BeginSession(std::string_view companyFile, std::int32_t fileMode) override {
    std::string ticket = ForwardingProcessor::BeginSession(companyFile, fileMode);
    tickets_.push_back(ticket);
    return ticket;
  }

 private:
  Closing(ClosableProcessor& closable, std::unique_ptr<ClosableProcessor>&& inner) noexcept
      : ForwardingProcessor(std::move(inner)), closable_(closable) {}

  // Nothing depends on the end of a session, and a destructor must not throw.
  template <typename Step>
  static void Quietly(Step step) noexcept {
    try {
      step();
    } catch (...) {
    }
  }

  ClosableProcessor& closable_;
  std::vector<std::string> tickets_;
  bool connected_ = false;
};

}  // namespace

std::unique_ptr<RequestProcessor> ClosingProcessor(std::unique_ptr<ClosableProcessor> inner) {
  return std::make_unique<Closing>(std::move(inner));
}

}  // namespace krnqb
