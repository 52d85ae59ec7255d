#include "plan_file/tables.h"

#include <gtest/gtest.h>

#include "plan_file/file.h"
#include "plan_file/fixture.h"

namespace krnqb::plan_file {
namespace {

class PlanTablesTest : public testing::Test {
 protected:
  PlanTablesTest() {
    WriteText(folder / "garden.kpf", SmallPlanText());
    plan = PlanFile::Open(folder / "garden.kpf");
  }

  std::string Serialized(std::string_view id) { return plan->Data()->tables(id)->Serialize(); }
  void Load(std::string document) { plan->Data()->Deserialize(document); }

  TemporaryFolder folder;
  std::shared_ptr<PlanFile> plan;
};

TEST_F(PlanTablesTest, SerializeReturnsTheTableItem) {
  const std::string text = SmallPlanText();
  const std::size_t begin = text.find("<tableitem title=");
  const std::string_view end = "</tableitem>";
  std::string expected = text.substr(begin, text.find(end, begin) + end.size() - begin);
  for (std::size_t quote = expected.find('\''); quote != std::string::npos; quote = expected.find('\'')) {
    expected[quote] = '"';
  }
  EXPECT_EQ(Serialized(expenseTable), expected);
}

TEST_F(PlanTablesTest, SerializeReturnsTheLoadedBlocks) {
  const auto table = plan->Data()->tables(actualExpenseTable);
  Load(R"(<tableitem id="21000000000000000000000000000600"><tableblocks>new</tableblocks></tableitem>)");
  EXPECT_NE(table->Serialize().find("<tableblocks>new</tableblocks>"), std::string::npos)
      << table->Serialize();
}

TEST_F(PlanTablesTest, AMissingTableIsError9NamingIt) {
  const auto error = ErrorOf([&] { plan->Data()->tables("20000000000000000000000000000999"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Number(), error_number::subscriptOutOfRange);
  EXPECT_NE(error->Description().find("20000000000000000000000000000999"), std::string::npos);
}

TEST_F(PlanTablesTest, LoadingReplacesTheBlocksAndTheStampAndKeepsTheRest) {
  std::string document =
      "<tables>\r\n\r\n<tableitem "
      "id=\"20000000000000000000000000000600\">\r\n<lastsavedid>QB37257</lastsavedid>\r\n"
      "<tableblocks><block id=\"b\"><row><c>A &amp; B</c></row><!-- c "
      "--></block></tableblocks>\r\n</tableitem>\r\n"
      "</tables>";
  const std::string handedIn = document;
  plan->Data()->Deserialize(document);
  EXPECT_EQ(document, handedIn);
  EXPECT_TRUE(plan->Changed());
  EXPECT_EQ(Serialized(expenseTable),
            "<tableitem title=\"Expenses &amp; more\" id=\"20000000000000000000000000000600\">\n"
            "      <lastsavedid>QB37257</lastsavedid>\n"
            "      <notes>keep me</notes>\n"
            "      <tableblocks><block id=\"b\"><row><c>A &amp; B</c></row><!-- c --></block></tableblocks>\n"
            "    </tableitem>");
}

TEST_F(PlanTablesTest, TablesAreFoundAnywhereInTheDocument) {
  const std::string planned =
      R"(<tableitem id="20000000000000000000000000000600"><tableblocks>1</tableblocks></tableitem>)";
  const std::string actual =
      R"(<tableitem id="21000000000000000000000000000600"><tableblocks>2</tableblocks></tableitem>)";
  Load("<a><tables>" + planned + "</tables><tables>" + actual + "</tables></a>");
  EXPECT_EQ(plan->Table(expenseTable).Child("tableblocks").Text(), "1");
  EXPECT_EQ(plan->Table(actualExpenseTable).Child("tableblocks").Text(), "2");
}

TEST_F(PlanTablesTest, TheLastOfTwoRecordsOfOneTableIsKept) {
  Load(
      R"(<tables><tableitem id="21000000000000000000000000000600"><tableblocks>1</tableblocks></tableitem>)"
      R"(<tableitem id="21000000000000000000000000000600"><tableblocks>2</tableblocks></tableitem></tables>)");
  EXPECT_EQ(plan->Table(actualExpenseTable).Child("tableblocks").Text(), "2");
}

TEST_F(PlanTablesTest, LoadingASerializedTableChangesNothing) {
  const std::string before = Serialized(expenseTable);
  Load(before);
  EXPECT_EQ(Serialized(expenseTable), before);
}

TEST_F(PlanTablesTest, AnEmptyOrMalformedTextOrOneWithoutTablesChangesNothing) {
  const std::string before = Serialized(expenseTable) + Serialized(actualExpenseTable);
  for (const char* text :
       {"", "no XML", "<tables>", "<tables>\r\n\r\n</tables>",
        R"(<tableitem id="20000000000000000000000000000600"><tableblocks/></tableitem><tableitem/>)"}) {
    Load(text);
    EXPECT_EQ(Serialized(expenseTable) + Serialized(actualExpenseTable), before) << text;
    EXPECT_FALSE(plan->Changed()) << text;
  }
}

TEST_F(PlanTablesTest, ATextThatDoesNotParseIsReportedWithItsLine) {
  Load("<tables>\r\n</tables>");
  Load("");
  EXPECT_TRUE(plan->RefusedLoads().empty());
  Load("<tables>\n</table>");
  Load("<tables><tableitem id='20000000000000000000000000000600' d:x='1'/></tables>");
  ASSERT_EQ(plan->RefusedLoads().size(), 2U);
  EXPECT_TRUE(plan->RefusedLoads()[0].starts_with("line 2: ")) << plan->RefusedLoads()[0];
  EXPECT_TRUE(plan->RefusedLoads()[1].starts_with("line 1: ")) << plan->RefusedLoads()[1];
}

TEST_F(PlanTablesTest, AnotherPlanHasNoRefusedLoads) {
  Load("<tables>");
  WriteText(folder / "other.kpf", SmallPlanText());
  plan->OpenPlan((folder / "other.kpf").string());
  EXPECT_TRUE(plan->RefusedLoads().empty());
}

struct RefusedDocument {
  const char* name;
  const char* item;
  std::int32_t number;
  const char* named;
};

class RefusedLoad : public PlanTablesTest, public testing::WithParamInterface<RefusedDocument> {};

TEST_P(RefusedLoad, ChangesNoTableAtAll) {
  const std::string before = Serialized(expenseTable);
  const std::string good = R"(<tableitem id="20000000000000000000000000000600"><tableblocks/></tableitem>)";
  const auto error = ErrorOf([&] { Load("<tables>" + good + GetParam().item + "</tables>"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Number(), GetParam().number);
  EXPECT_NE(error->Description().find(GetParam().named), std::string::npos) << error->Description();
  EXPECT_EQ(Serialized(expenseTable), before);
  EXPECT_FALSE(plan->Changed());
}

INSTANTIATE_TEST_SUITE_P(
    PlanTables, RefusedLoad,
    testing::Values(RefusedDocument{"OfAnUnknownTable", "<tableitem id='2099'><tableblocks/></tableitem>", 9,
                                    "the plan has no table 2099"},
                    RefusedDocument{"WithoutAnId", "<tableitem><tableblocks/></tableitem>", 5, "no id"},
                    RefusedDocument{"WithoutBlocks", "<tableitem id='21000000000000000000000000000600'/>", 5,
                                    "21000000000000000000000000000600 has no tableblocks"}),
    [](const testing::TestParamInfo<RefusedDocument>& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace krnqb::plan_file
