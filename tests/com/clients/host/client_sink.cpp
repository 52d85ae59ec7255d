#include "host/client_sink.h"

#include <fmt/format.h>

#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

std::string TextOf(DISPID identifier, const DISPPARAMS& parameters) {
  const VARIANT* arguments = parameters.rgvarg;
  switch (identifier) {
    case 1: {
      const bool holdsNothing = parameters.cArgs == 1 && arguments[0].vt == (VT_BYREF | VT_VARIANT) &&
                                arguments[0].pvarVal->vt == VT_DISPATCH &&
                                arguments[0].pvarVal->pdispVal == nullptr;
      return holdsNothing ? "XMLprocessing Nothing" : "XMLprocessing otherwise";
    }
    case 2:
      return "TableModified";
    case 3:
      return parameters.cArgs == 0 ? "AfterImport" : "AfterImport otherwise";
    case 4:
      if (parameters.cArgs != 2 || arguments[1].vt != VT_I2 || arguments[0].vt != VT_BSTR) {
        return "ProgressBarChange otherwise";
      }
      return fmt::format("ProgressBarChange {} {}", arguments[1].iVal, Utf8(arguments[0].bstrVal));
    default:
      return fmt::format("event {}", identifier);
  }
}

}  // namespace

ClientSink::ClientSink() {
  further = __uuidof(__QBDataExchange);
}

HRESULT ClientSink::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                                  DISPID* /*identifiers*/) {
  return E_NOTIMPL;
}

HRESULT ClientSink::Invoke(DISPID identifier, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/,
                           DISPPARAMS* parameters, VARIANT* /*result*/, EXCEPINFO* /*exception*/,
                           UINT* /*argument*/) {
  const Held<ClientSink> kept = Held<ClientSink>::Sharing(this);
  events.push_back(TextOf(identifier, *parameters));
  const std::string event = events.back();
  if (identifier == 1 && parameters->cArgs == 1 && parameters->rgvarg[0].vt == (VT_BYREF | VT_VARIANT)) {
    // The component ignores what a handler assigns here, and clears it.
    *parameters->rgvarg[0].pvarVal = VARIANT{};
    parameters->rgvarg[0].pvarVal->vt = VT_BSTR;
    parameters->rgvarg[0].pvarVal->bstrVal = SysAllocString(L"left by the handler");
  }
  return at ? at(event) : S_OK;
}

Connection::Connection(IUnknown* source, IUnknown* sink) {
  Held<IConnectionPointContainer> container = Held<IUnknown>::Sharing(source).As<IConnectionPointContainer>();
  if (!container) return;
  result_ = container->FindConnectionPoint(__uuidof(__QBDataExchange), point_.Receive());
  if (SUCCEEDED(result_)) result_ = point_->Advise(sink, &cookie_);
}

void Connection::End() {
  if (point_ && cookie_ != 0) point_->Unadvise(cookie_);
  cookie_ = 0;
  point_.Reset();
}

}  // namespace krnqb::testing
