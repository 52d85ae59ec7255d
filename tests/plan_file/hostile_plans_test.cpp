#include <gtest/gtest.h>

#include <fmt/format.h>

#include "limited_child.h"
#include "plan_file/changes.h"
#include "plan_file/fixture.h"
#include "plan_file/views/table_view.h"

namespace krnqb::plan_file {
namespace {

using tests::StaysWithinLimits;

std::string Repeated(std::string_view piece, std::size_t times) {
  std::string text;
  for (std::size_t time = 0; time < times; ++time) text += piece;
  return text;
}

std::string PlanWith(std::string_view tables) {
  return "<plan>\n<tables>\n" + std::string(tables) + "</tables>\n</plan>\n";
}

class HostilePlan : public testing::Test {
 protected:
  std::shared_ptr<PlanFile> Open(std::string_view text) {
    WriteText(folder / "plan.kpf", text);
    return PlanFile::Open(folder / "plan.kpf");
  }
  std::string FaultOf(std::string_view text) {
    const auto error = ErrorOf([&] { Open(text); });
    return error ? error->Description() : std::string();
  }

  TemporaryFolder folder;
};

TEST_F(HostilePlan, WithNestedElementsIsRefusedWithTheLine) {
  const std::string text =
      PlanWith("<tableitem id=\"1\"><tableblocks><block><row><c>\n" + Repeated("<c>", 100'000) +
               Repeated("</c>", 100'000) + "</c></row></block></tableblocks></tableitem>\n");
  EXPECT_TRUE(StaysWithinLimits(text.size(), [&] {
    return FaultOf(text).find(
               "plan.kpf: line 4: not well-formed XML (elements are nested more than 1,000 deep)") !=
           std::string::npos;
  }));
}

TEST_F(HostilePlan, WithATableInsideATableIsRefusedWithTheLine) {
  const std::string fault =
      FaultOf(PlanWith("<tableitem id=\"1\"><tableblocks>\n<tableitem id=\"2\"><tableblocks/></tableitem>"
                       "</tableblocks></tableitem>\n<tableitem id=\"2\"><tableblocks/></tableitem>"));
  EXPECT_NE(fault.find("line 4: the table 1 contains another table"), std::string::npos) << fault;
}

TEST_F(HostilePlan, KeepsElementsInNamespacesAndTheyAreNoTables) {
  const std::string foreign =
      "<tableitem xmlns=\"urn:x\" id=\"1\"><tableblocks/></tableitem>\n<x:tableitem xmlns:x=\"urn:x\"/>\n";
  const auto plan = Open("<plan>\n<tables xmlns=\"urn:x\"/>" +
                         PlanWith(foreign + "<tableitem id=\"1\"><tableblocks/></tableitem>").substr(6));
  EXPECT_EQ(plan->TableIds(), std::vector<std::string>{"1"});
  std::string load = "<tables><tableitem id=\"1\"><tableblocks>new</tableblocks></tableitem></tables>";
  plan->Data()->Deserialize(load);
  plan->Save();
  const std::string saved = ReadText(folder / "plan.kpf");
  EXPECT_NE(saved.find(foreign + "<tableitem id=\"1\"><tableblocks>new</tableblocks></tableitem>"),
            std::string::npos)
      << saved;
  EXPECT_NE(saved.find("<tables xmlns=\"urn:x\"/>"), std::string::npos) << saved;
}

TEST_F(HostilePlan, InANamespaceIsRefused) {
  const std::string fault = FaultOf("<plan xmlns=\"urn:x\"><tables/></plan>");
  EXPECT_NE(fault.find("line 1: the root element \"plan\" is in a namespace"), std::string::npos) << fault;
}

TEST_F(HostilePlan, WithRepeatedXmlIdentifiersIsLoadedAndSaved) {
  const std::string rows = "<row xml:id=\"a\"><c>1</c></row><row xml:id=\"a\"><c>2</c></row>";
  const auto plan = Open(
      PlanWith("<tableitem id=\"1\"><tableblocks><block>" + rows + "</block></tableblocks></tableitem>"));
  std::string load = "<tables>" + plan->Data()->tables("1")->Serialize() + "</tables>";
  load.replace(load.find("<c>2</c>"), 8, "<c>3</c>");
  plan->Data()->Deserialize(load);
  EXPECT_TRUE(plan->RefusedLoads().empty());
  EXPECT_NE(plan->Data()->tables("1")->Serialize().find("<row xml:id=\"a\"><c>3</c></row>"),
            std::string::npos);
}

TEST_F(HostilePlan, WithManyTablesIsReadLoadedAndComparedInTime) {
  std::string tables;
  for (int index = 0; index < 15'000; ++index) {
    tables += "<tableitem id=\"2000000000000000000000000000" + std::to_string(100'000 + index) +
              "\"><tableblocks/></tableitem>\n";
  }
  const std::string text = PlanWith(tables);
  EXPECT_TRUE(StaysWithinLimits(text.size(), [&] {
    const auto plan = Open(text);
    const PlanContent before = ReadPlanContent(*plan);
    std::string load = "<tables>" + tables + "</tables>";
    plan->Data()->Deserialize(load);
    return CompareTables(before, ReadPlanContent(*plan)).size() == 15'000;
  }));
}

TEST_F(HostilePlan, LoadsTheLastOfSeveralTablesWithOneId) {
  const auto plan = Open(PlanWith("<tableitem id=\"1\"><tableblocks/></tableitem>\n"));
  std::string load =
      "<tables><tableitem id=\"1\"><lastsavedid>A</lastsavedid><tableblocks>a</tableblocks></tableitem>"
      "<tableitem id=\"1\"><tableblocks>b</tableblocks></tableitem></tables>";
  plan->Data()->Deserialize(load);
  const std::string table = plan->Data()->tables("1")->Serialize();
  EXPECT_NE(table.find("<tableblocks>b</tableblocks>"), std::string::npos) << table;
  EXPECT_NE(table.find("<lastsavedid>A</lastsavedid>"), std::string::npos) << table;
}

TEST_F(HostilePlan, LoadsNestedTablesInTime) {
  const auto plan = Open(PlanWith("<tableitem id=\"1\"><tableblocks/></tableitem>\n"));
  std::string load = Repeated("<tableitem id=\"1\"><tableblocks>", 450) + std::string(1'000'000, 'x') +
                     Repeated("</tableblocks></tableitem>", 450);
  EXPECT_TRUE(StaysWithinLimits(load.size(), [&] {
    plan->Data()->Deserialize(load);
    return plan->RefusedLoads().empty() && plan->Data()->tables("1")->Serialize().size() < 1'000'100;
  }));
}

TEST_F(HostilePlan, WithAnEndlessRowNameIsComparedInTime) {
  const std::string name(300'000, 'x');
  const std::string formulas = Repeated("<c>=A1</c>", 30'000);
  const auto text = [&](std::string_view cells) {
    return PlanWith(
        fmt::format("<tableitem id=\"1\"><tableblocks><block id=\"b\"><row><c>{0}</c>{1}</row></block>"
                    "</tableblocks></tableitem>",
                    name, cells));
  };
  EXPECT_TRUE(StaysWithinLimits(text(formulas).size(), [&] {
    const PlanContent before = ReadPlanContent(*Open(text(formulas)));
    const PlanContent after = ReadPlanContent(*Open(text(Repeated("<c>*null*</c>", 30'000))));
    const std::vector<TableChange> changes = CompareTables(before, after);
    return changes.size() == 1 && changes[0].formulasCleared == 30'000;
  }));
}

TEST_F(HostilePlan, WithAnEndlessIdIsRefusedWithTheLine) {
  const std::string id(1001, 'x');
  EXPECT_NE(FaultOf(PlanWith("<tableitem id=\"" + id + "\"/>"))
                .find("line 3: the id of a table is longer than 1,000 bytes"),
            std::string::npos);
  EXPECT_NE(FaultOf(PlanWith("<tableitem id=\"1\"><tableblocks>\n<block id=\"" + id +
                             "\"/></tableblocks></tableitem>"))
                .find("line 4: the id of a block is longer than 1,000 bytes"),
            std::string::npos);
  EXPECT_EQ(FaultOf(PlanWith("<tableitem id=\"" + id.substr(1) + "\"/>")), "");
}

}  // namespace
}  // namespace krnqb::plan_file
