#include "cli/dialog/command.h"

#include <fmt/format.h>

#include "cli/import/command.h"
#include "krnqb/qb_data_exchange.h"
#include "ui/dialogs.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view showingFailed = "showing the dialog failed";

std::shared_ptr<ui::Dialogs> MakeDialogs(const Surroundings& surroundings) {
  if (!surroundings.dialogToolkit) {
    throw CommandFailure(showingFailed, "this program was built without Qt",
                         "install Qt 6 and build it again");
  }
  try {
    return std::make_shared<ui::Dialogs>(surroundings.dialogToolkit());
  } catch (const Failure&) {
    throw;
  } catch (const Error& error) {
    throw Failure(ExitCode::Failed, showingFailed, error, "run it on a desktop, or under xvfb-run");
  }
}

// Keeps the failure of a dialog, which only the observer sees. Cancelling is not a failure.
class Listener final : public Observer {
 public:
  void Notify(const Notice& notice) noexcept override {
    if (notice.number != error_number::dialogCancelled) failure = Error(notice.number, notice.description);
  }

  std::optional<Error> failure;
};

Variant Show(const std::shared_ptr<ui::Dialogs>& dialogs, QBKRN_Dialogs dialog) {
  const auto listener = std::make_shared<Listener>();
  OutsideWorld world;
  world.observer = listener;
  world.userInterface = dialogs;
  QBDataExchange exchange(world);
  Variant result = exchange.ShowDialog(dialog);
  if (const std::optional<Error> failure = listener->failure) {
    throw Failure(ExitCode::Failed, showingFailed, *failure, "try again");
  }
  return result;
}

ExitCode PrintChosen(const Variant& path, const Console& console) {
  if (path.IsEmpty()) return ExitCode::Failed;
  console.out << path.ToText() << '\n';
  return ExitCode::Done;
}

void CheckOptions(const DialogOptions& options, const Console& console) {
  if (options.dialog != DialogName::Options) {
    if (options.companyFile) Warn(console, "--company is ignored because only the options dialog imports");
    if (options.quickBooks) Warn(console, "--quickbooks is ignored because only the options dialog imports");
    if (options.planFile) Warn(console, "--plan is ignored because only the options dialog imports");
    return;
  }
  RequireOneCompany(options);
  if (!options.planFile) throw WrongUsage("no plan is given", "give --plan FILE");
}

}  // namespace

CommandEnd Run(const DialogOptions& options, const Console& console, const Surroundings& surroundings) {
  CheckOptions(options, console);
  const std::shared_ptr<ui::Dialogs> dialogs = MakeDialogs(surroundings);
  switch (options.dialog) {
    case DialogName::Options: {
      ImportCommand import;
      static_cast<CompanyChoice&>(import) = static_cast<const CompanyChoice&>(options);
      import.planFile = options.planFile.value_or("");
      return RunWithDialog(import, dialogs, console, surroundings);
    }
    case DialogName::Export:
      Show(dialogs, dlg_KRNtoQB);
      return ExitCode::Done;
    case DialogName::Company:
      return PrintChosen(Show(dialogs, dlg_SelectQBcompany), console);
    case DialogName::Plan:
      return PrintChosen(Show(dialogs, dlg_SelectKRNplan), console);
    case DialogName::About:
      break;
  }
  dialogs->ShowAbout();
  return ExitCode::Done;
}

}  // namespace krnqb::cli
