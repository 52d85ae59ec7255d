#include "cli/exchange/shown_version.h"

#include <gtest/gtest.h>

#include "fakes/request_processor.h"
#include "qbxml/request_catalogue.h"

namespace krnqb::cli {
namespace {

struct Case {
  std::int16_t major;
  std::int16_t minor;
  std::string listed;  // the qbXML versions in the answer about the program
  std::int16_t shownMajor;
  std::int16_t shownMinor;
};

void PrintTo(const Case& value, std::ostream* out) {
  *out << value.major << '.' << value.minor << " with " << value.listed;
}

class ShownVersions : public testing::TestWithParam<Case> {};

TEST_P(ShownVersions, DecideBetweenTransactionsAndReports) {
  const auto quickBooks = std::make_shared<fakes::FakeQuickBooks>();
  quickBooks->majorVersion = GetParam().major;
  quickBooks->minorVersion = GetParam().minor;
  quickBooks->answers["100"] = "<QBXML><QBXMLMsgsRs><HostQueryRs requestID=\"100\"><HostRet>" +
                               GetParam().listed + "</HostRet></HostQueryRs></QBXMLMsgsRs></QBXML>";
  const auto facts = std::make_shared<SessionFacts>();
  const auto processor = ProcessorsWithShownVersion(std::make_shared<fakes::FakeProcessorFactory>(
                                                        quickBooks, std::make_shared<fakes::Journal>()),
                                                    facts)
                             ->Create();
  processor->OpenConnection("id", "name");
  const std::string ticket = processor->BeginSession("", 2);
  processor->GetCurrentCompanyFileName(ticket);
  EXPECT_EQ(facts->companyPath, quickBooks->company);
  EXPECT_EQ(facts->majorVersion, 0);
  processor->ProcessRequest(ticket, BuildRequest(request_number::host, {}, {}));
  processor->ProcessRequest(ticket, BuildRequest(request_number::items, {}, {}));
  EXPECT_EQ(processor->MajorVersion(), GetParam().shownMajor);
  EXPECT_EQ(processor->MinorVersion(), GetParam().shownMinor);
  EXPECT_EQ(facts->majorVersion, GetParam().shownMajor);
  EXPECT_EQ(quickBooks->requests.size(), 2U);  // none was added
}

constexpr auto early =
    "<SupportedQBXMLVersion>1.0</SupportedQBXMLVersion>"
    "<SupportedQBXMLVersion>1.1</SupportedQBXMLVersion>";
constexpr auto later =
    "<SupportedQBXMLVersion>1.1</SupportedQBXMLVersion>"
    "<SupportedQBXMLVersion>2.0</SupportedQBXMLVersion>";
constexpr auto similar =
    "<SupportedQBXMLVersion>12.0</SupportedQBXMLVersion><MajorVersion>2.0</MajorVersion>";

INSTANTIATE_TEST_SUITE_P(Processors, ShownVersions,
                         testing::Values(Case{1, 1, later, 1, 1}, Case{2, 1, early, 2, 1},
                                         Case{6, 0, later, 2, 0}, Case{6, 0, early, 1, 1},
                                         Case{6, 0, similar, 1, 1}, Case{0, 0, later, 2, 0},
                                         Case{3, 2, "", 1, 1}));

}  // namespace
}  // namespace krnqb::cli
