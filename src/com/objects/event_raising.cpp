#include "com/objects/event_raising.h"

#include <array>
#include <span>

#include "com/values/error_mapping.h"
#include "com/values/variant_value.h"
#include "support/error_handling.h"

namespace krnqb::com {
namespace {

// The dispids of the event interface.
constexpr DISPID xmlProcessing = 1;
constexpr DISPID tableModified = 2;
constexpr DISPID afterImport = 3;
constexpr DISPID progressBarChange = 4;

class AdvisedSinksRaising final : public EventSink {
 public:
  AdvisedSinksRaising(std::shared_ptr<AdvisedSinks> sinks, std::shared_ptr<Observer> observer)
      : sinks_(std::move(sinks)), observer_(std::move(observer)) {}

  // All sinks share one variable, so each sees what the previous one assigned: handlers can pass an object
  // along.
  void XMLprocessing(Variant& /*oXML*/) override {
    VariantValue variable = VariantValue::OfObject({});
    VARIANT argument{};
    argument.vt = VT_BYREF | VT_VARIANT;
    argument.pvarVal = &variable.Get();
    Raise(Operation::XMLprocessing, xmlProcessing, {&argument, 1});
  }

  void TableModified(std::string_view sTableID) override {
    const VariantValue id = VariantValue::OfText(sTableID);
    VARIANT argument = id.Get();
    Raise(Operation::TableModified, tableModified, {&argument, 1});
  }

  void AfterImport() override { Raise(Operation::AfterImport, afterImport, {}); }

  void ProgressBarChange(std::int16_t PercentValue, std::string_view Description) override {
    const VariantValue percent = VariantValue::OfInteger(PercentValue);
    const VariantValue text = VariantValue::OfText(Description);
    // IDispatch expects arguments in reverse order.
    std::array<VARIANT, 2> arguments{text.Get(), percent.Get()};
    Raise(Operation::ProgressBarChange, progressBarChange, arguments);
  }

 private:
  void Raise(Operation event, DISPID member, std::span<VARIANT> arguments) {
    // A handler may change the list: sinks it adds receive only later events, and sinks it removes receive
    // nothing more.
    const std::vector<AdvisedSinks::Advised> current = sinks_->All();
    for (const AdvisedSinks::Advised& advised : current) {
      if (sinks_->Has(advised.cookie)) RaiseTo(*advised.sink, event, member, arguments);
    }
  }

  void RaiseTo(IDispatch& sink, Operation event, DISPID member, std::span<VARIANT> arguments) {
    DISPPARAMS parameters{};
    parameters.rgvarg = arguments.data();
    parameters.cArgs = static_cast<UINT>(arguments.size());
    EXCEPINFO exception{};
    VariantValue dropped;
    UINT faulty = 0;
    const HRESULT result = sink.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                       dropped.Receive(), &exception, &faulty);
    if (FAILED(result)) Report(event, ErrorOf(result, exception));
  }

  void Report(Operation event, const Error& error) {
    if (observer_ == nullptr) return;
    ReportError(*observer_, NoticeKind::StatementSkipped, NoticeMeaning::Complete, {.operation = event},
                error);
  }

  std::shared_ptr<AdvisedSinks> sinks_;
  std::shared_ptr<Observer> observer_;
};

}  // namespace

std::shared_ptr<EventSink> RaisingTo(std::shared_ptr<AdvisedSinks> sinks,
                                     std::shared_ptr<Observer> observer) {
  return std::make_shared<AdvisedSinksRaising>(std::move(sinks), std::move(observer));
}

}  // namespace krnqb::com
