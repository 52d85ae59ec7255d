#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;

constexpr std::string_view twoAccounts =
    "<?xml version=\"1.0\" ?>\n<QBXML><QBXMLMsgsRs><AccountQueryRs>\n"
    "<AccountRet><ListID>1-1</ListID><Name>Rent</Name><FullName>Rent</FullName><Sublevel>0</Sublevel>"
    "<AccountType>Expense</AccountType><Balance>1.00</Balance></AccountRet>\n"
    "<AccountRet><ListID>2-1</ListID><Name>Fuel</Name><FullName>Fuel</FullName><Sublevel>0</Sublevel>"
    "<AccountType>Expense</AccountType><Balance>2.00</Balance></AccountRet>\n"
    "</AccountQueryRs></QBXMLMsgsRs></QBXML>\n";

std::vector<std::string> NewCompany(const std::string& file) {
  return {"company", "new", file, "--name", "Acme & Sons", "--fiscal-month", "July", "--processor", "2.0"};
}

TEST(CompanyNew, CreatesACompanyThatInfoShows) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  const ProgramRun made = RunProgram(NewCompany(file));
  EXPECT_EQ(made.code, 0);
  EXPECT_EQ(made.err, "");
  EXPECT_EQ(made.out,
            "Created " + file + ": company Acme & Sons, fiscal year from July, answers qbXML up to 2.0.\n");
  const ProgramRun info = RunProgram({"company", "info", file});
  EXPECT_EQ(info.code, 0);
  EXPECT_EQ(info.out,
            "Company           Acme & Sons\nFile              " + file +
                "\nFiscal year from  July\nAnswers qbXML     up to 2.0\nRecords\n  1  CompanyRet\n");
}

TEST(CompanyNew, DoesNotReplaceAFile) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  WriteText(file, "precious");
  const ProgramRun run = RunProgram(NewCompany(file));
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "krnqb: creating the company failed: The file " + file +
                         " already exists; give another path or name\n");
  EXPECT_EQ(tests::ReadText(file), "precious");
}

TEST(CompanyLoad, CountsTheRecordsOfEachDocument) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  RunProgram(NewCompany(file));
  WriteText(place / "accounts.xml", twoAccounts);
  const std::string document = place / "accounts.xml";
  const ProgramRun first = RunProgram({"company", "load", file, document});
  EXPECT_EQ(first.code, 0);
  EXPECT_EQ(first.out, document + ": added 2 AccountRet\n");
  const ProgramRun second = RunProgram({"company", "load", file, document});
  EXPECT_EQ(second.out, document + ": added nothing; replaced 2 AccountRet\n");
}

TEST(CompanyLoad, LoadsNothingFromABrokenDocument) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  RunProgram(NewCompany(file));
  const std::string document = place / "broken.xml";
  WriteText(document, tests::Replaced(std::string(twoAccounts), "<ListID>2-1</ListID>", "<ListID>2-1"));
  const ProgramRun run = RunProgram({"company", "load", file, document});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err.find("krnqb: loading failed: "), 0U) << run.err;
  EXPECT_NE(run.err.find("broken.xml"), std::string::npos) << run.err;
  EXPECT_TRUE(run.err.ends_with("; fix the document and load it again (nothing was loaded)\n")) << run.err;
  EXPECT_EQ(RunProgram({"company", "info", file}).out.find("AccountRet"), std::string::npos);
}

TEST(CompanyLoad, LoadsNothingIfALaterDocumentIsMissingOrTooLarge) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  RunProgram(NewCompany(file));
  WriteText(place / "accounts.xml", twoAccounts);
  WriteText(place / "large.xml", "");
  std::filesystem::resize_file(place / "large.xml", std::uintmax_t{1} << 31U);
  for (const auto& [document, reason] : {std::pair(place / "missing.xml", "No such file or directory"),
                                         std::pair(place / "large.xml", "it holds 2 GiB or more")}) {
    const ProgramRun run = RunProgram({"company", "load", file, place / "accounts.xml", document});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "krnqb: loading failed: " + document + ": " + reason +
                           "; check the path and load again (nothing was loaded)\n");
  }
  EXPECT_EQ(RunProgram({"company", "info", file}).out.find("AccountRet"), std::string::npos);
}

TEST(CompanyLoad, WarnsOfRecordsThatItPassesOver) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  RunProgram(NewCompany(file));
  const std::string document = place / "all.xml";
  WriteText(document, tests::Replaced(std::string(twoAccounts), "<QBXMLMsgsRs>",
                                      "<QBXMLMsgsRs><VendorQueryRs><VendorRet/><VendorRet/></VendorQueryRs>"
                                      "<EstimateQueryRs><EstimateRet/></EstimateQueryRs>"));
  const ProgramRun strict = RunProgram({"company", "load", file, "--strict", document});
  EXPECT_EQ(strict.code, 1);
  EXPECT_EQ(strict.out, "");
  EXPECT_EQ(strict.err,
            "krnqb: loading failed: " + document +
                ", line 2: company files cannot store records of VendorQueryRs; fix the document and "
                "load it again (nothing was loaded)\n");
  EXPECT_EQ(RunProgram({"company", "info", file}).out.find("AccountRet"), std::string::npos);

  const ProgramRun run = RunProgram({"company", "load", file, document});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, document + ": added 2 AccountRet\n");
  EXPECT_EQ(run.err,
            "krnqb: warning: " + document +
                ": passed over 1 EstimateRet, 2 VendorRet: company files cannot store such records\n");
  EXPECT_NE(RunProgram({"company", "info", file}).out.find("2  AccountRet"), std::string::npos);
}

TEST(CompanyLoad, NamesTheFirstTwentyKindsThatItPassesOver) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  RunProgram(NewCompany(file));
  std::string records;
  for (char kind = 'A'; kind <= 'V'; ++kind) records += std::string("<") + kind + "Ret/>";
  WriteText(place / "all.xml",
            "<QBXML><QBXMLMsgsRs><OtherQueryRs>" + records + "</OtherQueryRs></QBXMLMsgsRs></QBXML>");
  const ProgramRun run = RunProgram({"company", "load", file, place / "all.xml"});
  EXPECT_NE(run.err.find("1 TRet and 2 more kinds: company"), std::string::npos) << run.err;
  EXPECT_EQ(run.err.find("URet"), std::string::npos) << run.err;
}

TEST(CompanyLoad, NamesTheRecordWhoseBalanceIsNotANumber) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  RunProgram(NewCompany(file));
  const std::string document = place / "accounts.xml";
  WriteText(document, tests::Replaced(std::string(twoAccounts), "2.00", "two"));
  const ProgramRun run = RunProgram({"company", "load", file, document});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: loading failed: " + document +
                         ", line 4: AccountRet Fuel has the Balance \"two\", which is not a number; fix the "
                         "document and load it again (nothing was loaded)\n");
}

TEST(CompanyLoad, ExitsWithThreeIfEarlierDocumentsAreLoaded) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  RunProgram(NewCompany(file));
  WriteText(place / "accounts.xml", twoAccounts);
  WriteText(place / "broken.xml", "<QBXML>");
  const ProgramRun run = RunProgram({"company", "load", file, place / "accounts.xml", place / "broken.xml"});
  EXPECT_EQ(run.code, 3);
  EXPECT_EQ(run.out, (place / "accounts.xml") + ": added 2 AccountRet\n");
  EXPECT_TRUE(
      run.err.ends_with("; fix the document, then load it and the rest (those before it are loaded)\n"))
      << run.err;
}

TEST(CompanyLoad, LoadsNothingIfADocumentIsMissing) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  RunProgram(NewCompany(file));
  WriteText(place / "accounts.xml", twoAccounts);
  const ProgramRun run = RunProgram({"company", "load", file, place / "accounts.xml", place / "missing.xml"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "krnqb: loading failed: " + (place / "missing.xml") +
                         ": No such file or directory; check the path and load again (nothing was loaded)\n");
}

TEST(CompanyLoad, ReportsAMissingCompany) {
  const Workplace place;
  WriteText(place / "accounts.xml", twoAccounts);
  const ProgramRun run = RunProgram({"company", "load", place / "none.qbw", place / "accounts.xml"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: opening the company failed: There is no company file " + (place / "none.qbw") +
                         "; check the path, or create a company with krnqb company new\n");
}

TEST(CompanyInfo, PrintsJson) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  RunProgram(NewCompany(file));
  WriteText(place / "accounts.xml", twoAccounts);
  RunProgram({"company", "load", file, place / "accounts.xml"});
  const ProgramRun run = RunProgram({"company", "info", file, "--json"});
  EXPECT_EQ(run.code, 0);
  const auto expected = nlohmann::json::parse(R"({"result": "done", "name": "Acme & Sons", "processor": "2.0",
      "fiscal_month": 7, "records": {"CompanyRet": 1, "AccountRet": 2}})");
  auto info = nlohmann::json::parse(run.out);
  EXPECT_EQ(info.at("path"), file);
  info.erase("path");
  EXPECT_EQ(info, expected);
}

TEST(CompanyInfo, ReportsAFileThatIsNotACompanyAsJson) {
  const Workplace place;
  const ProgramRun run = RunProgram({"company", "info", place / "ald.kpf", "--json"});
  EXPECT_EQ(run.code, 1);
  const auto failure = nlohmann::json::parse(run.out);
  EXPECT_EQ(failure.at("result"), "failed");
  EXPECT_EQ(failure.at("error_number"), -2147220472);
  EXPECT_EQ(failure.at("error_description"), "The file " + (place / "ald.kpf") + " is not a company file.");
  EXPECT_EQ(run.err,
            "krnqb: opening the company failed: The file " + (place / "ald.kpf") +
                " is not a company file; check the path, or create a company with krnqb company new\n");
}

TEST(CompanyLoad, ReportsThatADocumentIsADirectory) {
  const Workplace place;
  const std::string file = place / "acme.qbw";
  RunProgram(NewCompany(file));
  const ProgramRun run = RunProgram({"company", "load", file, place.Folder().string()});
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("Is a directory"), std::string::npos) << run.err;
}

TEST(CompanyGenerate, CreatesACompanyAndCountsItsRecords) {
  const Workplace place;
  const std::string file = place / "made.qbw";
  const ProgramRun run =
      RunProgram({"company", "generate", file, "--accounts", "50", "--items", "20", "--customers", "5",
                  "--transactions", "100", "--years", "2002", "--seed", "7", "--processor", "2.0"});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_NE(run.out.find("2002 to 2002, answers qbXML up to 2.0."), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("50 AccountRet"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("Transaction lines: "), std::string::npos) << run.out;
  EXPECT_NE(run.out.find(" MiB."), std::string::npos) << run.out;
}

TEST(CompanyGenerate, RejectsSettingsOutOfBounds) {
  const Workplace place;
  const std::string file = place / "made.qbw";
  const ProgramRun run = RunProgram({"company", "generate", file, "--accounts", "3"});
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("43 to 10000 accounts"), std::string::npos) << run.err;
  EXPECT_FALSE(std::filesystem::exists(file));
}

}  // namespace
}  // namespace krnqb::cli
