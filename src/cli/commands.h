#pragma once

#include <string>
#include <variant>

#include "cli/batch/command.h"
#include "cli/company/accounts_command.h"
#include "cli/company/check_command.h"
#include "cli/company/commands.h"
#include "cli/company/companies_command.h"
#include "cli/company/profit_and_loss_command.h"
#include "cli/company/question_commands.h"
#include "cli/dialog/command.h"
#include "cli/doctor/command.h"
#include "cli/explain/command.h"
#include "cli/import/options.h"
#include "cli/plan/commands.h"
#include "cli/plan/history_commands.h"
#include "cli/reconcile/options.h"
#include "cli/record/options.h"

namespace krnqb::cli {

/// A text to print, such as a help text.
struct PrintedText {
  std::string text;
};

/// A parsed command line: one command with its options.
using Command = std::variant<PrintedText, ImportCommand, AccountsOptions, TablesOptions, RequestOptions,
                             SupportsOptions, NewCompanyOptions, LoadCompanyOptions, CompanyInfoOptions,
                             CheckCompanyOptions, ProfitAndLossOptions, GenerateCompanyOptions,
                             NewPlanOptions, ShowPlanOptions, ExportPlanOptions, PlanHistoryOptions,
                             PlanDiffOptions, PlanUndoOptions, ReconcileOptions, ExplainOptions,
                             CompaniesOptions, DialogOptions, RecordOptions, DoctorOptions, SummaryOptions>;

}  // namespace krnqb::cli
