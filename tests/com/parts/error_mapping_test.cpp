#include "com/values/error_mapping.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "com/values/run_time_errors.h"
#include "document_table.h"

namespace krnqb::com {
namespace {

struct Known {
  std::uint32_t result;
  std::int32_t number;
  const char* text;
};

const Known knownResults[]{
    {0x80004001U, 445, "Object doesn't support this action"},
    {0x80004002U, 430, "Class does not support Automation or does not support expected interface"},
    {0x80070005U, 70, "Permission denied"},
    {0x8007000EU, 7, "Out of memory"},
    {0x80070057U, 5, "Invalid procedure call or argument"},
    {0x800706BAU, 462, "The remote server machine does not exist or is unavailable"},
    {0x80020003U, 438, "Object doesn't support this property or method"},
    {0x80020004U, 448, "Named argument not found"},
    {0x80020005U, 13, "Type mismatch"},
    {0x80020006U, 438, "Object doesn't support this property or method"},
    {0x80020007U, 446, "Object doesn't support named arguments"},
    {0x80020008U, 458, "Variable uses an Automation type not supported"},
    {0x8002000AU, 6, "Overflow"},
    {0x8002000BU, 9, "Subscript out of range"},
    {0x8002000CU, 447, "Object doesn't support current locale setting"},
    {0x8002000DU, 10, "This array is fixed or temporarily locked"},
    {0x8002000EU, 450, "Wrong number of arguments or invalid property assignment"},
    {0x8002000FU, 449, "Argument not optional"},
    {0x80020011U, 451, "Object not a collection"},
    {0x80020012U, 11, "Division by zero"},
    {0x8002802FU, 453, "Specified DLL function not found"},
    {0x80028CA2U, 57, "Device I/O error"},
    {0x80029C4AU, 48, "Error in loading DLL"},
    {0x80030003U, 76, "Path not found"},
    {0x80030005U, 70, "Permission denied"},
    {0x80030050U, 58, "File already exists"},
    {0x80030070U, 61, "Disk full"},
    {0x80040154U, 429, "ActiveX component can't create object"},
    {0x800401F3U, 429, "ActiveX component can't create object"},
};

TEST(ErrorOf, KnowsAResultByItsRunTimeError) {
  for (const Known& known : knownResults) {
    SCOPED_TRACE(known.text);
    const Error error = ErrorOf(static_cast<HRESULT>(known.result));
    EXPECT_EQ(known.number, error.Number());
    EXPECT_EQ(known.text, error.Description());
    EXPECT_EQ(static_cast<HRESULT>(0x800A0000U + static_cast<std::uint32_t>(known.number)), ResultOf(error));
    EXPECT_EQ(known.number, ErrorOf(ResultOf(error)).Number());
    EXPECT_EQ(known.text, ErrorOf(ResultOf(error)).Description());
  }
}

TEST(ErrorOf, KeepsAResultThatDescribesItself) {
  for (const Known& known : knownResults) {
    const auto result = static_cast<HRESULT>(known.result);
    const Error error = ErrorOf(result, "its own words");
    EXPECT_EQ(result, error.Number());
    EXPECT_EQ("its own words", error.Description());
    EXPECT_EQ(result, ResultOf(error));
  }
}

TEST(ErrorOf, KeepsResultsWithoutARunTimeError) {
  for (const std::uint32_t bits : {0x80004005U, 0x80040408U, 0x80080005U, 0x80010108U, 0x80070020U}) {
    const auto result = static_cast<HRESULT>(bits);
    EXPECT_EQ(result, ErrorOf(result).Number());
    EXPECT_EQ(result, ResultOf(ErrorOf(result)));
    EXPECT_FALSE(ErrorOf(result).Description().empty());
  }
}

TEST(SystemError, IsItsCode) {
  const Error error = SystemError(ERROR_ACCESS_DENIED);
  EXPECT_EQ(E_ACCESSDENIED, error.Number());
  EXPECT_EQ(E_ACCESSDENIED, ResultOf(error));
  EXPECT_FALSE(error.Description().empty());
}

// The results that have a run-time error, among those of the system, automation, files and COM.
TEST(RunTimeErrorOf, KnowsTheResultsOfTheGuideForHosts) {
  std::map<std::uint32_t, std::pair<std::int32_t, std::string>> documented;
  for (const auto& row : tests::RowsBelow("host-guide.md", "### Results of the plan and of QuickBooks")) {
    ASSERT_EQ(4U, row.size());
    documented[static_cast<std::uint32_t>(std::stoul(row[0], nullptr, 16))] = {std::stoi(row[2]), row[3]};
  }
  std::map<std::uint32_t, std::pair<std::int32_t, std::string>> known;
  for (std::uint32_t result = 0x80000000U; result < 0x800B0000U; ++result) {
    const std::optional<std::int32_t> number = RunTimeErrorOf(static_cast<HRESULT>(result));
    if (number) known[result] = {*number, std::string(RunTimeErrorText(*number))};
  }
  EXPECT_EQ(documented, known);
}

}  // namespace
}  // namespace krnqb::com
