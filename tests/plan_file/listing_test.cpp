#include "plan_file/listing.h"

#include <gtest/gtest.h>

#include "plan_file/fixture.h"

namespace krnqb::plan_file {
namespace {

struct AsciiCase {
  const char* text;
  const char* ascii;
};

TEST(PlanListing, WritesTextsInPrintableAscii) {
  for (const AsciiCase& expected : std::vector<AsciiCase>{{"", ""},
                                                          {"Rent 12.5%", "Rent 12.5%"},
                                                          {"a\nb\rc\td\\e", R"(a\nb\rc\td\\e)"},
                                                          {"Caf\u00E9 \u00B7", R"(Caf\u00e9 \u00b7)"},
                                                          {"\u20AC", "\\u20ac"},
                                                          {"\U0001F331", R"(\ud83c\udf31)"},
                                                          {"\x7F", "\\u007f"},
                                                          {"\xE9 \xC3", R"(\ufffd \ufffd)"}}) {
    EXPECT_EQ(AsciiText(expected.text), expected.ascii);
  }
}

TEST(PlanListing, HasOneLinePerCellInPlanOrder) {
  const TemporaryFolder folder;
  WriteText(folder / "garden.kpf", SmallPlanText());
  EXPECT_EQ(CellListing(*PlanFile::Open(folder / "garden.kpf")),
            "20000000000000000000000000000600\tdb_income_range_cat3\t0\t0\tRent\n"
            "20000000000000000000000000000600\tdb_income_range_cat3\t0\t1\t0\n"
            "20000000000000000000000000000600\tdb_income_range_cat3\t1\t0\tR&D\n"
            "20000000000000000000000000000600\tdb_income_range_cat3\t1\t1\t=SUM(B5:B5)\n"
            "21000000000000000000000000000600\tdb_income_range_cat3_actual\t0\t0\tRent\n"
            "21000000000000000000000000000600\tdb_income_range_cat3_actual\t0\t1\t0\n");
}

TEST(PlanListing, KeepsACellsBlanksAndLineEnds) {
  EXPECT_EQ(CellListing(PlanContent{{"1", {{"b", "", {{" x \n"}, {}, {""}}}}}}),
            "1\tb\t0\t0\t x \\n\n1\tb\t2\t0\t\n");
}

TEST(PlanListing, OfAPlanWithoutBlocksIsEmpty) {
  const TemporaryFolder folder;
  WriteText(folder / "a.kpf", "<plan><tables><tableitem id='1'/></tables></plan>");
  EXPECT_EQ(CellListing(*PlanFile::Open(folder / "a.kpf")), "");
}

}  // namespace
}  // namespace krnqb::plan_file
