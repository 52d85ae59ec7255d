#include "host/component.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "qbxml/request_catalogue.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

const std::map<std::string, QBKRNproduct> products{
    {"ald", QBKRN_ALD}, {"bri", QBKRN_BRI}, {"cor", QBKRN_COR}};
const std::map<std::string, QBKRN_BalancesImport> choices{{"none", BalImport_None},
                                                          {"planned", BalImport_Planned},
                                                          {"actual", BalImport_Actual},
                                                          {"all", BalImport_All}};

std::wstring WriteRecording(int major, const std::vector<std::pair<int, std::string>>& answers) {
  const std::string name = "answers.jsonl";
  std::ofstream file(name, std::ios::binary);
  file << R"({"exchange":1,"company":"C:\\Books\\test.qbw","major":)" << major << R"(,"minor":0})" << '\n';
  for (const auto& [request, answer] : answers) {
    file << nlohmann::json{{"request", BuildRequest(request, "", "")}, {"response", answer}}.dump() << '\n';
  }
  return Utf16(name);
}

// The host may modify the elements of the selection in place: they are the component's own.
void SelectAll(const LateBound& selection) {
  const LateBound children(selection.Read(L"childNodes").value.AsObject());
  const long count = children.Read(L"length").value.AsLong();
  ASSERT_GT(count, 0);
  for (int index = 0; index < count; ++index) {
    const LateBound child(children.Read(L"item", {Value(index)}).value.AsObject());
    if (child.Read(L"nodeType").value.AsLong() != 1) continue;
    ASSERT_HRESULT_SUCCEEDED(child.Call(L"setAttribute", {Value(L"selected"), Value(L"True")}).result);
  }
}

}  // namespace

Exchange NewExchange() {
  Exchange exchange;
  EXPECT_HRESULT_SUCCEEDED(CoCreateInstance(CLSID_QBDataExchange, nullptr, CLSCTX_INPROC_SERVER,
                                            __uuidof(_QBDataExchange), exchange.ReceiveAny()));
  return exchange;
}

LateBound NewLateBoundExchange() {
  CLSID identifier{};
  EXPECT_HRESULT_SUCCEEDED(CLSIDFromProgID(L"KRN6_QB2002.QBDataExchange", &identifier));
  Held<IDispatch> exchange;
  EXPECT_HRESULT_SUCCEEDED(
      CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, exchange.ReceiveAny()));
  return LateBound(exchange);
}

Variable::Variable(const wchar_t* name, std::wstring_view value) : name_(name) {
  std::wstring present(32767, L'\0');
  const DWORD length = GetEnvironmentVariableW(name, present.data(), static_cast<DWORD>(present.size()));
  wasThere_ = length != 0;
  before_ = present.substr(0, length);
  SetEnvironmentVariableW(name, std::wstring(value).c_str());
}

Variable::~Variable() {
  SetEnvironmentVariableW(name_.c_str(), wasThere_ ? before_.c_str() : nullptr);
}

Answering::Answering(int major, std::vector<std::pair<int, std::string>> answers)
    : variable_(L"KRNQB_RECORDING", WriteRecording(major, answers)) {}

std::string AccountsAnswer(int request, const std::vector<std::string>& records) {
  std::string answer = fmt::format("<QBXML><QBXMLMsgsRs><AccountQueryRs requestID=\"{}\">", request);
  int id = 0;
  for (const std::string& name : records) {
    answer +=
        fmt::format("<AccountRet><ListID>{}-{}</ListID><Name>{}</Name><Sublevel>0</Sublevel></AccountRet>",
                    request, ++id, name);
  }
  return answer + "</AccountQueryRs></QBXMLMsgsRs></QBXML>";
}

std::vector<std::pair<int, std::string>> UsualAnswers() {
  return {
      {100,
       "<QBXML><HostRet><SupportedQBXMLVersion>1.0</SupportedQBXMLVersion>"
       "<SupportedQBXMLVersion>1.1</SupportedQBXMLVersion></HostRet></QBXML>"},
      {101, "<QBXML><CompanyRet><FirstMonthFiscalYear>April</FirstMonthFiscalYear></CompanyRet></QBXML>"}};
}

std::string RecordedImport::Cells() const {
  return FileText("recordings\\" + Name() + ".cells");
}

std::vector<std::string> RecordedImport::Events() const {
  return LinesOf(FileText("recordings\\" + Name() + ".events"));
}

std::vector<RecordedImport> RecordedImports() {
  std::vector<RecordedImport> imports;
  for (const char* version : {"1.1", "2.0"}) {
    for (const char* product : {"ald", "bri", "cor"}) {
      for (const char* balances : {"none", "planned", "actual", "all"}) {
        imports.push_back({version, product, balances});
      }
    }
  }
  return imports;
}

void Configure(const Exchange& exchange, const RecordedImport& import, IDispatch* plan) {
  exchange->put_QBCompany(Text(L"C:\\Books\\nursery.qbw").Get());
  exchange->putref_KRNPlanData(Value(plan).Raw());
  exchange->put_KRNProduct(products.at(import.product));
  exchange->put_IncludeExpenseAccounts(VARIANT_TRUE);
  exchange->put_IncludeIncomeAccounts(VARIANT_TRUE);
  exchange->put_IncludePastPerformance(VARIANT_TRUE);
  exchange->put_BalancesImport(choices.at(import.balances));
  if (import.balances != "none") {
    exchange->put_GrowthRateIncome(10);
    exchange->put_GrowthRateCOGS(5);
    exchange->put_GrowthRateExpenses(3);
  }
  exchange->put_KRNStartingYear(2003);
  exchange->put_KRNStartingMonth(1);
  if (import.product != "bri") return;
  Held<IDispatch> selection;
  ASSERT_HRESULT_SUCCEEDED(exchange->get_SelectedExpenses(selection.Receive()));
  ASSERT_TRUE(selection);
  SelectAll(LateBound(selection));
}

void Configure(const LateBound& exchange, const RecordedImport& import, IDispatch* plan) {
  EXPECT_HRESULT_SUCCEEDED(exchange.Let(L"QBCompany", L"C:\\Books\\nursery.qbw").result);
  EXPECT_HRESULT_SUCCEEDED(exchange.Set(L"KRNPlanData", Value(plan)).result);
  EXPECT_HRESULT_SUCCEEDED(exchange.Let(L"KRNProduct", Value(products.at(import.product))).result);
  for (const wchar_t* option :
       {L"IncludeExpenseAccounts", L"IncludeIncomeAccounts", L"IncludePastPerformance"}) {
    EXPECT_HRESULT_SUCCEEDED(exchange.Let(option, Value(true)).result);
  }
  EXPECT_HRESULT_SUCCEEDED(exchange.Let(L"BalancesImport", Value(choices.at(import.balances))).result);
  if (import.balances != "none") {
    EXPECT_HRESULT_SUCCEEDED(exchange.Let(L"GrowthRateIncome", Value(10)).result);
    EXPECT_HRESULT_SUCCEEDED(exchange.Let(L"GrowthRateCOGS", L"5").result);
    EXPECT_HRESULT_SUCCEEDED(exchange.Let(L"GrowthRateExpenses", Value(3.0)).result);
  }
  EXPECT_HRESULT_SUCCEEDED(exchange.Let(L"KRNStartingYear", Value(2003)).result);
  EXPECT_HRESULT_SUCCEEDED(exchange.Let(L"KRNStartingMonth", Value(1)).result);
  if (import.product == "bri") SelectAll(LateBound(exchange.Read(L"SelectedExpenses").value.AsObject()));
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string FileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace krnqb::testing
