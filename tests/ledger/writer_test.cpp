#include "ledger/writer.h"

#include <sys/stat.h>

#include "files/operations.h"
#include "ledger/file.h"
#include "ledger/listing.h"
#include "ledger/schema.h"
#include "ledger/small_import.h"
#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::ledger {
namespace {

using tests::TemporaryFolder;

// Makes one step fail.
class FailingStep : public files::SystemFileOperations {
 public:
  enum class Step { Sync, Rename, SyncFolder, KeepPrevious };
  explicit FailingStep(Step step) : step_(step) {}

  std::error_code Sync(const files::FileDescriptor& file) override {
    return step_ == Step::Sync ? Failure() : SystemFileOperations::Sync(file);
  }
  std::error_code Rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    const bool fails = step_ == Step::Rename && !failed_;
    return fails ? Failure() : SystemFileOperations::Rename(from, to);
  }
  std::error_code SyncFolder(const std::filesystem::path& folder) override {
    return step_ == Step::SyncFolder ? Failure() : SystemFileOperations::SyncFolder(folder);
  }
  std::error_code KeepPrevious(const std::filesystem::path& file,
                               const std::filesystem::path& backup) override {
    return step_ == Step::KeepPrevious ? Failure() : SystemFileOperations::KeepPrevious(file, backup);
  }

 private:
  std::error_code Failure() {
    failed_ = true;
    return std::make_error_code(std::errc::no_space_on_device);
  }

  Step step_;
  bool failed_ = false;
};

TEST(LedgerWriting, KeepsTheFacts) {
  const TemporaryFolder folder;
  testing::WriteSmallLedger(folder / "small.kql");
  EXPECT_EQ(LedgerFile::Open(folder / "small.kql").Facts(), testing::SmallFacts());
}

TEST(LedgerWriting, KeepsAmountsExactlyAndInTheirOrder) {
  const TemporaryFolder folder;
  testing::WriteSmallLedger(folder / "small.kql");
  const LedgerFile ledger = LedgerFile::Open(folder / "small.kql");
  std::vector<double> amounts;
  ledger.ForEachBooking(1, [&](const LedgerBooking& booking, bool replaced) {
    amounts.push_back(booking.amount);
    EXPECT_FALSE(replaced);
  });
  EXPECT_EQ(amounts, (std::vector{0.1, 0.2}));
  EXPECT_EQ(ledger.SumOf(1), 0.1 + 0.2);
}

TEST(LedgerWriting, KeepsLinesWithTheirTransaction) {
  const TemporaryFolder folder;
  testing::WriteSmallLedger(folder / "small.kql");
  const LedgerFile ledger = LedgerFile::Open(folder / "small.kql");
  const std::vector<LedgerDocument> documents = ledger.DocumentsOf("A-1");
  ASSERT_EQ(documents.size(), 1U);
  EXPECT_EQ(documents[0].date, "2002-01-05");
  EXPECT_EQ(documents[0].party, "Orchard Lane Properties");
  const std::vector<LedgerLine> lines = ledger.LinesOf(documents[0]);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[1].accountName, "Rent:Barn");
  const auto bookings = ledger.BookingsOf(lines[1]);
  ASSERT_EQ(bookings.size(), 1U);
  EXPECT_EQ(bookings[0].first.text, "0.20");  // the line's own, stored once
  EXPECT_TRUE(ledger.DocumentsOf("A").empty());
  EXPECT_EQ(ledger.TransactionIds("A", 2), (std::vector<std::string>{"A-1", "A-2"}));
}

TEST(LedgerWriting, KeepsWhyAnAmountWasLeftOut) {
  const TemporaryFolder folder;
  testing::WriteSmallLedger(folder / "small.kql");
  const LedgerFile ledger = LedgerFile::Open(folder / "small.kql");
  const std::vector<LedgerOmission> omissions = ledger.OmissionsOf(ledger.Line(4));
  ASSERT_EQ(omissions.size(), 1U);
  EXPECT_EQ(omissions[0].reason, SkipReason::NoItem);
  EXPECT_EQ(omissions[0].kind, SkipKind::Lost);
  EXPECT_TRUE(ledger.OmissionsOf(ledger.Line(1)).empty());
}

TEST(LedgerWriting, FindsOneSumUnderNamesOfAnyCase) {
  const TemporaryFolder folder;
  testing::WriteSmallLedger(folder / "small.kql");
  const LedgerFile ledger = LedgerFile::Open(folder / "small.kql");
  std::vector<bool> replacements;
  ledger.ForEachBooking(2, [&](const LedgerBooking&, bool replaced) { replacements.push_back(replaced); });
  EXPECT_EQ(replacements, (std::vector<bool>{true, false}));
  EXPECT_EQ(ledger.SumOf(2), 100.0 / 3);
}

TEST(LedgerWriting, TakesTheLastTextOfACellThatIsWrittenTwice) {
  const TemporaryFolder folder;
  files::SystemFileOperations operations;
  {
    LedgerWriter writer(folder / "l.kql", {}, operations);
    const AmountSlot rent{.name = "Rent"};
    const AmountSlot tools{.name = "Tools"};
    const std::array first{CellTerm{.slot = rent}, CellTerm{.slot = tools}};
    const std::array second{CellTerm{.slot = tools}};
    writer.WriteCell({.table = "t", .block = "b", .row = "r", .column = 1, .text = "1", .terms = first});
    writer.WriteCell({.table = "t", .block = "b", .row = "r", .column = 1, .text = "2", .terms = second});
    writer.Finish({});
    writer.Place();
    writer.Keep();
  }
  const LedgerFile ledger = LedgerFile::Open(folder / "l.kql");
  ASSERT_EQ(ledger.Cells().size(), 1U);
  EXPECT_EQ(ledger.Cells()[0].text, "2");
  EXPECT_EQ(ledger.Cells()[0].terms, (std::vector<LedgerTerm>{{.slot = 2}}));
}

TEST(LedgerWriting, LeavesAFileForItsOwnerAloneAndNothingBesideIt) {
  const TemporaryFolder folder;
  testing::WriteSmallLedger(folder / "small.kql");
  testing::WriteSmallLedger(folder / "small.kql");
  struct stat status {};
  ASSERT_EQ(::stat((folder / "small.kql").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"small.kql"}));
}

TEST(LedgerWriting, LeavesNothingIfItIsNotFinished) {
  const TemporaryFolder folder;
  {
    files::SystemFileOperations operations;
    LedgerWriter writer(folder / "small.kql", {}, operations);
    testing::ReadSmallImport(writer);
    EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"small.kql.tmp"}));
  }
  EXPECT_TRUE(folder.FileNames().empty());
}

TEST(LedgerWriting, RestoresWhatWasThereUnlessItIsKept) {
  for (const bool earlier : {false, true}) {
    const TemporaryFolder folder;
    if (earlier) testing::WriteSmallLedger(folder / "l.kql");
    const std::string before = earlier ? tests::ReadText(folder / "l.kql") : std::string();
    {
      files::SystemFileOperations operations;
      LedgerWriter writer(folder / "l.kql", {}, operations);
      writer.Finish({});
      writer.Place();
      EXPECT_NE(tests::ReadText(folder / "l.kql"), before);
    }
    EXPECT_EQ(folder.FileNames(), earlier ? std::vector<std::string>{"l.kql"} : std::vector<std::string>{});
    if (earlier) {
      EXPECT_EQ(tests::ReadText(folder / "l.kql"), before);
    }
  }
}

TEST(LedgerWriting, KeepsTheEarlierLedgerIfAStepFails) {
  using Step = FailingStep::Step;
  for (const Step step : {Step::Sync, Step::KeepPrevious, Step::Rename, Step::SyncFolder}) {
    const TemporaryFolder folder;
    testing::WriteSmallLedger(folder / "l.kql");
    const std::string before = tests::ReadText(folder / "l.kql");
    {
      FailingStep operations(step);
      LedgerWriter writer(folder / "l.kql", {}, operations);
      writer.Finish({});
      const Error error = tests::ThrownError([&] { writer.Place(); });
      EXPECT_NE(error.Description().find("No space left on device"), std::string::npos)
          << error.Description();
    }
    EXPECT_EQ(tests::ReadText(folder / "l.kql"), before);
    EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"l.kql"}));
  }
}

TEST(LedgerWriting, EndsWhenItIsInterrupted) {
  const TemporaryFolder folder;
  files::SystemFileOperations operations;
  bool interrupted = false;
  LedgerWriter writer(
      folder / "l.kql", [&] { return interrupted; }, operations);
  interrupted = true;
  for (std::int64_t number = 1; number <= 1000; ++number) writer.ReadLine({.number = number});
  const Error error = tests::ThrownError([&] { writer.Finish({}); });
  EXPECT_EQ(error.Number(), error_number::unspecified);
  EXPECT_EQ(error.Description(), "interrupted");
}

TEST(LedgerWriting, ReportsAnEarlierFailureWhenItIsFinished) {
  const TemporaryFolder folder;
  files::SystemFileOperations operations;
  LedgerWriter writer(folder / "l.kql", {}, operations);
  writer.ReadLine({.number = 1});
  writer.ReadLine({.number = 1});
  writer.ReadLine({.number = 2});
  const Error error = tests::ThrownError([&] { writer.Finish({}); });
  EXPECT_EQ(error.Number(), error_number::internalError);
  EXPECT_NE(error.Description().find("l.kql.tmp failed: "), std::string::npos) << error.Description();
}

TEST(LedgerWriting, ReplacesOnlyALedgerOrAnEmptyFile) {
  const TemporaryFolder folder;
  tests::WriteText(folder / "notes", "notes that are longer than nothing");
  tests::WriteText(folder / "empty", "");
  testing::WriteSmallLedger(folder / "ledger");
  std::filesystem::create_directory(folder / "folder");
  EXPECT_FALSE(tests::ErrorOf([&] { RequireReplaceable(folder / "none"); }));
  EXPECT_FALSE(tests::ErrorOf([&] { RequireReplaceable(folder / "empty"); }));
  EXPECT_FALSE(tests::ErrorOf([&] { RequireReplaceable(folder / "ledger"); }));
  EXPECT_EQ(tests::NumberThrownBy([&] { RequireReplaceable(folder / "notes"); }), unusableFile);
  EXPECT_EQ(tests::NumberThrownBy([&] { RequireReplaceable(folder / "folder"); }), unusableFile);
  EXPECT_EQ(tests::NumberThrownBy([&] { RequireReplaceable("/dev/null"); }), unusableFile);
}

TEST(LedgerWriting, FollowsALinkToItsFile) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("real.kql", folder / "link.kql");
  testing::WriteSmallLedger(folder / "link.kql");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.kql"));
  EXPECT_EQ(LedgerFile::Open(folder / "real.kql").Facts(), testing::SmallFacts());
}

}  // namespace
}  // namespace krnqb::ledger
