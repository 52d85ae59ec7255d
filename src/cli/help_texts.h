#pragma once

#include <string_view>

namespace krnqb::cli::help_text {

// The text at the end of each command's help. Tests run every example.

inline constexpr std::string_view program =
    R"(Examples:
  krnqb company new nursery.qbw --name "Nursery" --fiscal-month January --processor 1.1
  krnqb company load nursery.qbw samples/nursery/*.xml
  krnqb plan new nursery.kpf --product ald --start 2003-01
  krnqb import --company nursery.qbw --plan nursery.kpf --expenses --income
  krnqb plan show nursery.kpf

Exit status: 0 done; 1 failed, nothing written; 2 usage error; 3 done, but
incomplete; 4 the plan differs from the books; 129, 130 or 143 interrupted,
nothing written.
"krnqb help COMMAND" or "krnqb COMMAND --help" describes a command.)";

inline constexpr std::string_view import =
    R"(Examples:
  krnqb import --company nursery.qbw --plan nursery.kpf --expenses --income
  krnqb import --company nursery.qbw --plan nursery.kpf --expenses --dry-run
  krnqb import --company nursery.qbw --plan bri.kpf --expenses \
               --select-expense Rent --select-expense Utilities
  krnqb import --company nursery.qbw --plan nursery.kpf --income --record exchange.jsonl
  krnqb import --replay exchange.jsonl --plan nursery.kpf --income --json
  krnqb import --company nursery.qbw --plan nursery.kpf --income --balances all \
               --ledger nursery.kql
  krnqb import --company nursery.qbw --plan nursery.kpf --income --balances all \
               --report nursery.html

The plan is written once, at the very end; its previous version is kept beside it
as .bak and, with a number, in PLAN.history. "krnqb plan undo" brings it back.
A second import into the same plan at the same time is refused.)";

inline constexpr std::string_view reconcile =
    R"(Compares the plan's actual amounts with what the last import wrote, with what an
import books now, and with the books: the company's own transactions, or the profit
and loss given with --profit-and-loss. Prints the causes of every difference; what
has no cause is shown as unexplained. docs/commands.md describes each cause. Nothing
is changed. Exit status 0 if the plan agrees with the books, 4 if it differs.

Examples:
  krnqb reconcile --company nursery.qbw --plan nursery.kpf || echo "differs"
  krnqb reconcile --company nursery.qbw --plan nursery.kpf --months --json || true
  krnqb reconcile --company nursery.qbw --plan nursery.kpf --report books.html || true)";

inline constexpr std::string_view doctor =
    R"(Prints a line for each thing that an import needs: ok, warn or fail, what was found,
and what to do. Nothing is written. Exit status 0 if all is ok, 3 if there are only
warnings, 1 if an import would fail.

Examples:
  krnqb doctor --company nursery.qbw --plan nursery.kpf || echo "see above"
  krnqb doctor --company nursery.qbw --plan nursery.kpf --json || true)";

inline constexpr std::string_view summary =
    R"(DIR has a file NAME.json for each import: what krnqb import --json printed. Prints the
imports that are not done and why, those that are, warnings by code, and totals, the
newest first. An empty or cut file is an import that is not done. docs/batch.md shows
how to make many imports. Exit status 0 if all are done, 3 if any is not.

Examples:
  krnqb import --company nursery.qbw --plan nursery.kpf --expenses --json >results/nursery.json
  krnqb summary results
  krnqb summary results --html imports.html --csv imports.csv)";

inline constexpr std::string_view record =
    R"(Asks a company for everything that imports of any twelve months from --from to --to,
into any plan that starts in --plan-start, ask for: from transactions and, if the
company has them, from reports. The recording holds each request once, with its
answer. On any machine, krnqb import --replay FILE imports from it, and
krnqb company load loads it.

An interrupted recording stays in FILE.part; the same command goes on with it.

Examples:
  krnqb record --company nursery.qbw --plan-start 2003-01 --out nursery.jsonl
  krnqb import --replay nursery.jsonl --plan nursery.kpf --expenses --dry-run)";

inline constexpr std::string_view explain =
    R"(LEDGER is what krnqb import --ledger LEDGER has written. With --row, prints the lines
of each month: what QuickBooks answered, what was added and by which rule, and their
sum. With --transaction, prints where each line of a transaction went, or why it went
nowhere.

Examples:
  krnqb explain nursery.kql --row Rent
  krnqb explain nursery.kql --row "Plant Sales" --month 2002-03
  krnqb explain nursery.kql --row Rent --table "planned expenses" --json
  krnqb explain nursery.kql --transaction FC-1016216676)";

inline constexpr std::string_view accounts =
    R"(Examples:
  krnqb accounts income --company nursery.qbw
  krnqb accounts expense --company nursery.qbw --plan bri.kpf
  krnqb accounts expense --company nursery.qbw --json)";

inline constexpr std::string_view companies =
    R"(The folder is --quickbooks-folder, else the environment variable
KRNQB_QUICKBOOKS_FOLDER, else "quickbooks-folder" in ~/.config/krnqb/config.ini
(Windows: %APPDATA%\krnqb\config.ini, else the folder in the registry).

Examples:
  krnqb companies --quickbooks-folder samples
  krnqb companies --quickbooks-folder . --json)";

inline constexpr std::string_view dialog =
    R"(options  Choose what to import and import it (requires a company and --plan)
export   The options for exporting
company  Choose a company file; prints its path; exit status 1 if cancelled
plan     Choose a plan file; prints its path; exit status 1 if cancelled
about    Name, version and description of the component

Dialogs require a display.

Example: krnqb dialog options --company nursery.qbw --plan nursery.kpf)";

inline constexpr std::string_view tables =
    R"(Examples:
  krnqb tables --product ald
  krnqb tables --product bri)";

inline constexpr std::string_view request =
    R"(Requests:
   1 income accounts         10 bills                 100 host and versions
   2 cost-of-goods accounts  11 checks                101 company
   4 expense accounts        12 credit-card charges   102 preferences
  50 items                   20 invoices              300 income by month
  60 all accounts            21 sales receipts        310 expenses by month
   9 bills, all dates                                 320 cost of sales by month
                                                      330 balance sheet by type

Examples:
  krnqb request 4
  krnqb request 10 --from 2002-01-01 --to 2002-01-31 | od -c)";

inline constexpr std::string_view supports =
    R"(Prints "yes" (exit status 0) or "no" (exit status 1).

Examples:
  krnqb supports 1.1 --company nursery.qbw
  krnqb supports 2.0 --company nursery.qbw || echo "no reports")";

inline constexpr std::string_view company =
    R"(Examples:
  krnqb company new nursery.qbw --name "Nursery" --fiscal-month January --processor 1.1
  krnqb company load nursery.qbw samples/nursery/*.xml
  krnqb company info nursery.qbw
  krnqb company check nursery.qbw
  krnqb company generate large.qbw --transactions 100000 --years 2001-2002)";

inline constexpr std::string_view newCompany =
    R"(Examples:
  krnqb company new nursery.qbw --name "Nursery" --fiscal-month January --processor 1.1
  krnqb company new reports.qbw --name "Nursery" --fiscal-month 7 --processor 2.0)";

inline constexpr std::string_view loadCompany =
    R"(Loading a record again replaces it. Records of other kinds than accounts, items and
the transactions of a profit and loss are passed over with a warning; with --strict
nothing of their document is loaded. Nothing of a faulty document is loaded either.

Examples:
  krnqb company load nursery.qbw samples/nursery/*.xml
  krnqb company load --strict nursery.qbw accounts.xml)";

inline constexpr std::string_view companyInfo =
    R"(Examples:
  krnqb company info nursery.qbw
  krnqb company info nursery.qbw --json)";

inline constexpr std::string_view checkCompany =
    R"(Checks that every page of the file has its checksum, and that the amounts of reports
are those of the records. Prints each finding; exit status 1 if there is any.
--fix undoes a load that was interrupted, and writes a file without checksums anew;
its previous version is kept beside it as .bak.

Examples:
  krnqb company check nursery.qbw
  krnqb company check --fix nursery.qbw
  krnqb company check nursery.qbw --json)";

inline constexpr std::string_view profitAndLoss =
    R"(Adds up the company's own transactions, whatever qbXML version it answers, on the
accrual basis. Then names the accounts whose balances the loaded transactions do not
explain. By default the period is the fiscal year of the last transaction.

Examples:
  krnqb company profit-and-loss nursery.qbw
  krnqb company profit-and-loss nursery.qbw --from 2002-01 --to 2002-03 --months
  krnqb company profit-and-loss nursery.qbw --json)";

inline constexpr std::string_view generateCompany =
    R"(The company has accounts three levels deep, items of every kind, and seasonal bills,
checks, charges, invoices and sales receipts: enough to try an import on.

Examples:
  krnqb company generate trial.qbw
  krnqb company generate large.qbw --accounts 400 --items 300 --customers 500 \
    --transactions 20000 --years 2001-2002 --seed 7 --processor 2.0)";

inline constexpr std::string_view plan =
    R"(Examples:
  krnqb plan new nursery.kpf --product ald --start 2003-01
  krnqb plan show nursery.kpf
  krnqb plan export nursery.kpf --xlsx nursery.xlsx
  krnqb plan history nursery.kpf
  krnqb plan diff nursery.kpf
  krnqb plan undo nursery.kpf)";

inline constexpr std::string_view newPlan =
    R"(Examples:
  krnqb plan new nursery.kpf --product ald --start 2003-01
  krnqb plan new margin.kpf --product bri --start 2003-07)";

inline constexpr std::string_view showPlan =
    R"(A line is no wider than the terminal, or 80 columns: where that is needed, a year
is shown in parts, one below the other. A name in parentheses is that of the planned
row at the same place; the row itself has none. With --values a growth formula is
shown as its amount; a formula that refers to other cells is shown as text.

With --cells each line holds table id, block, row, column and text, separated by
tabs. Rows and columns count from 0. The text is ASCII: tabs, line ends, backslashes
and other characters are written as \t, \n, \r, \\ and \u00e9.

Examples:
  krnqb plan show nursery.kpf
  krnqb plan show nursery.kpf --values
  krnqb plan show nursery.kpf --table "planned expenses" --values
  krnqb plan show nursery.kpf --table 20000000000000000000000000000600
  krnqb plan show nursery.kpf --cells >after.txt
  krnqb plan show nursery.kpf --json)";

inline constexpr std::string_view exportPlan =
    R"(The spreadsheet has a sheet for each block of the plan, in which rows and columns are
those of the plan and the growth formulas compute; the actual months are beside the
planned ones. The first sheet sums up sales, costs, expenses and the result, with two
charts. The second one has the warnings, what is known of the last import and, with
--journal, the amounts that it left out. An existing spreadsheet is replaced, any other
file is refused. Only you can read the new files.

Examples:
  krnqb plan export nursery.kpf --xlsx nursery.xlsx
  krnqb plan export nursery.kpf --csv nursery-csv)";

inline constexpr std::string_view planHistory =
    R"(Every import that writes the plan keeps the version before it, with a number, in the
folder FILE.history: the last 20 (krnqb import --keep N) and the first one. Exit
status 3 if a version cannot be brought back because the folder is damaged.

Examples:
  krnqb plan history nursery.kpf
  krnqb plan history nursery.kpf --json)";

inline constexpr std::string_view planDiff =
    R"(Compares version N with the plan, or with version M. Without N, shows what the last
import has changed. "krnqb plan history" lists the numbers.

Examples:
  krnqb plan diff nursery.kpf
  krnqb plan diff nursery.kpf 1
  krnqb plan diff nursery.kpf 1 2 --json)";

inline constexpr std::string_view planUndo =
    R"(Brings back the version before the last import, byte for byte. Each further undo goes
one import further back. The version that an undo replaces is kept with a number of
its own, so --to brings it back. If another program has changed the plan since, the
undo is refused; --force replaces the plan all the same, and keeps that version.

Examples:
  krnqb plan undo nursery.kpf
  krnqb plan undo nursery.kpf --to 1)";

}  // namespace krnqb::cli::help_text
