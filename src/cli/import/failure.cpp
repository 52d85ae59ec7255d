#include "cli/import/failure.h"

namespace krnqb::cli {
namespace {

std::string_view WhatToDo(ErrorKind kind) {
  switch (kind) {
    case ErrorKind::UpdateRequired:
      return "use a company whose processor answers qbXML 1.1; nothing was written";
    case ErrorKind::FiscalMonthMissing:
    case ErrorKind::FiscalMonthUnreadable:
      return "give the first month of the company's fiscal year, for example --fiscal-month January; nothing "
             "was written";
    default:
      return "fix the cause and run the import again; nothing was written";
  }
}

Failure ImportFailure(const Error& error) {
  return {ExitCode::Failed, "import failed", error, WhatToDo(error.Kind())};
}

}  // namespace

Error LastError(const QBDataExchange& exchange) {
  return {exchange.LastErrorKind(), exchange.ErrorNumber(), exchange.ErrorDescription()};
}

void RequireNoError(const QBDataExchange& exchange) {
  const Error error = LastError(exchange);
  if (error.Number() != 0) throw ImportFailure(error);
}

void RequireSuccess(const QBDataExchange& exchange, bool goResult, bool afterImportRaised) {
  RequireNoError(exchange);
  if (goResult && afterImportRaised) return;
  throw ImportFailure(
      Error(error_number::internalError, goResult ? "the import did not finish" : "no company is open"));
}

}  // namespace krnqb::cli
