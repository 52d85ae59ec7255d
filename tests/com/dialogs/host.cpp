// usage: krnqb_dialog_host import|export|company|plan|other|about|message
//
// A host with its own window that has the library show a dialog, then prints the outcome line by line. At the
// event KRNQB_HOLD_AT an import waits until a file "release" exists.
#include <ole2.h>

#include <commctrl.h>
#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "com/windows_world.h"
#include "host/client_sink.h"
#include "host/component.h"
#include "test_processor/texts.h"
#include "ui/dialogs.h"
#include "ui/win32/toolkit.h"

namespace krnqb::testing {
namespace {

const RecordedImport configured{"1.1", "ald", "all"};

void Say(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

std::wstring VariableValue(const wchar_t* name) {
  wchar_t value[256];
  const DWORD length = GetEnvironmentVariableW(name, value, 256);
  return {value, length};
}

HWND OpenHostWindow() {
  HWND window = CreateWindowW(L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 300, 100, nullptr,
                              nullptr, nullptr, nullptr);
  SetActiveWindow(window);
  return window;
}

BOOL CALLBACK AddUsable(HWND control, LPARAM usable) {
  if (IsWindowEnabled(control) != FALSE && GetWindow(control, GW_CHILD) == nullptr) {
    *reinterpret_cast<std::string*>(usable) += ' ' + std::to_string(GetDlgCtrlID(control));
  }
  return TRUE;
}

// Prints what the dialog shows at an event of the import, as last painted.
void SayWhatIsShown(const std::string& event) {
  HWND dialog = FindWindowW(L"#32770", L"Import From Quickbooks");
  HWND bar = GetDlgItem(dialog, 1030);
  HWND text = GetDlgItem(dialog, 1031);
  wchar_t shown[256];
  const int length = GetWindowTextW(text, shown, 256);
  std::string usable;
  EnumChildWindows(dialog, AddUsable, reinterpret_cast<LPARAM>(&usable));
  const bool unpainted = GetUpdateRect(bar, nullptr, FALSE) != FALSE;
  Say("at " + event + ": bar " + std::to_string(SendMessageW(bar, PBM_GETPOS, 0, 0)) +
      (IsWindowVisible(bar) != FALSE ? " shown" : " hidden") + (unpainted ? " unpainted" : "") + ", text \"" +
      Utf8(std::wstring_view(shown, static_cast<std::size_t>(length))) + "\", usable" + usable);
}

bool MayGoOn() {
  return GetFileAttributesW(L"release") != INVALID_FILE_ATTRIBUTES;
}

void Hold(const std::string& event) {
  if (VariableValue(L"KRNQB_HOLD_AT") != Utf16(event) || MayGoOn()) return;
  Say("held");
  while (!MayGoOn()) Sleep(10);
}

void SayOptions(const Exchange& exchange) {
  VARIANT_BOOL expenses = 7;
  VARIANT_BOOL income = 7;
  VARIANT_BOOL past = 7;
  ::QBKRN_BalancesImport balances{};
  long number = 7;
  exchange->get_IncludeExpenseAccounts(&expenses);
  exchange->get_IncludeIncomeAccounts(&income);
  exchange->get_IncludePastPerformance(&past);
  exchange->get_BalancesImport(&balances);
  exchange->get_ErrorNumber(&number);
  Say("expenses " + std::to_string(expenses) + ", income " + std::to_string(income) + ", past " +
      std::to_string(past) + ", balances " + std::to_string(balances) + ", error " + std::to_string(number));
}

void SayResult(HRESULT called, const Value& result) {
  if (FAILED(called)) Say("failed");
  Say(result.IsEmpty() ? "empty" : "chosen " + Utf8(result.AsText()));
}

void ShowOptions(int dialog) {
  const Replaying recording(Utf16(configured.Name()));
  const auto plan = std::make_shared<PlanState>("recordings\\" + configured.product + ".kpf");
  const auto sink = ClientSink::Make();
  const Exchange exchange = NewExchange();
  const Connection connection(exchange.Get(), sink.Get());
  Configure(exchange, configured, NewHostPlan(plan).Get());
  exchange->put_IncludeExpenseAccounts(VARIANT_FALSE);
  exchange->put_IncludeIncomeAccounts(VARIANT_FALSE);
  exchange->put_BalancesImport(::BalImport_None);
  sink->at = [](const std::string& event) {
    SayWhatIsShown(event);
    Hold(event);
    return S_OK;
  };
  Value result(3);
  const HRESULT called = exchange->ShowDialog(static_cast<::QBKRN_Dialogs>(dialog), result.Receive());
  SayResult(called, result);
  SayOptions(exchange);
  std::ofstream("cells.txt", std::ios::binary) << plan->tables.Cells();
}

void AskForFile(int dialog) {
  const Exchange exchange = NewExchange();
  exchange->put_QBCompany(Text(L"C:\\before.qbw").Get());
  Value result(3);
  const HRESULT called = exchange->ShowDialog(static_cast<::QBKRN_Dialogs>(dialog), result.Receive());
  SayResult(called, result);
  Text company;
  exchange->get_QBCompany(company.Receive());
  Say("company " + Utf8(company.View()));
  wchar_t folder[MAX_PATH];
  GetCurrentDirectoryW(MAX_PATH, folder);
  Say("folder " + Utf8(std::wstring_view(folder)));
}

void Show(const std::string& role) {
  if (role == "export") ShowOptions(1);
  if (role == "import") ShowOptions(2);
  if (role == "company") AskForFile(3);
  if (role == "plan") AskForFile(4);
  if (role == "other") ShowOptions(5);
  if (role == "message") {
    Value result(3);
    const HRESULT called = NewExchange()->SubmitCustomRequest(Text(L"<any/>").Get(), result.Receive());
    SayResult(called, result);
  }
  if (role == "about") ui::Dialogs(ui::win32::Win32Toolkit(), com::WindowsSystem()).ShowAbout();
}

}  // namespace
}  // namespace krnqb::testing

int main(int count, char** arguments) {
  if (count != 2) return 2;
  _setmode(_fileno(stdout), _O_BINARY);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
  HWND window = krnqb::testing::OpenHostWindow();
  krnqb::testing::Show(arguments[1]);
  krnqb::testing::Say(IsWindowEnabled(window) != FALSE ? "host enabled" : "host disabled");
  DestroyWindow(window);
  CoUninitialize();
  krnqb::testing::Say("end of the host");
  return 0;
}
