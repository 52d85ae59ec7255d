// XML elements across the boundary: elements of the system's document model, live in both directions.
#include <gtest/gtest.h>

#include "host/component.h"
#include "qbxml/request_catalogue.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

LateBound NewDocument(std::wstring_view text) {
  CLSID identifier{};
  Held<IDispatch> object;
  EXPECT_EQ(S_OK, CLSIDFromProgID(L"MSXML2.DOMDocument.6.0", &identifier));
  EXPECT_EQ(S_OK,
            CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.ReceiveAny()));
  LateBound document(object);
  document.Let(L"async", Value(false));
  EXPECT_EQ(-1, document.Call(L"loadXML", {Value(text)}).value.AsLong());
  return document;
}

LateBound ElementOf(const LateBound& document) {
  return LateBound(document.Read(L"documentElement").value.AsObject());
}

std::wstring XmlOf(const LateBound& element) {
  return element.Read(L"xml").value.AsText();
}

std::vector<std::pair<int, std::string>> AnswersWithAccounts() {
  auto answers = UsualAnswers();
  answers.emplace_back(1, AccountsAnswer(1, {"Sales", "Caf\u00e9 Sales"}));
  answers.emplace_back(4, AccountsAnswer(4, {"Rent", "Insurance", "Cleaning"}));
  return answers;
}

TEST(Elements, AccountListsAreElementsOfTheSystemsDocuments) {
  const Answering answers(1, AnswersWithAccounts());
  const LateBound exchange = NewLateBoundExchange();
  const LateBound income(exchange.Read(L"QBIncomeAccounts").value.AsObject());
  const LateBound expenses(exchange.Read(L"QBExpenseAccounts").value.AsObject());
  ASSERT_TRUE(income);
  ASSERT_TRUE(expenses);
  EXPECT_EQ(1, income.Read(L"nodeType").value.AsLong());
  EXPECT_EQ(L"QBXML", income.Read(L"nodeName").value.AsText());
  const LateBound names(income.Call(L"selectNodes", {L"//AccountRet[Sublevel = '0']/Name"}).value.AsObject());
  EXPECT_EQ(2, names.Read(L"length").value.AsLong());
  const LateBound second(names.Read(L"item", {Value(1)}).value.AsObject());
  EXPECT_EQ(L"Caf\u00e9 Sales", second.Read(L"text").value.AsText());
  const LateBound rent(expenses.Call(L"selectSingleNode", {L"//AccountRet[1]/Name"}).value.AsObject());
  EXPECT_EQ(L"Rent", rent.Read(L"text").value.AsText());
}

TEST(Elements, AreNothingWithoutAResponse) {
  const Variable refused(L"KRNQB_REFUSED_CALL", L"session");
  const Answering answers(1, AnswersWithAccounts());
  const LateBound exchange = NewLateBoundExchange();
  for (const wchar_t* member : {L"QBIncomeAccounts", L"QBExpenseAccounts", L"SelectedExpenses"}) {
    const Outcome read = exchange.Read(member);
    EXPECT_EQ(S_OK, read.result);
    EXPECT_EQ(VT_DISPATCH, read.value.Type());
    EXPECT_FALSE(read.value.AsObject());
  }
}

// A component with a plan whose expenses are selected.
struct Selecting {
  Answering answers{1, AnswersWithAccounts()};
  std::shared_ptr<PlanState> plan = std::make_shared<PlanState>("recordings\\bri.kpf");
  LateBound exchange = NewLateBoundExchange();

  Selecting() {
    exchange.Let(L"KRNProduct", Value(2));
    exchange.Set(L"KRNPlanData", Value(NewHostPlan(plan).Get()));
  }
  LateBound Selection() const { return LateBound(exchange.Read(L"SelectedExpenses").value.AsObject()); }
  // Returns the plan's tables after the accounts response is imported.
  std::string Read() const {
    const std::string answer = AccountsAnswer(4, {"Rent", "Insurance", "Cleaning"});
    return Utf8(exchange.Call(L"KRNDeserialize", {Value(Utf16(answer))}).value.AsText());
  }
};

TEST(Elements, TheSelectionIsBuiltOnceAndReturnedAgain) {
  const Selecting selecting;
  const LateBound selection = selecting.Selection();
  ASSERT_TRUE(selection);
  EXPECT_EQ(L"expenseAccounts", selection.Read(L"nodeName").value.AsText());
  const LateBound again = selecting.Selection();
  // The same element, not a copy: a change in one shows in the other.
  const LateBound account(selection.Call(L"selectSingleNode", {L"account"}).value.AsObject());
  ASSERT_EQ(S_OK, account.Call(L"setAttribute", {L"selected", L"False"}).result);
  EXPECT_EQ(XmlOf(selection), XmlOf(again));
  EXPECT_NE(std::wstring::npos, XmlOf(again).find(L"selected=\"False\""));
}

TEST(Elements, ChangesToTheSelectionInPlaceTakeEffect) {
  const Selecting selecting;
  const LateBound selection = selecting.Selection();
  const LateBound cleaning(
      selection.Call(L"selectSingleNode", {L"account[name = 'Cleaning']"}).value.AsObject());
  ASSERT_TRUE(cleaning);
  cleaning.Call(L"setAttribute", {L"selected", L"True"});
  EXPECT_NE(std::string::npos, selecting.Read().find("Cleaning"));
  cleaning.Call(L"setAttribute", {L"selected", L"False"});
  EXPECT_EQ(std::string::npos, selecting.Read().find("Cleaning"));
}

TEST(Elements, AHostsOwnElementBecomesTheSelection) {
  const Selecting selecting;
  const LateBound document = NewDocument(
      L"<expenseAccounts><account id=\"4-1\" selected=\"True\"/><account id=\"4-2\" selected=\"False\"/>"
      L"<account id=\"4-3\" selected=\"True\"/></expenseAccounts>");
  const LateBound own = ElementOf(document);
  ASSERT_EQ(S_OK, selecting.exchange.Set(L"SelectedExpenses", Value(own.Get())).result);
  const Held<IUnknown> given = selecting.exchange.Read(L"SelectedExpenses").value.AsObject().As<IUnknown>();
  EXPECT_EQ(Held<IDispatch>::Sharing(own.Get()).As<IUnknown>().Get(), given.Get());
  EXPECT_NE(std::string::npos, selecting.Read().find("Cleaning"));
  const LateBound third(own.Call(L"selectSingleNode", {L"account[3]"}).value.AsObject());
  third.Call(L"setAttribute", {L"selected", L"False"});
  EXPECT_EQ(std::string::npos, selecting.Read().find("Cleaning"));
}

TEST(Elements, AnObjectThatIsNotAnElementIsATypeMismatchAndChangesNothing) {
  const Selecting selecting;
  const LateBound document = NewDocument(L"<expenseAccounts/>");
  const LateBound own = ElementOf(document);
  selecting.exchange.Set(L"SelectedExpenses", Value(own.Get()));
  const auto object = NamedObject::Make();
  const Value others[] = {Value(object.Get()), Value(document.Get())};
  for (const Value& other : others) {
    const Outcome set = selecting.exchange.Set(L"SelectedExpenses", other);
    EXPECT_EQ(DISP_E_EXCEPTION, set.result);
    EXPECT_EQ(RunTimeError(13), set.exception.scode);
  }
  EXPECT_EQ(L"<expenseAccounts/>", XmlOf(selecting.Selection()).substr(0, 18));
}

TEST(Elements, NothingClearsTheSelectionAndTheNextReadRebuildsIt) {
  const Selecting selecting;
  const LateBound document = NewDocument(L"<expenseAccounts/>");
  selecting.exchange.Set(L"SelectedExpenses", Value(ElementOf(document).Get()));
  EXPECT_EQ(S_OK,
            selecting.exchange.Set(L"SelectedExpenses", Value(static_cast<IDispatch*>(nullptr))).result);
  EXPECT_NE(std::wstring::npos, XmlOf(selecting.Selection()).find(L"Cleaning"));
}

TEST(Elements, OtherProductsHaveNoSelection) {
  const Selecting selecting;
  selecting.exchange.Let(L"KRNProduct", Value(1));
  EXPECT_FALSE(selecting.Selection());
}

TEST(Elements, AnElementIsAcceptedAsAResponse) {
  const Selecting selecting;
  selecting.exchange.Let(L"KRNProduct", Value(1));
  selecting.exchange.Set(L"KRNPlanData",
                         Value(NewHostPlan(std::make_shared<PlanState>("recordings\\ald.kpf")).Get()));
  const std::string answer = AccountsAnswer(1, {"Brand New Income"});
  const LateBound element = ElementOf(NewDocument(Utf16(answer)));
  const Outcome byElement = selecting.exchange.Call(L"KRNDeserialize", {Value(element.Get())});
  const Outcome byText = selecting.exchange.Call(L"KRNDeserialize", {Value(Utf16(answer))});
  EXPECT_NE(std::wstring::npos, byText.value.AsText().find(L"Brand New Income"));
  EXPECT_EQ(byText.value.AsText(), byElement.value.AsText());
}

TEST(Elements, AnAnswerIsReadFromTheWholeDocumentOfAnInnerElement) {
  const Selecting selecting;
  selecting.exchange.Let(L"KRNProduct", Value(1));
  selecting.exchange.Set(L"KRNPlanData",
                         Value(NewHostPlan(std::make_shared<PlanState>("recordings\\ald.kpf")).Get()));
  const std::string answer = AccountsAnswer(1, {"Brand New Income"});
  const LateBound document = NewDocument(Utf16(answer));
  const std::wstring byText =
      selecting.exchange.Call(L"KRNDeserialize", {Value(Utf16(answer))}).value.AsText();
  EXPECT_NE(std::wstring::npos, byText.find(L"Brand New Income"));
  const LateBound name(document.Call(L"selectSingleNode", {L"//AccountRet/Name"}).value.AsObject());
  EXPECT_EQ(byText, selecting.exchange.Call(L"KRNDeserialize", {Value(name.Get())}).value.AsText());
  // A detached element is searched up to its topmost ancestor.
  const LateBound root = ElementOf(document);
  ASSERT_EQ(S_OK, document.Call(L"removeChild", {Value(root.Get())}).result);
  EXPECT_EQ(byText, selecting.exchange.Call(L"KRNDeserialize", {Value(name.Get())}).value.AsText());
}

TEST(Elements, ASelectionWithinALargerDocumentIsReadInItsPlace) {
  const Selecting selecting;
  const LateBound document = NewDocument(
      L"<page>\n<expenseAccounts><account id=\"4-3\" selected=\"True\"/></expenseAccounts>\n<!-- chosen -->"
      L"<expenseAccounts><account id=\"4-3\" selected=\"False\"/></expenseAccounts></page>");
  const LateBound second(document.Call(L"selectSingleNode", {L"//expenseAccounts[2]"}).value.AsObject());
  ASSERT_EQ(S_OK, selecting.exchange.Set(L"SelectedExpenses", Value(second.Get())).result);
  EXPECT_EQ(std::string::npos, selecting.Read().find("Cleaning"));
}

TEST(Elements, AnObjectsDefaultValueIsAcceptedAsText) {
  const LateBound exchange = NewLateBoundExchange();
  const auto holder = NamedObject::Make();
  holder->Add(L"", DISPATCH_PROPERTYGET,
              [](const HostCall& call) { return GiveText(call, L"<AccountQueryRs requestID=\"3\"/>"); });
  EXPECT_EQ(L"<tables>\r\n\r\n</tables>",
            exchange.Call(L"KRNDeserialize", {Value(holder.Get())}).value.AsText());
  const auto empty = NamedObject::Make();
  const Outcome none = exchange.Call(L"KRNDeserialize", {Value(empty.Get())});
  EXPECT_EQ(S_OK, none.result);
  EXPECT_EQ(VT_BSTR, none.value.Type());
  EXPECT_EQ(L"", none.value.AsText());
}

TEST(Elements, AnAccountListOfAnotherNumberChangesNothing) {
  const LateBound exchange = NewLateBoundExchange();
  EXPECT_EQ(L"<tables>\r\n\r\n</tables>",
            exchange.Call(L"KRNDeserialize", {L"<AccountQueryRs requestID=\"3\"/>"}).value.AsText());
  EXPECT_EQ(L"", exchange.Call(L"KRNDeserialize", {L"<Other/>"}).value.AsText());
  EXPECT_EQ(L"", exchange.Call(L"KRNDeserialize", {Value()}).value.AsText());
}

TEST(Elements, CompaniesAreNothingWithoutQuickBooks) {
  const LateBound exchange = NewLateBoundExchange();
  const Outcome companies = exchange.Read(L"QBCompanies");
  EXPECT_EQ(S_OK, companies.result);
  EXPECT_EQ(VT_DISPATCH, companies.value.Type());
  EXPECT_FALSE(companies.value.AsObject());
}

}  // namespace
}  // namespace krnqb::testing
