#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/recording_observer.h"
#include "import/amounts/transaction_reading.h"
#include "qbxml/response_element.h"

// Reading an answer in one pass returns what the paths select in the parsed document, for unusual documents
// too.

namespace krnqb {
namespace {

// Lines selected by paths.

using OwnField = std::optional<std::string>;

OwnField FirstText(const XmlElement& from, const std::string& path) {
  const auto selected = from.SelectAll(path);
  return selected.empty() ? std::nullopt : OwnField(selected.front().Text());
}

std::string Shown(const OwnField& field) {
  return field ? "'" + *field + "'" : "-";
}

std::string LineByPaths(const XmlElement& line) {
  std::string shown = line.Name();
  for (const char* path :
       {"./Amount", "./Quantity", "./AccountRef[1]/ListID", "./ItemRef[1]/ListID", "./AccountRef/ListID",
        "./ItemRef/ListID", "./ItemGroupRef[1]/ListID", "../ItemGroupRef[1]/ListID", "./CustomerRef/ListID",
        "../CustomerRef/ListID", "../../CustomerRef/ListID"}) {
    shown += " " + Shown(FirstText(line, path));
  }
  return shown + (line.SelectAll("./CustomerRef").empty() ? "" : " customer");
}

std::vector<std::string> LinesByPaths(const std::string& text, const LineSelection& selection) {
  std::vector<std::string> shown;
  const XmlElement root = XmlElement::Parse(text);
  if (!root) return shown;
  const auto responses = root.SelectAll("//" + std::string(selection.responseName));
  if (responses.empty()) return shown;
  if (selection.places == LinePlaces::Anywhere) {
    for (const XmlElement& line : responses.front().SelectAll("//" + std::string(selection.lineName))) {
      shown.push_back(LineByPaths(line));
    }
    return shown;
  }
  for (const XmlElement& transaction : responses.front().Children()) {
    for (const XmlElement& line : transaction.SelectAll("./ExpenseLineRet|./ItemLineRet")) {
      shown.push_back(LineByPaths(line));
    }
  }
  return shown;
}

// Lines read in one pass.

std::string Shown(const TransactionLine::Field& field) {
  return field ? Shown(OwnField(std::string(*field))) : "-";
}

std::string ShownLine(const TransactionLine& line) {
  std::string shown(line.element);
  for (const TransactionLine::Field& field :
       {line.amount, line.quantity, line.accountId, line.itemId, line.anyAccountId, line.anyItemId,
        line.itemGroupId, line.parentItemGroupId, line.customerId, line.parentCustomerId,
        line.grandparentCustomerId}) {
    shown += " " + Shown(field);
  }
  return shown + (line.hasCustomer ? " customer" : "");
}

std::vector<std::string> LinesRead(const std::string& text, const LineSelection& selection) {
  std::vector<std::string> shown;
  fakes::RecordingObserver observer;
  const auto read = ReadTransactionLines(Variant(text), selection, observer, Place{});
  for (const TransactionLine& line : read) {
    const bool isSkipped = selection.places == LinePlaces::DirectChildren && line.insideItemGroup;
    if (!isSkipped) shown.push_back(ShownLine(line));
  }
  return shown;
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

constexpr LineSelection billLines{
    .responseName = "BillQueryRs", .places = LinePlaces::DirectChildren, .lineName = {}};
constexpr LineSelection invoiceLines{
    .responseName = "InvoiceQueryRs", .places = LinePlaces::Anywhere, .lineName = "InvoiceLineRet"};

void ExpectTheSame(const std::string& text) {
  for (const LineSelection& selection : {billLines, invoiceLines}) {
    ASSERT_EQ(Joined(LinesRead(text, selection)), Joined(LinesByPaths(text, selection))) << text;
  }
}

// Unusual documents from a fixed random sequence.

class OddDocuments {
 public:
  /// Elements have fewer than `width` children.
  OddDocuments(unsigned seed, std::size_t width) : numbers_(seed), bound_(width) {}

  std::string Next() {
    const std::string content = OneOf({"BillQueryRs", "InvoiceQueryRs"});
    return "<" + content + ">" + Elements(0) + "</" + content + ">";
  }
  std::string NextBelowARoot() { return "<QBXML>" + Elements(0) + Next() + Elements(0) + "</QBXML>"; }

 private:
  std::string OneOf(std::initializer_list<const char*> texts) { return texts.begin()[Below(texts.size())]; }
  std::size_t Below(std::size_t end) { return numbers_() % end; }

  std::string Name(int depth) {
    if (depth >= 2) {
      return OneOf({"Amount", "Quantity", "AccountRef", "ItemRef", "ItemGroupRef", "CustomerRef", "ListID",
                    "ListID", "ListID", "InvoiceLineRet", "ExpenseLineRet", "ItemLineRet"});
    }
    return OneOf({"BillRet", "InvoiceRet", "InvoiceLineGroupRet", "ItemGroupLineRet", "ExpenseLineRet",
                  "ItemLineRet", "InvoiceLineRet", "InvoiceLineRet", "CustomerRef", "ItemGroupRef",
                  "BillQueryRs", "InvoiceQueryRs", "TxnID"});
  }
  static bool IsValue(const std::string& name) {
    return name == "Amount" || name == "Quantity" || name == "ListID" || name == "TxnID";
  }
  std::string Text() {
    return OneOf({"", "", "1", "75.00", " 2\n", "&#49;&amp;", "<![CDATA[3<]]>", "<!-- 4 -->", "<?note 5?>",
                  "\xC3\xA9", "6<!--x-->7", "\r\n"});
  }
  std::string Elements(int depth) {
    std::string text = Text();
    for (std::size_t count = Below(bound_); count > 0; --count) {
      const std::string name = Name(depth);
      const std::string content = IsValue(name) ? Text() + OneOf({"", "", "<b>8<i/>9</b>"}) + Text()
                                  : depth >= 5  ? Text()
                                                : Elements(depth + 1);
      text += content.empty() && Below(2) == 0 ? "<" + name + "/>"
                                               : "<" + name + ">" + content + "</" + name + ">";
      text += Text();
    }
    return text;
  }

  std::mt19937 numbers_;
  std::size_t bound_;
};

TEST(ReadingTransactionsByPaths, ReturnsTheSameLinesForUnusualDocuments) {
  std::size_t lines = 0;
  for (std::size_t width = 2; width <= 6; ++width) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
      OddDocuments documents(seed, width);
      const std::string text = documents.Next();
      ExpectTheSame(text);
      ExpectTheSame(documents.NextBelowARoot());
      if (HasFatalFailure()) return;
      lines += LinesByPaths(text, invoiceLines).size();
    }
  }
  EXPECT_GT(lines, 1000U) << "too few lines for a meaningful comparison";
}

TEST(ReadingTransactionsByPaths, ReturnsTheSameLinesForTruncatedDocuments) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    const std::string whole = OddDocuments(seed, 4).NextBelowARoot();
    for (std::size_t cut = 1; cut < 6; ++cut) ExpectTheSame(whole.substr(0, whole.size() * cut / 6));
    if (HasFatalFailure()) return;
  }
}

TEST(ReadingTransactionsByPaths, ReturnsTheSameLinesForChosenDocuments) {
  const char* texts[] = {
      // A reference without an id before one with an id.
      "<BillQueryRs><BillRet><ExpenseLineRet><AccountRef/><AccountRef><ListID>E-1</ListID></AccountRef>"
      "</ExpenseLineRet></BillRet></BillQueryRs>",
      // Two references, each with ids.
      "<InvoiceQueryRs><InvoiceRet><ItemGroupRef/><ItemGroupRef><ListID>G-1</ListID></ItemGroupRef>"
      "<InvoiceLineRet><ItemRef><ListID/><ListID>1</ListID></ItemRef><ItemRef><ListID>2</ListID></ItemRef>"
      "<ItemGroupRef><ListID>G-2</ListID></ItemGroupRef><ItemGroupRef/></InvoiceLineRet></InvoiceRet>"
      "</InvoiceQueryRs>",
      // A reference whose id is in a namespace.
      "<BillQueryRs><BillRet><ExpenseLineRet><AccountRef><ListID xmlns=\"urn:x\">1</ListID></AccountRef>"
      "<AccountRef xmlns=\"urn:x\"><ListID xmlns=\"\">2</ListID></AccountRef><AccountRef><ListID>3</ListID>"
      "</AccountRef></ExpenseLineRet></BillRet></BillQueryRs>",
      // A nested line does not inherit the outer line's reference.
      "<InvoiceQueryRs><InvoiceRet><CustomerRef><ListID>K-1</ListID></CustomerRef><InvoiceLineRet>"
      "<CustomerRef><ListID>K-2</ListID></CustomerRef><InvoiceLineRet><Amount>1</Amount></InvoiceLineRet>"
      "</InvoiceLineRet></InvoiceRet></InvoiceQueryRs>",
      // A line that is a transaction, and one that contains the response.
      "<BillQueryRs><ItemLineRet><ItemLineRet><Amount>1</Amount></ItemLineRet></ItemLineRet></BillQueryRs>",
      "<ExpenseLineRet><BillQueryRs><A><ExpenseLineRet/></A></BillQueryRs></ExpenseLineRet>",
      // A response inside a response.
      "<BillQueryRs><BillQueryRs><ExpenseLineRet><Amount>1</Amount></ExpenseLineRet></BillQueryRs>"
      "</BillQueryRs>",
      // A reference inside a reference of the same name.
      "<InvoiceQueryRs><InvoiceLineRet><ItemRef><ItemRef><ListID>1</ListID></ItemRef></ItemRef>"
      "</InvoiceLineRet></InvoiceQueryRs>",
      // Attributes, instructions and comments around the document element.
      "<?xml version=\"1.0\" ?>\n<!-- a --><?b c?><BillQueryRs a=\"1\"><BillRet b='2'><ExpenseLineRet "
      "c=\"&lt;\">"
      "<Amount d=\"e\">1</Amount></ExpenseLineRet></BillRet></BillQueryRs>\n<!-- f -->\n"};
  for (const char* text : texts) ExpectTheSame(text);
}

TEST(ReadingTransactionsByPaths, ReturnsTheSameLinesForSimilarNames) {
  ExpectTheSame("<BillQueryRs><BillRet><expenseLineRet/></BillRet></BillQueryRs>");
  ExpectTheSame("<BillQueryRs><BillRet><a:ExpenseLineRet xmlns:a=\"urn:a\"/></BillRet></BillQueryRs>");
  ExpectTheSame("<BillQueryRs xmlns=\"urn:a\"><BillRet><ExpenseLineRet/></BillRet></BillQueryRs>");
}

TEST(ReadingTransactionsByPaths, ReturnsTheSameLinesInsideAField) {
  ExpectTheSame(
      "<InvoiceQueryRs><InvoiceRet><Amount><InvoiceLineRet><Amount>1</Amount></InvoiceLineRet></Amount>"
      "</InvoiceRet></InvoiceQueryRs>");
}

TEST(ReadingTransactionsByPaths, ReportsTheSameNoticesAsAnswerElement) {
  const char* texts[] = {
      "<BillQueryRs statusCode=\"500\" statusSeverity=\"Warn\" "
      "statusMessage=\"Some\"><BillRet/></BillQueryRs>",
      "<QBXML><QBXMLMsgsRs><BillQueryRs statusCode=\"0\"/><ARs statusCode=\"3120\" statusMessage=\"&lt;\"/>"
      "</QBXMLMsgsRs></QBXML>",
      "<QBXML><QBXMLMsgsRs><BillQueryRs statusCode=\"1\"/></QBXMLMsgsRs></QBXML>",
      "<QBXML><QBXMLMsgsRs statusCode=\"7\"><BillQueryRs/></QBXMLMsgsRs></QBXML>",
      "<QBXML><BillQueryRs statusCode=\"1000\"/></QBXML>",
      "<QBXML><QBXMLMsgsRs><BillQueryRs statusCode=\"3000\"></QBXML>",
      "<QBXML><QBXMLMsgsRs><BillQueryRs statusCode=\"no\"/></QBXMLMsgsRs></QBXML>",
      ""};
  const Place place{.operation = Operation::ReadExpenseTransactions, .request = 10};
  for (const char* text : texts) {
    fakes::RecordingObserver expected;
    fakes::RecordingObserver actual;
    AnswerElement(Variant(text), expected, place);
    ReadTransactionLines(
        Variant(text), {.responseName = "BillQueryRs", .places = LinePlaces::DirectChildren, .lineName = {}},
        actual, place);
    ASSERT_EQ(actual.notices.size(), expected.notices.size()) << text;
    for (std::size_t i = 0; i < expected.notices.size(); ++i) {
      EXPECT_EQ(actual.notices[i].kind, expected.notices[i].kind) << text;
      EXPECT_EQ(actual.notices[i].number, expected.notices[i].number) << text;
      EXPECT_EQ(actual.notices[i].severity, expected.notices[i].severity) << text;
      EXPECT_EQ(actual.notices[i].description, expected.notices[i].description) << text;
    }
  }
}

}  // namespace
}  // namespace krnqb
