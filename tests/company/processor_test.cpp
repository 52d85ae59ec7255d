#include "company/processor.h"

#include "company/records/errors.h"
#include "company/testing.h"

namespace krnqb::company {
namespace {

using testing::Request;
using tests::ThrownError;

class CompanyProcessors : public testing::CompanyTest {
 protected:
  CompanyProcessors() { processor->OpenConnection("an.application", "An application"); }

  std::string CompanyPath() { return (folder / "company.qbw").string(); }

  std::unique_ptr<RequestProcessor> processor = EmbeddedProcessors()->Create();
};

TEST_F(CompanyProcessors, AnswerInASession) {
  const CompanyFile company = NewCompany("1.1");
  const std::string ticket = processor->BeginSession(CompanyPath(), 2);
  EXPECT_FALSE(ticket.empty());
  EXPECT_EQ(processor->GetCurrentCompanyFileName(ticket), CompanyPath());
  const std::string request = Request("1.0", "<CompanyQueryRq requestID=\"101\"/>");
  EXPECT_EQ(processor->ProcessRequest(ticket, request), company.Answer(request));
}

TEST_F(CompanyProcessors, AnswerTheSameInTheMemoryOfAnEarlierAnswer) {
  const CompanyFile company = NewCompany("1.1");
  const std::string ticket = processor->BeginSession(CompanyPath(), 2);
  const std::string request = Request("1.0", "<CompanyQueryRq requestID=\"101\"/>");
  constexpr std::size_t size = 100'000;
  processor->UseAgain(std::string(size, 'x'));
  const std::string answer = processor->ProcessRequest(ticket, request);
  EXPECT_EQ(answer, company.Answer(request));
  EXPECT_GE(answer.capacity(), size);
}

TEST_F(CompanyProcessors, ReportTheAbsolutePath) {
  NewCompany("1.1");
  const std::string relative = std::filesystem::relative(folder / "company.qbw").string();
  const std::string ticket = processor->BeginSession(relative, 2);
  const std::filesystem::path path = processor->GetCurrentCompanyFileName(ticket);
  EXPECT_TRUE(path.is_absolute());
  EXPECT_TRUE(std::filesystem::equivalent(path, folder / "company.qbw"));
}

TEST_F(CompanyProcessors, HaveTheVersionOfTheCompanyFile) {
  struct Case {
    std::string_view version;
    std::int16_t major, minor;
  };
  const std::vector<Case> cases = {{"1.0", 1, 0}, {"1.1", 1, 1}, {"2.0", 2, 0}};
  for (const auto& [version, major, minor] : cases) {
    const std::filesystem::path file = folder / (std::string(version) + ".qbw");
    CompanyFile::Create(file, "a", 1, version);
    const auto other = EmbeddedProcessors()->Create();
    other->OpenConnection("a", "b");
    other->BeginSession(file.string(), 2);
    EXPECT_EQ(other->MajorVersion(), major);
    EXPECT_EQ(other->MinorVersion(), minor);
  }
}

TEST_F(CompanyProcessors, NeedACompanyFile) {
  const Error error = ThrownError([&] { processor->BeginSession("", 2); });
  EXPECT_EQ(error.Number(), company_error::noCompanyOpen);
  EXPECT_EQ(error.Number(), -2147220458);
}

TEST_F(CompanyProcessors, RefuseAMissingCompany) {
  const Error error = ThrownError([&] { processor->BeginSession(CompanyPath(), 2); });
  EXPECT_EQ(error.Number(), -2147220472);
  EXPECT_EQ(error.Description(), "There is no company file " + CompanyPath() + ".");
  EXPECT_EQ(processor->GetCurrentCompanyFileName(""), "");
}

TEST_F(CompanyProcessors, CanBeginASessionAfterAFailedOne) {
  EXPECT_EQ(ThrownError([&] { processor->BeginSession("", 2); }).Number(), company_error::noCompanyOpen);
  NewCompany("1.1");
  EXPECT_EQ(processor->GetCurrentCompanyFileName(processor->BeginSession(CompanyPath(), 2)), CompanyPath());
}

TEST_F(CompanyProcessors, RefuseOperationsOutOfOrder) {
  NewCompany("1.1");
  const std::string request = Request("1.0", "<CompanyQueryRq/>");
  const auto unconnected = EmbeddedProcessors()->Create();
  EXPECT_EQ(ThrownError([&] { unconnected->BeginSession(CompanyPath(), 2); }).Number(),
            company_error::unexpected);
  EXPECT_EQ(ThrownError([&] { processor->ProcessRequest("", request); }).Description(),
            "No session is open.");
  EXPECT_EQ(ThrownError([&] { processor->MajorVersion(); }).Number(), company_error::unexpected);
  EXPECT_EQ(ThrownError([&] { processor->MinorVersion(); }).Number(), company_error::unexpected);

  const std::string ticket = processor->BeginSession(CompanyPath(), 2);
  EXPECT_EQ(ThrownError([&] { processor->BeginSession(CompanyPath(), 2); }).Description(),
            "A session is already open.");
  const Error error = ThrownError([&] { processor->ProcessRequest(ticket + "x", request); });
  EXPECT_EQ(error.Number(), -2147220478);
  EXPECT_EQ(error.Description(), "The ticket does not belong to the open session.");
  EXPECT_EQ(ThrownError([&] { processor->GetCurrentCompanyFileName("x"); }).Number(),
            company_error::unexpected);
}

TEST_F(CompanyProcessors, RefuseARequestThatCannotBeParsed) {
  NewCompany("1.1");
  const std::string ticket = processor->BeginSession(CompanyPath(), 2);
  EXPECT_EQ(ThrownError([&] { processor->ProcessRequest(ticket, "<QBXML/>"); }).Number(), -2147220480);
}

TEST_F(CompanyProcessors, CloseTheCompanyAtTheEndOfTheSession) {
  CompanyFile company = NewCompany("1.1");
  processor->BeginSession(CompanyPath(), 2);
  processor.reset();
  company.Load("a.xml", testing::Accounts(testing::Account("a", "Income")));
  EXPECT_EQ(company.Info().records.size(), 2U);
}

}  // namespace
}  // namespace krnqb::company
