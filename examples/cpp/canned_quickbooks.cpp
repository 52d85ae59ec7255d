#include "canned_quickbooks.h"

#include <krnqb/error.h>

#include <array>
#include <string>
#include <string_view>

namespace {

struct CannedAnswer {
  std::string_view requestId;  ///< as written in the request
  std::string_view answer;
};

constexpr std::array answers = {
    CannedAnswer{R"(requestID="100")", R"(<?xml version="1.0" ?>
<QBXML><QBXMLMsgsRs>
<HostQueryRs requestID="100" statusCode="0" statusSeverity="Info" statusMessage="Status OK">
<HostRet><ProductName>Garden Shop Books</ProductName><MajorVersion>11</MajorVersion><MinorVersion>0</MinorVersion>
<SupportedQBXMLVersion>1.0</SupportedQBXMLVersion><SupportedQBXMLVersion>1.1</SupportedQBXMLVersion></HostRet>
</HostQueryRs></QBXMLMsgsRs></QBXML>
)"},
    CannedAnswer{R"(requestID="101")", R"(<?xml version="1.0" ?>
<QBXML><QBXMLMsgsRs>
<CompanyQueryRs requestID="101" statusCode="0" statusSeverity="Info" statusMessage="Status OK">
<CompanyRet><CompanyName>Garden Shop</CompanyName><FirstMonthFiscalYear>April</FirstMonthFiscalYear></CompanyRet>
</CompanyQueryRs></QBXMLMsgsRs></QBXML>
)"},
    CannedAnswer{R"(requestID="1")", R"(<?xml version="1.0" ?>
<QBXML><QBXMLMsgsRs>
<AccountQueryRs requestID="1" statusCode="0" statusSeverity="Info" statusMessage="Status OK">
<AccountRet><ListID>10000-1</ListID><Name>Plants</Name><Sublevel>0</Sublevel></AccountRet>
<AccountRet><ListID>20000-1</ListID><Name>Tools</Name><Sublevel>0</Sublevel></AccountRet>
</AccountQueryRs></QBXMLMsgsRs></QBXML>
)"},
    CannedAnswer{R"(requestID="2")", R"(<?xml version="1.0" ?>
<QBXML><QBXMLMsgsRs>
<AccountQueryRs requestID="2" statusCode="0" statusSeverity="Info" statusMessage="Status OK">
<AccountRet><ListID>30000-1</ListID><Name>Cost of Goods Sold</Name><Sublevel>0</Sublevel></AccountRet>
</AccountQueryRs></QBXMLMsgsRs></QBXML>
)"},
    CannedAnswer{R"(requestID="4")", R"(<?xml version="1.0" ?>
<QBXML><QBXMLMsgsRs>
<AccountQueryRs requestID="4" statusCode="0" statusSeverity="Info" statusMessage="Status OK">
<AccountRet><ListID>40000-1</ListID><Name>Rent</Name><Sublevel>0</Sublevel></AccountRet>
<AccountRet><ListID>50000-1</ListID><Name>Utilities</Name><Sublevel>0</Sublevel></AccountRet>
<AccountRet><ListID>60000-1</ListID><Name>Water</Name><ParentRef><ListID>50000-1</ListID></ParentRef>
<Sublevel>1</Sublevel></AccountRet>
<AccountRet><ListID>70000-1</ListID><Name>Meals &amp; Entertainment</Name><Sublevel>0</Sublevel></AccountRet>
</AccountQueryRs></QBXMLMsgsRs></QBXML>
)"},
};

// The number with which QuickBooks refuses a session while no company is open.
constexpr std::int32_t companyNotOpen = -2147220458;

class CannedProcessor : public krnqb::RequestProcessor {
 public:
  explicit CannedProcessor(bool companyOpen) : companyOpen_(companyOpen) {}

  std::string ProcessRequest(std::string_view /*ticket*/, std::string_view request) override {
    for (const CannedAnswer& canned : answers) {
      if (request.find(canned.requestId) != std::string_view::npos) return std::string(canned.answer);
    }
    return "<?xml version=\"1.0\" ?>\n<QBXML><QBXMLMsgsRs /></QBXML>\n";
  }

  void OpenConnection(std::string_view /*applicationIdentifier*/,
                      std::string_view /*applicationName*/) override {}
  std::string BeginSession(std::string_view /*companyFile*/, std::int32_t /*fileMode*/) override {
    if (!companyOpen_) throw krnqb::Error(companyNotOpen, "no company is open");
    return "ticket";
  }
  std::string GetCurrentCompanyFileName(std::string_view ticket) override {
    return ticket.empty() ? "" : "garden-shop.qbw";
  }
  std::int16_t MajorVersion() override { return 1; }
  std::int16_t MinorVersion() override { return 1; }

 private:
  bool companyOpen_;
};

}  // namespace

std::unique_ptr<krnqb::RequestProcessor> CannedQuickBooks::Create() {
  return std::make_unique<CannedProcessor>(companyOpen_);
}
