#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/doctor/healthy_pair.h"
#include "cli/living_quickbooks.h"
#include "files/unprivileged_user.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

using nlohmann::json;
using tests::HealthyPair;
using tests::LivingQuickBooks;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Words;

// The verdicts of a check-up by check.
std::map<std::string, std::string> Verdicts(const ProgramRun& run) {
  std::map<std::string, std::string> verdicts;
  const json checkup = json::parse(run.out);
  for (const json& line : checkup.at("checks")) verdicts[line.at("check")] = line.at("verdict");
  return verdicts;
}

std::string FoundBy(const ProgramRun& run, const std::string& check) {
  const json checkup = json::parse(run.out);
  for (const json& line : checkup.at("checks")) {
    if (line.at("check") == check) return line.at("found");
  }
  return "no line";
}

// The names, contents and times of everything in a folder.
std::map<std::string, std::pair<std::string, fs::file_time_type>> Everything(const fs::path& folder) {
  std::map<std::string, std::pair<std::string, fs::file_time_type>> everything;
  everything["."] = {"", fs::last_write_time(folder)};
  for (const auto& file : fs::recursive_directory_iterator(folder)) {
    everything[file.path().string()] = {file.is_regular_file() ? ReadText(file.path()) : "",
                                        file.last_write_time()};
  }
  return everything;
}

TEST(Doctor, FindsAHealthyPairOk) {
  const HealthyPair pair;
  const ProgramRun run = pair.Doctor();
  EXPECT_EQ(run.code, 0) << run.out;
  EXPECT_EQ(run.err, "");
  std::istringstream lines(run.out);
  int count = 0;
  std::string line;
  while (std::getline(lines, line) && line.starts_with("ok    ")) ++count;
  EXPECT_EQ(count, 13) << run.out;
  EXPECT_EQ(line, "An import has everything it needs.");
}

TEST(Doctor, SaysWhatItFoundOfAHealthyPair) {
  const HealthyPair pair;
  ASSERT_EQ(pair.Import().code, 0);
  const ProgramRun run = pair.Doctor({"--json"});
  EXPECT_EQ(run.code, 0) << run.out;
  const std::map<std::string, std::string> expected{
      {"company", pair.Company() + " opens: Hollow Creek Nursery"},
      {"versions", "the company answers qbXML 1.0, 1.1; amounts come from transactions"},
      {"fiscal-month", "the fiscal year begins in January"},
      {"plan", pair.Plan() + " opens: edition ald, from January 2003"},
      {"months", "every month from January to December 2002 has transactions"},
      {"accounts",
       "17 of 17 top-level accounts have a row; rows without an account: Example product; Example cost of "
       "sales; Example expense"},
      {"history", "1 version can be brought back; the plan is as it was last written"}};
  for (const auto& [check, found] : expected) EXPECT_EQ(FoundBy(run, check), found);
}

TEST(Doctor, KnowsWhenAnotherProgramHasChangedThePlan) {
  const HealthyPair pair;
  ASSERT_EQ(pair.Import().code, 0);
  pair.ChangePlan("<tables>", "<tables> ");
  const ProgramRun run = pair.Doctor({"--json"});
  EXPECT_EQ(run.code, 0) << run.out;
  EXPECT_EQ(FoundBy(run, "history"),
            "1 version can be brought back; another program has changed the plan since import 1");
}

TEST(Doctor, WritesNothing) {
  const HealthyPair pair;
  for (const bool imported : {false, true}) {
    if (imported) {
      ASSERT_EQ(pair.Import().code, 0);
    }
    const fs::path folder = fs::path(pair.Plan()).parent_path();
    const auto before = Everything(folder);
    EXPECT_EQ(pair.Doctor().code, 0);
    EXPECT_EQ(Everything(folder), before);
  }
}

TEST(Doctor, ReportsEveryFaultAndWhatCouldNotBeChecked) {
  const HealthyPair pair;
  fs::remove(pair.Company());
  fs::remove(pair.Plan());
  const ProgramRun run = pair.Doctor();
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out,
            "fail  company       There is no company file " + pair.Company() +
                "; check the path, or create a company with krnqb company new\n"
                "fail  plan          cannot open the plan " +
                pair.Plan() +
                ": No such file or directory; check the path\n"
                "not checked: integrity, versions, fiscal-month, months, accounts (the company cannot be "
                "opened)\n"
                "not checked: tables, twins, cells, folder, lock, history (the plan cannot be opened)\n"
                "An import would fail: 2 checks failed.\n");
}

TEST(Doctor, SelectsExpensesOfABriPlanByItsRows) {
  const HealthyPair pair;
  fs::remove(pair.Plan());
  ASSERT_EQ(RunProgram({"plan", "new", pair.Plan(), "--product", "bri", "--start", "2003-01"}).code, 0);
  const ProgramRun run = pair.Doctor({"--json"});
  EXPECT_EQ(run.code, 0) << run.out;
  EXPECT_EQ(FoundBy(run, "accounts")
                .find("0 of 17 top-level accounts have a row, 7 get a new one, 10 are "
                      "imported only if selected"),
            0U)
      << FoundBy(run, "accounts");
}

TEST(Doctor, ReportsAFolderThatMayNotBeChanged) {
  const HealthyPair pair;
  const fs::path folder = fs::path(pair.Plan()).parent_path();
  fs::permissions(folder, fs::perms(0555));
  ProgramRun run;
  {
    const files::UnprivilegedUser user;
    if (!user.Restricted()) GTEST_SKIP() << "permissions are not checked for this user";
    run = pair.Doctor({"--json"});
  }
  fs::permissions(folder, fs::perms(0755));
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(Verdicts(run).at("folder"), "fail");
  EXPECT_EQ(FoundBy(run, "folder"), "cannot write to " + folder.string() + ": Permission denied");
}

TEST(Doctor, ReportsAPlanThatMayNotBeChanged) {
  const HealthyPair pair;
  const fs::path folder = fs::path(pair.Plan()).parent_path();
  fs::permissions(folder, fs::perms::all);
  fs::permissions(pair.Plan(), fs::perms(0444));
  ProgramRun run;
  {
    const files::UnprivilegedUser user;
    if (!user.Restricted()) GTEST_SKIP() << "permissions are not checked for this user";
    run = pair.Doctor({"--json"});
  }
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(FoundBy(run, "folder"), "cannot write to " + pair.Plan() + ": Permission denied");
}

TEST(Doctor, RefusesAKeptVersionAsThePlan) {
  const HealthyPair pair;
  ASSERT_EQ(pair.Import().code, 0);
  const ProgramRun run = RunProgram(
      {"doctor", "--company", pair.Company(), "--plan", pair.File("garden.kpf.history/0001.kpf"), "--json"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(Verdicts(run).at("plan"), "fail");
  EXPECT_EQ(FoundBy(run, "plan"),
            "--plan " + pair.File("garden.kpf.history/0001.kpf") + " is a version in a plan's history");
}

TEST(Doctor, AsksQuickBooksWhatAProcessorAnswers) {
  const HealthyPair pair;
  const auto quickBooks = std::make_shared<LivingQuickBooks>();
  quickBooks->openCompany = pair.Company();
  const ProgramRun run =
      RunProgram({"doctor", "--quickbooks", "--plan", pair.Plan(), "--json"}, tests::With(quickBooks));
  EXPECT_EQ(run.code, 0) << run.out << run.err;
  EXPECT_EQ(FoundBy(run, "company"), "the company in QuickBooks opens: Hollow Creek Nursery");
  EXPECT_EQ(FoundBy(run, "accounts").find("1 of 17 top-level accounts has a row, 16 get a new one"), 0U);
  EXPECT_EQ(quickBooks->sessions, 1);
  const json omitted = json::parse(run.out).at("not_checked");
  ASSERT_EQ(omitted.size(), 2U);
  EXPECT_EQ(omitted.at(0).at("check"), "integrity");
  EXPECT_EQ(omitted.at(1).at("check"), "months");
}

TEST(Doctor, ReportsWhatQuickBooksRefuses) {
  const HealthyPair pair;
  const auto quickBooks = std::make_shared<LivingQuickBooks>();
  quickBooks->openCompany = pair.Company();
  quickBooks->refusedPart = "<AccountQueryRq";
  const ProgramRun run =
      RunProgram({"doctor", "--quickbooks", "--plan", pair.Plan(), "--json"}, tests::With(quickBooks));
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(Verdicts(run).at("accounts"), "fail");
  EXPECT_EQ(FoundBy(run, "accounts"), "QuickBooks found an error when parsing the request");
}

TEST(Doctor, ReportsAQuickBooksThatDoesNotOpenTheCompany) {
  const HealthyPair pair;
  const auto quickBooks = std::make_shared<LivingQuickBooks>();
  quickBooks->openCompany = pair.File("none.qbw");
  const ProgramRun run =
      RunProgram({"doctor", "--quickbooks", "--plan", pair.Plan(), "--json"}, tests::With(quickBooks));
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(Verdicts(run).at("company"), "fail");
  EXPECT_FALSE(Verdicts(run).contains("accounts"));
}

TEST(Doctor, NeedsOneCompanyAndAPlan) {
  const HealthyPair pair;
  EXPECT_EQ(RunProgram({"doctor", "--plan", pair.Plan(), "--json"}).code, 2);
  EXPECT_EQ(RunProgram({"doctor", "--company", pair.Company(), "--json"}).code, 2);
  EXPECT_EQ(
      RunProgram({"doctor", "--company", pair.Company(), "--quickbooks", "--plan", pair.Plan(), "--json"})
          .code,
      2);
}

}  // namespace
}  // namespace krnqb::cli
