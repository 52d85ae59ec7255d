#include "cli/import/failure.h"

#include "qbxml/session.h"

namespace krnqb::cli {
namespace {

// Errors of the company check; the first number has another meaning too, which its text tells.
constexpr std::int32_t usVersionNeeded = -2147221504;
constexpr std::int32_t fiscalMonthNeeded = -2147221404;

std::string_view WhatToDo(std::int32_t number, std::string_view description) {
  if (number == updateRequiredNumber && description == updateRequiredMessage) {
    return "use a company whose processor answers qbXML 1.1; nothing was written";
  }
  if (number == usVersionNeeded || number == fiscalMonthNeeded) {
    return "give the first month of the company's fiscal year, for example --fiscal-month January; nothing "
           "was written";
  }
  return "put this right and import again; nothing was written";
}

Failure ImportFailure(const Error& error) {
  return {ExitCode::Failed, "import failed", error, WhatToDo(error.Number(), error.Description())};
}

}  // namespace

void RequireNoError(const QBDataExchange& exchange) {
  const Error error(exchange.ErrorNumber(), exchange.ErrorDescription());
  if (error.Number() != 0) throw ImportFailure(error);
}

void RequireSuccess(const QBDataExchange& exchange, bool goResult, bool afterImportRaised) {
  RequireNoError(exchange);
  if (goResult && afterImportRaised) return;
  throw ImportFailure(Error(error_number::internalError,
                            goResult ? "the import did not come to its end" : "no company is open"));
}

}  // namespace krnqb::cli
