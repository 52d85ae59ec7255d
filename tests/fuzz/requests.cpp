#include "company/records/errors.h"
#include "company/records/versions.h"
#include "fuzz/companies.h"
#include "fuzz/input.h"

// Requests to a company. The first byte chooses the envelope that the input gets, or none: then it is a whole
// request document. The second chooses the processor's version.

namespace krnqb::fuzz {
namespace {

using company::Database;

std::string Document(std::size_t envelope, const std::string& text) {
  if (envelope == 0) return text;
  return EnvelopeHead(company::qbxmlVersions[envelope - 1]) + "\r\n" + text + "\r\n" + EnvelopeTail();
}

const company::CompanyFile& SmallCompany() {
  static const EmptyCompany empty;
  static const company::CompanyFile loaded = [] {
    company::CompanyFile::Open(empty.File(), company::FileAccess::ReadWrite)
        .Load("small company", smallCompany);
    return company::CompanyFile::Open(empty.File(), company::FileAccess::ReadOnly);
  }();
  return loaded;
}

void Run(Input input) {
  const company::CompanyFile& company = SmallCompany();
  const std::size_t envelope = input.Below(company::qbxmlVersions.size() + 1);
  const std::string_view processor = company::qbxmlVersions[input.Below(company::qbxmlVersions.size())];
  const std::string document = Document(envelope, input.Rest());

  std::size_t requests = 0;
  const auto refusalByVersion =
      ErrorOf([&] { requests = company::ParseRequests(document, processor).size(); });
  if (refusalByVersion) {
    Require(refusalByVersion->Number() == company::company_error::cannotParse,
            "only a request that cannot be parsed is refused", refusalByVersion->Description());
  }
  std::string answer;
  const auto refusal = ErrorOf([&] { answer = company.Answer(document); });
  Require(refusalByVersion || !refusal, "a later processor understands earlier requests", document);
  if (refusal) {
    Require(refusal->Number() == company::company_error::cannotParse,
            "only a request that cannot be parsed is refused", refusal->Description());
    return;
  }
  if (refusalByVersion) requests = company::ParseRequests(document, "2.0").size();
  RequireAnswer(answer, requests);
  Require(company.Answer(document) == answer, "a request has one answer", answer);
}

}  // namespace
}  // namespace krnqb::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krnqb::fuzz::Run({data, size});
  return 0;
}
