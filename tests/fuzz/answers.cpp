#include <cmath>

#include "fakes/import_surroundings.h"
#include "fuzz/input.h"
#include "fuzz/xml_promises.h"
#include "import/amounts/expense_transactions.h"
#include "import/amounts/report_reading.h"
#include "import/amounts/sales_transactions.h"
#include "import/amounts/transaction_reading.h"
#include "import/lists/cost_of_sale.h"
#include "qbxml/response_element.h"
#include "support/number_text.h"
#include "xml/index.h"

// QuickBooks' answers: the first byte chooses the reader, the rest is the answer's text.

namespace krnqb::fuzz {
namespace {

using fakes::ImportSurroundings;

constexpr std::size_t mostIds = 16;
constexpr double largestWritten =
    1.79769e308;  // above it, 15 rounded digits may exceed the range of a double

// The ids in a document that a path in quotes can hold.
std::vector<std::string> IdsIn(const XmlElement& document) {
  std::vector<std::string> ids;
  for (const XmlElement& id : document.SelectAll("//ListID")) {
    if (ids.size() == mostIds) break;
    if (std::string text = id.Text(); text.find('"') == std::string::npos) ids.push_back(std::move(text));
  }
  return ids;
}

void RequireFinite(const std::optional<SubtotalCollection>& subtotals) {
  if (!subtotals) return;
  for (const cSubtotals& record : *subtotals) {
    for (std::int16_t slot = 1; slot <= cSubtotals::slotCount; ++slot) {
      const double amount = record.SubTotal(slot);
      Require(std::isfinite(amount), "every amount is finite", record.Description());
      const std::string text = GeneralNumberText(amount);
      Require(ConvertToDouble(text).has_value() || std::abs(amount) > largestWritten,
              "every amount is written as a number", text);
    }
  }
}

void RequireFinite(const ImportSurroundings& surroundings) {
  RequireFinite(surroundings.state.expenseSubtotals);
  RequireFinite(surroundings.state.incomeSubtotals);
  RequireFinite(surroundings.state.costSubtotals);
  RequireKnownErrors(surroundings.observer.notices);
}

void ReadAccountList(const std::string& text) {
  const XmlElement document = XmlElement::Parse(text);
  const AccountList list(document);
  fakes::RecordingObserver observer;
  const std::optional<SubtotalCollection> subtotals = TopLevelSubtotals(list, observer);
  TopLevelAccountName(list, "no such id", observer);
  if (!document) {
    Require(!subtotals, "a text that is no document has no accounts");
    return;
  }
  const XmlTextIndex index(document, "ListID");
  for (const std::string& id : IdsIn(document)) {
    Require(index.Find(id) == document.Select("//ListID[. = \"" + id + "\"]"),
            "the index finds what the path finds", id);
    const std::string name = TopLevelAccountName(list, id, observer);
    Require(TopLevelAccountName(AccountList(document), id, observer) == name, "a look-up has one result", id);
  }
  RequireKnownErrors(observer.notices);
}

void RequireMarker(const CostOfSale& sale) {
  const SalePosting posting = PostingOf(sale);
  if (std::holds_alternative<CostOfSale>(posting)) {
    Require(ReadCostOfGoodsMarker(CostOfGoodsMarker(sale)) == sale, "a cost of sale equals its marker",
            CostOfGoodsMarker(sale));
  }
  Require(PostingText(posting) == CostOfGoodsMarker(sale), "a posting is written as its marker");
}

void ReadItemList(const std::string& text) {
  const XmlElement document = XmlElement::Parse(text);
  const ItemList list(document);
  fakes::RecordingObserver observer;
  list.IncomePosting("no such id", observer);
  if (!document) return;
  for (const std::string& id : IdsIn(document)) {
    const SalePosting& posting = list.IncomePosting(id, observer);
    const ItemList other(document);
    Require(other.IncomePosting(id, observer) == posting, "a look-up has one result", id);
    Require(other.ExpenseAccount(id, observer) == list.ExpenseAccount(id, observer),
            "a look-up has one result", id);
    if (const auto* sale = std::get_if<CostOfSale>(&posting)) RequireMarker(*sale);
  }
  RequireKnownErrors(observer.notices);
}

// An inventory item, an item with one account and one with two.
std::string Items() {
  return fakes::InventoryItem("S-1", "I-1", "C-1", "2.50") + fakes::OneAccountItem("S-2", "I-2") +
         fakes::OneAccountItem("S-3", "E-1") + fakes::TwoAccountItem("S-4", "I-3", "E-3");
}

void ReadTransactions(const std::string& text, std::int32_t kind) {
  ImportSurroundings surroundings;
  surroundings.SetItems(Items());
  surroundings.state.billableExpenses->Add({.account = "E-1"}, "K-1,10.00");
  surroundings.quickBooks->answers[std::to_string(kind)] = text;
  const TransactionQuery query{.kind = kind,
                               .request = "<Rq requestID=\"" + std::to_string(kind) + "\"/>",
                               .month = 3,
                               .range = {"2002-03-01", "2002-03-31"}};
  if (kind < 20) {
    ReadExpenseTransactions(surroundings.context, query);
  } else {
    ReadSalesTransactions(surroundings.context, query);
  }
  RequireFinite(surroundings);
  const double sum = surroundings.SumOfAll();
  for (const auto* collection : {&surroundings.state.expenseSubtotals, &surroundings.state.incomeSubtotals,
                                 &surroundings.state.costSubtotals}) {
    for (const cSubtotals& record : **collection) {
      for (std::int16_t slot = 1; slot <= cSubtotals::slotCount; ++slot) {
        Require(slot == 3 || record.SubTotal(slot) == 0, "a month's answer changes that month",
                std::to_string(sum));
      }
    }
  }
}

std::optional<std::string> TextAt(const XmlElement& element, const std::string& path) {
  const XmlElement found = element.Select(path);
  return found ? std::optional(found.Text()) : std::nullopt;
}

void RequireField(const TransactionLine::Field& field, const XmlElement& line, const std::string& path) {
  const std::optional<std::string> read = field ? std::optional(std::string(*field)) : std::nullopt;
  Require(read == TextAt(line, path), "the event reader reads what the path selects", path);
}

// The event reader against paths in the tree.
void CompareLines(const std::string& text, const LineSelection& selection) {
  fakes::RecordingObserver observer;
  const TransactionLines read = ReadTransactionLines(text, selection, observer, {});
  const XmlElement document = XmlElement::Parse(text);
  Require(document || observer.Reported(NoticeKind::AnswerUnreadable, 0) || !observer.notices.empty(),
          "an unreadable answer is reported");
  RequireKnownErrors(observer.notices);
  if (!document) {
    Require(read.Count() == 0, "a text that is no document has no lines");
    return;
  }
  const XmlElement response = document.Select("//" + std::string(selection.responseName));
  std::vector<XmlElement> lines;
  if (response && selection.places == LinePlaces::Anywhere) {
    lines = document.SelectAll("//" + std::string(selection.lineName));
  } else if (response) {
    lines = response.SelectAll(
        "*/ExpenseLineRet | */ItemLineRet | */ItemGroupLineRet/ExpenseLineRet | "
        "*/ItemGroupLineRet/ItemLineRet");
  }
  Require(read.Count() == lines.size(), "every line is read once",
          std::to_string(read.Count()) + " of " + std::to_string(lines.size()));
  for (std::size_t index = 0; index < lines.size(); ++index) {
    const TransactionLine& line = read[index];
    const XmlElement& element = lines[index];
    Require(element.IsNamed(line.element), "a line has its element's name", line.element);
    RequireField(line.amount, element, "Amount");
    RequireField(line.quantity, element, "Quantity");
    RequireField(line.accountId, element, "AccountRef[1]/ListID");
    RequireField(line.anyAccountId, element, "AccountRef/ListID");
    RequireField(line.itemId, element, "ItemRef[1]/ListID");
    RequireField(line.anyItemId, element, "ItemRef/ListID");
    RequireField(line.customerId, element, "CustomerRef/ListID");
    RequireField(line.itemGroupId, element, "ItemGroupRef[1]/ListID");
    RequireField(line.parentItemGroupId, element, "../ItemGroupRef[1]/ListID");
    RequireField(line.parentCustomerId, element, "../CustomerRef/ListID");
    RequireField(line.grandparentCustomerId, element, "../../CustomerRef/ListID");
    Require(line.hasCustomer == static_cast<bool>(element.Select("CustomerRef")), "a customer is noticed");
  }
}

void ReadProfitAndLoss(const std::string& text) {
  ImportSurroundings surroundings;
  const XmlElement document = XmlElement::Parse(text);
  const auto error = ErrorOf([&] {
    ParseProfitAndLossReport(document, surroundings.state.expenseSubtotals, surroundings.observer,
                             {.operation = Operation::ParseProfitAndLossReport, .request = 310});
  });
  Require(document || error, "an unreadable report is an error");
  RequireFinite(surroundings);
}

void ReadBalanceSheets(const std::string& text) {
  ImportSurroundings surroundings;
  surroundings.quickBooks->answers["330"] = text;
  std::optional<SubtotalCollection> types = ImportSurroundings::Zeros({"Bank", "FixedAsset", "Equity"});
  ErrorOf([&] {
    ParseBalanceSheetByType(surroundings.context, 2,
                            "<Rq requestID=\"330\"><AccountTypeFilter>AccountTypeFilterValue"
                            "</AccountTypeFilter></Rq>",
                            "2002-12-31", *types, TypeProgress::Silent);
  });
  RequireFinite(types);
  RequireFinite(surroundings);
}

void ReadEnvelope(const std::string& text) {
  fakes::RecordingObserver observer;
  const XmlElement answer = AnswerElement(text, observer, {});
  const bool reported =
      !observer.notices.empty() && observer.notices.front().kind == NoticeKind::AnswerUnreadable;
  Require(static_cast<bool>(answer) != reported, "an unreadable answer is reported, and no other");
  RequireKnownErrors(observer.notices);
  if (answer) RequireRoundTrip(answer);
}

// The answers by which a session begins.
void OpenSession(const std::string& text) {
  ImportSurroundings surroundings;
  surroundings.sessionState.qbStartingMonth = 0;
  surroundings.quickBooks->answers["100"] = text;
  surroundings.quickBooks->answers["101"] = text;
  Session& session = surroundings.context.session;
  ErrorOf([&] {
    const bool open = session.EnsureSession();
    const std::int16_t month = surroundings.sessionState.qbStartingMonth;
    Require(month >= 0 && month <= 12, "the fiscal year begins in a month");
    Require(!open || month > 0, "an open session has the first month of the fiscal year");
  });
  ErrorOf([&] { session.QBCompany(); });
  RequireKnownErrors(surroundings.observer.notices);
}

void ReadNumber(const std::string& text) {
  const std::optional<double> number = ConvertToDouble(text);
  Require(number.has_value() == !ErrorOf([&] { RequireDouble(text); }), "a number is required or refused");
  double leading = 0;
  const auto overflow = ErrorOf([&] { leading = LeadingNumber(text); });
  Require(std::isfinite(leading), "a leading number is finite");
  for (const double value : {number.value_or(0), leading}) {
    Require(std::isfinite(value), "a number is finite", text);
    if (std::abs(value) > largestWritten) continue;
    for (const std::string& written : {GeneralNumberText(value), PlainNumberText(value)}) {
      const std::optional<double> again = ConvertToDouble(written);
      Require(again && std::abs(*again - value) <= std::abs(value) * 1e-14 + 1e-300,
              "a number is written with 15 digits", written);
    }
    Require(PlainNumberText(value).find('E') == std::string::npos, "a plain number has no exponent", text);
  }
}

void ReadMarkers(Input& input) {
  const CostOfSale sale{input.Text(), input.Text(), input.Text()};
  ErrorOf([&] { RequireMarker(sale); });
  const std::string marker = input.Text();
  ErrorOf([&] {
    Require(IsCostOfGoodsMarker(marker) || ReadCostOfGoodsMarker(marker) == ReadCostOfGoodsMarker(marker),
            "a marker has one meaning");
    ReadCostOfGoodsMarker(marker);
  });
}

void Run(Input input) {
  const std::size_t reader = input.Below(16);
  if (reader == 15) return ReadMarkers(input);
  const std::string text = input.Rest();
  const LineSelection bills{"BillQueryRs", LinePlaces::DirectChildren, {}};
  const LineSelection invoices{"InvoiceQueryRs", LinePlaces::Anywhere, "InvoiceLineRet"};
  switch (reader) {
    case 0:
      return ReadAccountList(text);
    case 1:
      return ReadItemList(text);
    case 2:
      return ReadTransactions(text, 10);
    case 3:
      return ReadTransactions(text, 11);
    case 4:
      return ReadTransactions(text, 12);
    case 5:
      return ReadTransactions(text, 20);
    case 6:
      return ReadTransactions(text, 21);
    case 7:
      return CompareLines(text, bills);
    case 8:
      return CompareLines(text, invoices);
    case 9:
      return ReadProfitAndLoss(text);
    case 10:
      return ReadBalanceSheets(text);
    case 11:
      return ReadEnvelope(text);
    case 12:
      return OpenSession(text);
    default:
      return ReadNumber(text);
  }
}

}  // namespace
}  // namespace krnqb::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krnqb::fuzz::Run({data, size});
  return 0;
}
