#include "cli/command_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include "cli/command_options.h"
#include "cli/console/failure.h"
#include "cli/console/nearest_names.h"
#include "cli/console/option_values.h"
#include "cli/console/version.h"
#include "cli/help_texts.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view whatToImport = "What to import";
constexpr std::string_view howToImport = "How";
constexpr std::string_view files = "Files";
constexpr std::string_view periods = "Product and periods";
constexpr std::string_view output = "Output";

AmountsPath ParseAmountsPath(std::string_view option, std::string_view text) {
  if (text == "transactions") return AmountsPath::Transactions;
  if (text == "reports") return AmountsPath::Reports;
  throw WrongUsage(fmt::format("{} \"{}\" is not one of the choices", option, text),
                   "give transactions or reports");
}

void AddQuickBooks(Options& options, CompanyChoice& choice) {
  options.OptionalText("--quickbooks", "PATH", choice.quickBooks,
                       "Ask QuickBooks for PATH, or for the company it has open (Windows)");
}

void AddImport(Options options, ImportCommand& import) {
  options.Group(whatToImport);
  options.Flag("--expenses", import.expenses, "Expense accounts");
  options.Flag("--income", import.income, "Income accounts; with amounts, cost-of-goods accounts too");
  options.Flag("--past-performance", import.pastPerformance, "Past performance (products ald and cor)");
  options.Parsed("--balances", "CHOICE", import.balances, ParseBalances,
                 "Monthly amounts: none, planned, actual or all [none]");
  options.Parsed("--amounts-from", "CHOICE", import.amountsFrom, ParseAmountsPath,
                 "Take them from transactions or reports [as the company's version says]");
  options.Group(files);
  options.Text("--company", "FILE", import.companyFile, "Company file to read (not needed with --replay)");
  AddQuickBooks(options, import);
  options.Text("--plan", "FILE", import.planFile, "Plan file to import into")->required();
  options.Text("--record", "FILE", import.recordFile, "Write all requests and answers to FILE as JSON lines");
  options.Text("--replay", "FILE", import.replayFile,
               "Read the answers from such a file instead of a company");
  options.Group(periods);
  options.Parsed("--product", "P", import.product, ParseProduct, "ald, bri or cor [the plan's own]");
  options.Parsed("--plan-start", "YYYY-MM", import.planStart, ParseYearMonth,
                 "First month of the plan [the plan's own]");
  options.Parsed("--import-start", "YYYY-MM", import.importStart, ParseYearMonth,
                 "First of the 12 months to import [a year before the plan]");
  options.Parsed("--fiscal-month", "MONTH", import.fiscalMonth, ParseMonth,
                 "First fiscal month, 1 to 12 or English name [the company's]");
  options.Group(howToImport);
  options.Parsed("--growth-income", "N", import.growthRateIncome, ParsePercent,
                 "Annual growth of sales in whole percent [0]");
  options.Parsed("--growth-cogs", "N", import.growthRateCogs, ParsePercent,
                 "Annual growth of the cost of goods in whole percent [0]");
  options.Parsed("--growth-expenses", "N", import.growthRateExpenses, ParsePercent,
                 "Annual growth of expenses in whole percent [0]");
  options.Texts("--select-expense", "NAME", import.selectedExpenses,
                "Also import this expense account (product bri; repeatable)");
  options.Flag("--select-all-expenses", import.selectAllExpenses,
               "Import all expense accounts (product bri)");
  options.Flag("--accept-incomplete", import.acceptIncomplete,
               "Write the plan even if something could not be read (exit status 3)");
  options.Flag("--strict", import.strict, "Treat left-out amounts as an incomplete import");
  options.Flag("--dry-run", import.dryRun, "Show what would change, but write nothing");
  options.Parsed("--keep", "N", import.keptVersions, ParseVersionNumber,
                 "Earlier versions that the plan's history keeps, besides the first [20]");
  options.Group(output);
  options.Flag("--json", import.json, "Print one JSON object and nothing else");
  options.Flag("--quiet", import.quiet, "Print nothing but warnings and errors");
  options.Text("--journal", "FILE", import.journalFile, "List each left-out amount in FILE as JSON lines");
  options.Text("--ledger", "FILE", import.ledgerFile,
               "Keep in FILE what each figure is made of, for krnqb explain");
  options.Text("--report", "FILE", import.reportFile, "Write a page about the import to FILE, for browsers");
}

ExactAmount ParseTolerance(std::string_view option, std::string_view text) {
  const std::optional<ExactAmount> amount = ExactAmount::FromText(text);
  if (amount && *amount >= ExactAmount()) return *amount;
  throw WrongUsage(fmt::format("{} \"{}\" is not an amount of 0 or more", option, text),
                   "give one such as 0.01");
}

ListedAccounts ParseListedAccounts(std::string_view /*option*/, std::string_view text) {
  if (text == "income") return ListedAccounts::Income;
  if (text == "expense") return ListedAccounts::Expense;
  throw WrongUsage(fmt::format("\"{}\" is not a list of accounts", text), "give income or expense");
}

void AddAccounts(Options options, AccountsOptions& accounts) {
  options.ParsedArgument("income|expense", accounts.list, ParseListedAccounts, "Which accounts to list");
  options.Text("--company", "FILE", accounts.companyFile, "Company file to read");
  AddQuickBooks(options, accounts);
  options.Text("--plan", "FILE", accounts.planFile,
               "Show which expense accounts are in this plan (product bri)");
  options.Flag("--json", accounts.json, "Print one JSON object");
}

void AddTables(Options options, TablesOptions& tables) {
  options.Parsed("--product", "P", tables.product, ParseProduct, "ald, bri or cor")->required();
}

void AddRequest(Options options, RequestOptions& request) {
  options.ParsedArgument("N", request.number, ParseRequestNumber, "Request number, as listed below");
  options.Parsed("--from", "DATE", request.fromDate, ParseDate, "First day, YYYY-MM-DD");
  options.Parsed("--to", "DATE", request.toDate, ParseDate, "Last day, YYYY-MM-DD");
}

void AddSupports(Options options, SupportsOptions& supports) {
  options.ParsedArgument("VERSION", supports.version, ParseVersion, "qbXML version, such as 1.1");
  options.Text("--company", "FILE", supports.companyFile, "Company file to ask");
  AddQuickBooks(options, supports);
}

void AddNewCompany(Options options, NewCompanyOptions& company) {
  options.Argument("FILE", company.file, "Company file to create (.qbw)");
  options.Text("--name", "N", company.name, "The company's name")->required();
  options
      .Parsed("--fiscal-month", "MONTH", company.fiscalMonth, ParseMonth,
              "First month of its fiscal year, 1 to 12 or English name")
      ->required();
  options
      .Parsed("--processor", "VERSION", company.processorVersion, ParseProcessorVersion,
              "Highest qbXML version it answers: 1.0, 1.1 or 2.0")
      ->required();
}

void AddLoadCompany(Options options, LoadCompanyOptions& load) {
  options.Argument("FILE", load.file, "Company file to load into");
  options.Arguments("DOC", load.documents, "qbXML response documents or recordings");
  options.Flag("--strict", load.strict, "Refuse a document with records that cannot be stored");
}

void AddCompanyInfo(Options options, CompanyInfoOptions& info) {
  options.Argument("FILE", info.file, "Company file to show");
  options.Flag("--json", info.json, "Print one JSON object");
}

void AddCheckCompany(Options options, CheckCompanyOptions& check) {
  options.Argument("FILE", check.file, "Company file to check");
  options.Flag("--fix", check.fix, "Undo an interrupted load; add checksums to a file without them");
  options.Flag("--json", check.json, "Print one JSON object");
}

void AddProfitAndLoss(Options options, ProfitAndLossOptions& books) {
  options.Argument("FILE", books.file, "Company file to read");
  options.Parsed("--from", "YYYY-MM", books.from, ParseYearMonth,
                 "First month [of the last transaction's fiscal year]");
  options.Parsed("--to", "YYYY-MM", books.to, ParseYearMonth, "Last month [twelve months in all]");
  options.Flag("--months", books.months, "Also print each month");
  options.Flag("--json", books.json, "Print one JSON object");
}

void AddGenerateCompany(Options options, GenerateCompanyOptions& company) {
  sample_company::GeneratorSettings& settings = company.settings;
  options.Argument("FILE", company.file, "Company file to create (.qbw)");
  options.Parsed("--accounts", "N", settings.accounts, ParseCount,
                 "Accounts of all levels, 43 or more [120]");
  options.Parsed("--items", "N", settings.items, ParseCount, "Items, 16 or more [80]");
  options.Parsed("--customers", "N", settings.customers, ParseCount, "Customers, including their jobs [60]");
  options.Parsed("--transactions", "N", settings.transactions, ParseCount,
                 "Transactions in all years together [2000]");
  options.Parsed("--years", "A-B", company.years, ParseYears, "First and last year [2001-2002]");
  options.Parsed("--seed", "S", company.seed, ParseCount, "The same seed gives the same company [1]");
  options.Parsed("--processor", "VERSION", settings.processorVersion, ParseProcessorVersion,
                 "Highest qbXML version it answers: 1.0, 1.1 or 2.0 [1.1]");
}

void AddNewPlan(Options options, NewPlanOptions& plan) {
  options.Argument("FILE", plan.file, "Plan file to create (.kpf)");
  options.Parsed("--product", "P", plan.product, ParseProduct, "ald, bri or cor")->required();
  options.Parsed("--start", "YYYY-MM", plan.start, ParseYearMonth, "First month of the plan")->required();
}

void AddShowPlan(Options options, ShowPlanOptions& plan) {
  options.Argument("FILE", plan.file, "Plan file to show");
  options.Text("--table", "NAME", plan.table, "Show only this table, named by its title or its id");
  options.Flag("--values", plan.values, "Compute growth formulas; show amounts with two decimals");
  options.Flag("--cells", plan.cells, "Print one line per cell, for comparing");
  options.Flag("--json", plan.json, "Print one JSON object");
}

void AddExportPlan(Options options, ExportPlanOptions& plan) {
  options.Argument("FILE", plan.file, "Plan file to export");
  options.Text("--xlsx", "FILE", plan.workbookFile, "Write a spreadsheet (.xlsx)");
  options.Text("--csv", "DIR", plan.csvFolder, "Write CSV files into this folder");
  options.Text("--journal", "FILE", plan.journalFile,
               "List the amounts of this journal, which an import left out");
}

void AddPlanHistory(Options options, PlanHistoryOptions& history) {
  options.Argument("FILE", history.file, "Plan file");
  options.Flag("--json", history.json, "Print one JSON object");
}

void AddPlanDiff(Options options, PlanDiffOptions& diff) {
  options.Argument("FILE", diff.file, "Plan file");
  options.OptionalArgument("N", diff.from, ParseVersionNumber,
                           "Earlier version [the one before the last import]");
  options.OptionalArgument("M", diff.to, ParseVersionNumber, "Version to compare it with [the plan]");
  options.Flag("--json", diff.json, "Print one JSON object");
}

void AddPlanUndo(Options options, PlanUndoOptions& undo) {
  options.Argument("FILE", undo.file, "Plan file");
  options.Parsed("--to", "N", undo.to, ParseVersionNumber,
                 "Version to bring back [the one before the last import]");
  options.Flag("--force", undo.force, "Also if another program has changed the plan since");
}

void AddReconcile(Options options, ReconcileOptions& reconcile) {
  options.Text("--company", "FILE", reconcile.companyFile, "Company file to read (not needed with --replay)");
  AddQuickBooks(options, reconcile);
  options.Text("--replay", "FILE", reconcile.replayFile, "Read a recorded exchange instead of a company");
  options.Text("--plan", "FILE", reconcile.planFile, "Plan file to compare")->required();
  options.Parsed("--import-start", "YYYY-MM", reconcile.importStart, ParseYearMonth,
                 "First of the 12 months [those of the last import]");
  options.Texts("--profit-and-loss", "DOC", reconcile.statements,
                "The books' profit and loss: a report's answer or CSV (repeatable)");
  options.Parsed("--tolerance", "AMOUNT", reconcile.tolerance, ParseTolerance,
                 "Largest difference that counts as none [0.01]");
  options.Flag("--months", reconcile.months, "One line per account and month");
  options.Flag("--json", reconcile.json, "Print one JSON object");
  options.Text("--report", "FILE", reconcile.reportFile,
               "Write a page about the result to FILE, for browsers");
}

void AddDoctor(Options options, DoctorOptions& doctor) {
  options.Text("--company", "FILE", doctor.companyFile, "Company file to check");
  AddQuickBooks(options, doctor);
  options.Text("--plan", "FILE", doctor.planFile, "Plan file to check")->required();
  options.Flag("--json", doctor.json, "Print one JSON object");
}

void AddSummary(Options options, SummaryOptions& summary) {
  options.Argument("DIR", summary.folder, "Folder with the results of krnqb import --json, *.json");
  options.Text("--html", "FILE", summary.htmlFile, "Write a page for browsers");
  options.Text("--csv", "FILE", summary.csvFile, "Write a line for each import");
  options.Flag("--json", summary.json, "Print one JSON object");
}

void AddRecord(Options options, RecordOptions& record) {
  options.Text("--company", "FILE", record.companyFile, "Company file to record");
  AddQuickBooks(options, record);
  options
      .Parsed("--plan-start", "YYYY-MM", record.planStart, ParseYearMonth,
              "First month of the plans to import into")
      ->required();
  options.Parsed("--from", "YYYY-MM", record.from, ParseYearMonth,
                 "First month to record [a year before the plan]");
  options.Parsed("--to", "YYYY-MM", record.to, ParseYearMonth, "Last month [the one before the plan]");
  options.Text("--out", "FILE", record.outFile, "Recording to write; FILE.part until it is complete")
      ->required();
  options.Flag("--quiet", record.quiet, "Print nothing but warnings and errors");
}

void AddCompanies(Options options, CompaniesOptions& companies) {
  options.Text("--quickbooks-folder", "DIR", companies.quickBooksFolder,
               "Folder of the QuickBooks program [as configured]");
  options.Flag("--json", companies.json, "Print one JSON object");
}

void AddExplain(Options options, ExplainOptions& explain) {
  options.Argument("LEDGER", explain.ledger, "Ledger of an import (krnqb import --ledger LEDGER)");
  options.Text("--row", "NAME", explain.row, "Show what the figures of the row NAME are made of");
  options.Text("--table", "NAME", explain.table, "Only in this table, named by its title or its id");
  options.Parsed("--month", "YYYY-MM", explain.month, ParseYearMonth, "Only this month");
  options.Text("--transaction", "TXNID", explain.transaction, "Show where the lines of a transaction went");
  options.Flag("--json", explain.json, "Print one JSON object");
}

DialogName ParseDialog(std::string_view /*option*/, std::string_view text) {
  if (text == "options") return DialogName::Options;
  if (text == "export") return DialogName::Export;
  if (text == "company") return DialogName::Company;
  if (text == "plan") return DialogName::Plan;
  if (text == "about") return DialogName::About;
  throw WrongUsage(fmt::format("\"{}\" is not a dialog", text),
                   "give options, export, company, plan or about");
}

void AddDialog(Options options, DialogOptions& dialog) {
  options.ParsedArgument("options|export|company|plan|about", dialog.dialog, ParseDialog,
                         "Which dialog to show");
  options.Text("--company", "FILE", dialog.companyFile, "Company file to import from (options)");
  AddQuickBooks(options, dialog);
  options.Text("--plan", "FILE", dialog.planFile, "Plan file to import into (options)");
}

// The tree of commands and their options.
class CommandTree {
 public:
  // `arguments` must outlive the object.
  explicit CommandTree(std::span<const std::string> arguments)
      : arguments_(arguments), program_("Imports QuickBooks accounting data into business plans.", "krnqb") {
    program_.formatter(std::make_shared<HelpFormatter>());
    program_.set_help_flag("-h,--help", "Print this help and exit");
    program_.footer(std::string(help_text::program));
    program_.set_version_flag("--version", fmt::format("krnqb {}", ProgramVersion()),
                              "Print the version and exit");
    RequireCommand(program_);
    Add<ImportCommand>(program_, "import", "Import a company's accounts into a plan", help_text::import,
                       AddImport);
    Add<DoctorOptions>(program_, "doctor", "Check what an import needs, before making it", help_text::doctor,
                       AddDoctor);
    Add<SummaryOptions>(program_, "summary", "Show which of many imports are done", help_text::summary,
                        AddSummary);
    Add<ReconcileOptions>(program_, "reconcile", "Compare a plan with the books", help_text::reconcile,
                          AddReconcile);
    Add<RecordOptions>(program_, "record", "Record the answers to imports, to import elsewhere",
                       help_text::record, AddRecord);
    Add<AccountsOptions>(program_, "accounts", "List a company's accounts", help_text::accounts, AddAccounts);
    Add<CompaniesOptions>(program_, "companies", "List the company files in the QuickBooks folder",
                          help_text::companies, AddCompanies);
    Add<ExplainOptions>(program_, "explain", "Show what a figure of an import is made of", help_text::explain,
                        AddExplain);
    Add<DialogOptions>(program_, "dialog", "Show a dialog", help_text::dialog, AddDialog);
    Add<TablesOptions>(program_, "tables", "List the plan tables that an import may change",
                       help_text::tables, AddTables);
    Add<RequestOptions>(program_, "request", "Print a request exactly as it is sent", help_text::request,
                        AddRequest);
    Add<SupportsOptions>(program_, "supports", "Check whether a company answers a qbXML version",
                         help_text::supports, AddSupports);
    CLI::App& company = AddFamily("company", "Create, fill and show company files", help_text::company);
    Add<NewCompanyOptions>(company, "new", "Create a company file", help_text::newCompany, AddNewCompany);
    Add<LoadCompanyOptions>(company, "load", "Load qbXML documents into a company file",
                            help_text::loadCompany, AddLoadCompany);
    Add<CompanyInfoOptions>(company, "info", "Show what a company file contains", help_text::companyInfo,
                            AddCompanyInfo);
    Add<CheckCompanyOptions>(company, "check", "Check a company file for damage", help_text::checkCompany,
                             AddCheckCompany);
    Add<ProfitAndLossOptions>(company, "profit-and-loss", "Print a company's profit and loss",
                              help_text::profitAndLoss, AddProfitAndLoss);
    Add<GenerateCompanyOptions>(company, "generate", "Generate a company with years of transactions",
                                help_text::generateCompany, AddGenerateCompany);
    CLI::App& plan = AddFamily("plan", "Create, show and restore plan files", help_text::plan);
    Add<NewPlanOptions>(plan, "new", "Create a plan file", help_text::newPlan, AddNewPlan);
    Add<ShowPlanOptions>(plan, "show", "Show a plan's tables", help_text::showPlan, AddShowPlan);
    Add<ExportPlanOptions>(plan, "export", "Write a plan as a spreadsheet or CSV files",
                           help_text::exportPlan, AddExportPlan);
    Add<PlanHistoryOptions>(plan, "history", "List the earlier versions of a plan", help_text::planHistory,
                            AddPlanHistory);
    Add<PlanDiffOptions>(plan, "diff", "Show what differs from an earlier version", help_text::planDiff,
                         AddPlanDiff);
    Add<PlanUndoOptions>(plan, "undo", "Bring an earlier version back", help_text::planUndo, AddPlanUndo);
    AddHelp();
  }

  Command Read() {
    std::vector<std::string> lastFirst(arguments_.rbegin(), arguments_.rend());
    try {
      program_.parse(lastFirst);
    } catch (const CLI::CallForHelp&) {
      return PrintedText{program_.help()};
    } catch (const CLI::CallForVersion& version) {
      return PrintedText{fmt::format("{}\n", version.what())};
    } catch (const CLI::ParseError& fault) {
      throw Complaint(fault);
    }
    return chosen_();
  }

 private:
  static void RequireCommand(CLI::App& app) { app.require_subcommand(1); }

  CLI::App& AddFamily(const std::string& name, const std::string& description, std::string_view footer) {
    CLI::App& family = *program_.add_subcommand(name, description)->group("Commands");
    family.footer(std::string(footer));
    RequireCommand(family);
    return family;
  }

  template <typename CommandOptions, typename AddOptions>
  void Add(CLI::App& parent, const std::string& name, const std::string& description, std::string_view footer,
           AddOptions addOptions) {
    CLI::App& app = *parent.add_subcommand(name, description)->group("Commands");
    // A command that the arguments do not name is only listed; its options would take longer than all else.
    if (std::ranges::find(arguments_, name) == arguments_.end()) return;
    app.footer(std::string(footer));
    const auto options = std::make_shared<CommandOptions>();
    addOptions(Options(app), *options);
    app.final_callback([this, options] { chosen_ = [options] { return Command(*options); }; });
  }

  void AddHelp() {
    CLI::App& app = *program_.add_subcommand("help", "Describe a command")->group("Commands");
    const auto words = std::make_shared<std::vector<std::string>>();
    app.add_option("COMMAND", *words, "Command to describe, such as company new")->option_text(" ");
    app.final_callback(
        [this, words] { chosen_ = [this, words] { return Command(PrintedText{HelpOf(*words)}); }; });
  }

  std::string HelpOf(const std::vector<std::string>& words) const;

  const CLI::App& DeepestCommand() const {
    const CLI::App* app = &program_;
    while (!app->get_subcommands().empty()) app = app->get_subcommands().back();
    return *app;
  }

  Failure Complaint(const CLI::ParseError& fault) const;
  static Failure UnknownWord(const CLI::App& app, const std::string& word, std::string_view seeHelp);

  std::span<const std::string> arguments_;
  CLI::App program_;
  std::function<Command()> chosen_;
};

std::string FullName(const CLI::App& app) {
  return app.get_parent() == nullptr ? app.get_name() : FullName(*app.get_parent()) + ' ' + app.get_name();
}

std::string CommandTree::HelpOf(const std::vector<std::string>& words) const {
  const CLI::App* app = &program_;
  for (const std::string& word : words) {
    const auto named =
        app->get_subcommands([&](const CLI::App* command) { return command->get_name() == word; });
    if (named.empty()) throw UnknownWord(*app, word, fmt::format("see {} --help", FullName(*app)));
    app = named.front();
  }
  return app->get_formatter()->make_help(app, FullName(*app), CLI::AppFormatMode::Normal);
}

// The library's message, replaced where it is unclear.
std::string ReasonOf(const CLI::ParseError& fault) {
  std::string words = fault.what();
  const std::string subject = words.substr(0, words.find(':'));
  if (words.ends_with(": needs a value")) return fmt::format("{} needs a value", subject);
  if (fault.get_name() != "ArgumentMismatch") return words;
  if (words.find("At Most") != std::string::npos) return fmt::format("{} is given more than once", subject);
  return fmt::format("{} needs a value", subject);
}

Failure CommandTree::Complaint(const CLI::ParseError& fault) const {
  const CLI::App& app = DeepestCommand();
  const std::string seeHelp = fmt::format("see {} --help", FullName(app));
  const std::vector<std::string> unknown = app.remaining(true);
  if (!unknown.empty()) return UnknownWord(app, unknown.front(), seeHelp);
  if (!app.get_subcommands({}).empty()) return WrongUsage("no command is given", seeHelp);
  return WrongUsage(ReasonOf(fault), seeHelp);
}

Failure CommandTree::UnknownWord(const CLI::App& app, const std::string& word, std::string_view seeHelp) {
  const bool isOption = word.starts_with('-') && word.size() > 1;
  std::vector<std::string> known;
  for (const CLI::Option* option : app.get_options()) {
    if (isOption && option->nonpositional()) known.push_back(option->get_name());
  }
  for (const CLI::App* command : app.get_subcommands({})) {
    if (!isOption) known.push_back(command->get_name());
  }
  const std::string_view kind = isOption ? "option" : known.empty() ? "argument" : "command";
  const std::string why = fmt::format("{} has no {} \"{}\"", FullName(app), kind, word);
  const std::vector<std::string> nearest = NearestNames(word, known);
  if (nearest.empty()) return WrongUsage(why, seeHelp);
  return WrongUsage(why, fmt::format("did you mean {}?", AlternativesText(nearest)));
}

}  // namespace

Command ParseCommandLine(std::span<const std::string> arguments) {
  return CommandTree(arguments).Read();
}

}  // namespace krnqb::cli
