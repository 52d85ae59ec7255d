#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "build_paths.h"
#include "company/file.h"
#include "qbxml/request_catalogue.h"
#include "sample_company/generator.h"
#include "temporary_folder.h"
#include "xml/events.h"
#include "xml/parser.h"

// The event reader finds in a text what the tree has, and the same fault.

namespace krnqb {
namespace {

using tests::TemporaryFolder;

// Those that QuickBooks' answers have.
constexpr std::array attributeNames = {"requestID", "statusCode", "statusSeverity", "statusMessage",
                                       "rowNumber", "rowType",    "colID",          "value"};

// What both readers see of an element.
struct SeenElement {
  std::size_t depth = 0;  // 1 for the document element
  std::string name;       // empty in a namespace
  std::array<std::optional<std::string>, attributeNames.size()> attributes;
  std::string text;  // with that of the elements inside

  bool operator==(const SeenElement&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const SeenElement& element) {
  return stream << element.depth << " <" << element.name << "> " << element.text;
}

class Collecting final : public XmlEventHandler {
 public:
  void StartElement(const XmlEventName& name, const XmlEventAttributes& attributes) override {
    open_.push_back(elements.size());
    SeenElement& element = elements.emplace_back();
    element.depth = open_.size();
    element.name = name.Text();
    for (std::size_t i = 0; i < attributeNames.size(); ++i) {
      element.attributes.at(i) = attributes.Find(attributeNames.at(i));
    }
    begins_.push_back(text_.size());
  }
  void Text(std::string_view piece) override { text_ += piece; }
  void EndElement() override {
    elements.at(open_.back()).text = text_.substr(begins_.back());
    open_.pop_back();
    begins_.pop_back();
  }

  std::vector<SeenElement> elements;

 private:
  std::vector<std::size_t> open_;
  std::vector<std::size_t> begins_;
  std::string text_;
};

void CollectTree(const XmlElement& element, std::size_t depth, std::vector<SeenElement>& elements) {
  const std::string name = element.Name();
  SeenElement& seen = elements.emplace_back();
  seen.depth = depth;
  seen.name = element.IsNamed(name) ? name : "";
  seen.text = element.Text();
  for (std::size_t i = 0; i < attributeNames.size(); ++i) {
    seen.attributes.at(i) = element.Attribute(attributeNames.at(i));
  }
  for (XmlElement child = element.FirstChild(); child; child = child.NextSibling()) {
    CollectTree(child, depth + 1, elements);
  }
}

// Returns how many elements both readers found, 0 if they found the same fault.
std::size_t ExpectTheSame(const std::string& text, const std::string& origin) {
  Collecting events;
  const std::optional<XmlFault> fault = ParseXmlEvents(text, events);
  const XmlParseResult tree = ParseXmlText(text);
  EXPECT_EQ(fault.has_value(), tree.fault.has_value()) << origin;
  if (fault || tree.fault) {
    if (fault && tree.fault) {
      EXPECT_EQ(fault->line, tree.fault->line) << origin << ": " << fault->message;
      EXPECT_EQ(fault->message, tree.fault->message) << origin;
    }
    return 0;
  }
  std::vector<SeenElement> expected;
  CollectTree(tree.element, 1, expected);
  EXPECT_EQ(events.elements, expected) << origin;
  return expected.size();
}

std::string ContentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(EventReader, FindsWhatTheTreeHasInEveryInputOfTheFuzzers) {
  std::size_t documents = 0;
  std::size_t faults = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(tests::FuzzCorpusFolder())) {
    if (!entry.is_regular_file()) continue;
    const std::string content = ContentOf(entry.path());
    // Many inputs have a document after a few bytes that choose what is done with it.
    for (std::string_view text : {std::string_view(content), std::string_view(content).substr(std::min(
                                                                 content.find('<'), content.size()))}) {
      ++(ExpectTheSame(std::string(text), entry.path().filename().string()) > 0 ? documents : faults);
    }
  }
  EXPECT_GT(documents, 100U);
  EXPECT_GT(faults, 100U);
}

TEST(EventReader, FindsWhatTheTreeHasInEveryTruncatedAnswer) {
  const std::string answer =
      "\xEF\xBB\xBF<?xml version=\"1.0\" ?>\n<QBXML>\r\n<a:QBXMLMsgsRs xmlns:a='urn:a' value='&lt;'>"
      "<BillQueryRs statusCode='0'>1&amp;<![CDATA[2]]>\xC3\xA9&#233;<!-- 3 --><?i 4?></BillQueryRs>"
      "</a:QBXMLMsgsRs></QBXML>\n<!-- end -->";
  std::size_t whole = 0;
  for (std::size_t length = 0; length <= answer.size(); ++length) {
    if (ExpectTheSame(answer.substr(0, length), std::to_string(length) + " bytes") > 0) ++whole;
  }
  EXPECT_GE(whole, 2U);
}

TEST(EventReader, FindsWhatTheTreeHasInAnswersOfGeneratedCompanies) {
  const TemporaryFolder folder;
  std::size_t elements = 0;
  for (const std::uint64_t seed : {1U, 2U, 3U}) {
    sample_company::GeneratorSettings settings;
    settings.seed = seed;
    settings.accounts = 60;
    settings.items = 30;
    settings.customers = 20;
    settings.transactions = 300;
    settings.firstYear = settings.lastYear = 2002;
    settings.processorVersion = "2.0";
    const auto path = folder / std::to_string(seed);
    sample_company::GenerateCompany(path, settings);
    const auto company = company::CompanyFile::Open(path, company::FileAccess::ReadOnly);
    for (const std::int32_t number :
         {request_number::incomeAccounts, request_number::costAccounts, request_number::expenseAccounts,
          request_number::bills, request_number::checks, request_number::creditCardCharges,
          request_number::invoices, request_number::salesReceipts, request_number::items,
          request_number::host, request_number::company, request_number::incomeByMonth,
          request_number::expenseByMonth, request_number::costByMonth}) {
      const std::string request = BuildRequest(number, "2002-01-01", "2002-12-31");
      elements += ExpectTheSame(company.Answer(request), "request " + std::to_string(number));
    }
  }
  EXPECT_GT(elements, 50'000U);
}

}  // namespace
}  // namespace krnqb
