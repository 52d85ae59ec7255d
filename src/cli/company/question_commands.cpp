#include "cli/company/question_commands.h"

#include <fmt/format.h>

#include "cli/company/inquiry.h"
#include "cli/company/interruptible.h"
#include "cli/console/attempt.h"
#include "cli/import/notices/request_names.h"
#include "plan_file/headings.h"
#include "qbxml/request_catalogue.h"

namespace krnqb::cli {

ExitCode Run(const RequestOptions& options, const Console& console) {
  const std::string request = BuildRequest(options.number, options.fromDate, options.toDate);
  const bool dated = !options.fromDate.empty() || !options.toDate.empty();
  if (RequestName(options.number).empty()) {
    Warn(console, fmt::format("there is no request {}; the document contains no request", options.number));
  } else if (dated && request == BuildRequest(options.number, {}, {})) {
    Warn(console,
         fmt::format("--from and --to are ignored because request {} takes no dates", options.number));
  }
  console.out << request;
  return ExitCode::Done;
}

ExitCode Run(const SupportsOptions& options, const Console& console, const Surroundings& surroundings) {
  RequireOneCompany(options);
  const auto ask = [&](const InterruptWatch& interrupts) {
    CompanyInquiry inquiry(options, console, interrupts, surroundings);
    const bool supported =
        Attempt("asking the company failed", "check the version and the company file", [&] {
          const Variant answer = inquiry.Exchange().IsSDKVersionSupported(options.version);
          const bool* truth = answer.AsBoolean();
          return truth != nullptr && *truth;
        });
    interrupts.StopWhenRequested();
    console.out << (supported ? "yes\n" : "no\n");
    return supported ? ExitCode::Done : ExitCode::Failed;
  };
  return RunInterruptibly("asking the company", "it did not answer", ask);
}

ExitCode Run(const TablesOptions& options, const Console& console) {
  QBDataExchange exchange({});
  exchange.KRNProduct(options.product);
  const auto tables = exchange.GetTablesAffected();
  for (const Variant& table : *tables) {
    const std::string id = table.ToText();
    console.out << fmt::format("{}  {}\n", id, plan_file::TableTitle(id));
  }
  return ExitCode::Done;
}

}  // namespace krnqb::cli
