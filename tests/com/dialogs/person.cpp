#include "person.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "host/component.h"
#include "numbers.h"

namespace krnqb::testing {
namespace {

const wchar_t* const saidFile = L"said.txt";

struct Search {
  DWORD process;
  const wchar_t* caption;
  HWND found;
};

// Reads the text from the system's copy: a busy window answers no messages.
std::wstring CaptionOf(HWND window) {
  wchar_t caption[256];
  const int length = GetWindowTextW(window, caption, 256);
  return {caption, static_cast<std::size_t>(length)};
}

BOOL CALLBACK FindDialog(HWND window, LPARAM sought) {
  auto& search = *reinterpret_cast<Search*>(sought);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != search.process || IsWindowVisible(window) == FALSE || ClassOf(window) != L"#32770" ||
      CaptionOf(window) != search.caption) {
    return TRUE;
  }
  search.found = window;
  return FALSE;
}

struct ControlSearch {
  int identifier;
  HWND found;
};

BOOL CALLBACK FindControl(HWND window, LPARAM sought) {
  auto& search = *reinterpret_cast<ControlSearch*>(sought);
  if (GetDlgCtrlID(window) != search.identifier) return TRUE;
  search.found = window;
  return FALSE;
}

// The dialogs' font, recreated here, since a font of another process cannot be used.
HFONT NewFontOf(HWND control, HDC context) {
  const bool heading = GetDlgCtrlID(control) == aboutTitle;
  const int height = MulDiv(8, GetDeviceCaps(context, LOGPIXELSY), 72);
  return CreateFontW(heading ? -MulDiv(height, 13, 10) : -height, 0, 0, 0, heading ? FW_BOLD : FW_NORMAL,
                     FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, 0, 0, L"MS Shell Dlg");
}

// Measures a control's text at the control's width.
SIZE SizeOfText(HWND control, LONG width) {
  RECT area{0, 0, width, 0};
  HDC context = GetDC(nullptr);
  HFONT font = NewFontOf(control, context);
  const HGDIOBJ before = SelectObject(context, font);
  DrawTextW(context, TextOf(control).c_str(), -1, &area, DT_CALCRECT | DT_WORDBREAK);
  SelectObject(context, before);
  DeleteObject(font);
  ReleaseDC(nullptr, context);
  return {area.right, area.bottom};
}

// The space beside the text: the box of a check box, the button of a list, the edge of a push button.
LONG RoomBesideText(HWND control) {
  if (ClassOf(control) == L"ComboBox") return GetSystemMetrics(SM_CXVSCROLL) + 8;
  return ClassOf(control) == L"Button" ? 18 : 0;
}

BOOL CALLBACK AddCutOff(HWND control, LPARAM cutOff) {
  const bool showsText = ClassOf(control) != L"#32770" && ClassOf(control) != L"msctls_progress32" &&
                         (GetWindowLongW(control, GWL_STYLE) & SS_TYPEMASK) != SS_OWNERDRAW;
  if (IsWindowVisible(control) == FALSE || !showsText) return TRUE;
  RECT area{};
  GetClientRect(control, &area);
  RECT place{};
  RECT around{};
  GetWindowRect(control, &place);
  GetWindowRect(GetParent(control), &around);
  const SIZE needed = SizeOfText(control, area.right - RoomBesideText(control));
  const bool fits = needed.cx + RoomBesideText(control) <= area.right && needed.cy <= area.bottom;
  const bool inside = place.left >= around.left && place.top >= around.top && place.right <= around.right &&
                      place.bottom <= around.bottom;
  if (!fits || !inside) reinterpret_cast<std::vector<int>*>(cutOff)->push_back(GetDlgCtrlID(control));
  return TRUE;
}

void Send(const std::vector<INPUT>& inputs) {
  for (INPUT input : inputs) {
    EXPECT_EQ(1U, SendInput(1, &input, sizeof(input)));
    Sleep(10);
  }
}

INPUT Key(WORD key, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.dwFlags = flags;
  return input;
}

// Moves the mouse and presses the button in one input, so that nothing can move it in between.
INPUT Button(POINT place, DWORD flags) {
  constexpr LONG whole = 65536;
  const LONG width = GetSystemMetrics(SM_CXSCREEN);
  const LONG height = GetSystemMetrics(SM_CYSCREEN);
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dx = (place.x * whole + width / 2) / width;
  input.mi.dy = (place.y * whole + height / 2) / height;
  input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | flags;
  return input;
}

}  // namespace

bool Becomes(const std::function<bool()>& condition) {
  for (int attempt = 0; attempt < 250; ++attempt) {
    if (condition()) return true;
    Sleep(20);
  }
  return false;
}

Program::Program(const std::wstring& commandLine) {
  SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
  HANDLE output = CreateFileW(saidFile, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                              CREATE_ALWAYS, 0, nullptr);
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = output;
  start.hStdError = output;
  std::wstring line = commandLine;
  const BOOL started =
      CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process_);
  CloseHandle(output);
  EXPECT_TRUE(started) << GetLastError();
}

Program::~Program() {
  if (WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT) {
    TerminateProcess(process_.hProcess, 1);
    WaitForSingleObject(process_.hProcess, 5000);
  }
  CloseHandle(process_.hThread);
  CloseHandle(process_.hProcess);
}

bool Program::Shows(const wchar_t* caption) const {
  Search search{process_.dwProcessId, caption, nullptr};
  EnumWindows(FindDialog, reinterpret_cast<LPARAM>(&search));
  return search.found != nullptr;
}

HWND Program::Dialog(const wchar_t* caption) const {
  Search search{process_.dwProcessId, caption, nullptr};
  Becomes([&search] {
    EnumWindows(FindDialog, reinterpret_cast<LPARAM>(&search));
    return search.found != nullptr;
  });
  if (search.found == nullptr) throw std::runtime_error("no dialog: " + FileText("said.txt"));
  // Visible and waiting for input.
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(search.found, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &answer);
  EXPECT_TRUE(Becomes([&search] { return GetForegroundWindow() == search.found; })) << "not in front";
  return search.found;
}

std::vector<std::string> Program::Lines() const {
  return LinesOf(FileText("said.txt"));
}

bool Program::HasSaid(const std::string& line) const {
  const std::vector<std::string> lines = Lines();
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

std::vector<std::string> Program::End() {
  EXPECT_EQ(WAIT_OBJECT_0, WaitForSingleObject(process_.hProcess, 20000)) << "the program did not end";
  std::vector<std::string> lines = Lines();
  if (lines.size() < 2 || lines.back() != "end of the host" || lines.end()[-2] != "host enabled") {
    ADD_FAILURE() << "the host did not come to its end: " << FileText("said.txt");
    return lines;
  }
  lines.resize(lines.size() - 2);
  return lines;
}

HWND Control(HWND window, int identifier) {
  ControlSearch search{identifier, nullptr};
  EnumChildWindows(window, FindControl, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::wstring TextOf(HWND window) {
  std::wstring text(1024, L'\0');
  const auto length = SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::wstring ClassOf(HWND window) {
  wchar_t name[64];
  const int length = GetClassNameW(window, name, 64);
  return {name, static_cast<std::size_t>(length)};
}

bool IsShown(HWND window, int identifier) {
  return IsWindowVisible(Control(window, identifier)) != FALSE;
}

bool IsEnabled(HWND window, int identifier) {
  HWND control = Control(window, identifier);
  return IsWindowEnabled(control) != FALSE && IsWindowEnabled(GetParent(control)) != FALSE;
}

bool IsChecked(HWND window, int identifier) {
  return SendMessageW(Control(window, identifier), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

int Selected(HWND window, int identifier) {
  return static_cast<int>(SendMessageW(Control(window, identifier), CB_GETCURSEL, 0, 0));
}

std::vector<int> CutOff(HWND window) {
  std::vector<int> cutOff;
  EnumChildWindows(window, AddCutOff, reinterpret_cast<LPARAM>(&cutOff));
  return cutOff;
}

void Click(HWND control) {
  RECT place{};
  EXPECT_TRUE(GetWindowRect(control, &place)) << "no such control";
  const POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
  Send({Button(middle, MOUSEEVENTF_LEFTDOWN), Button(middle, MOUSEEVENTF_LEFTUP)});
}

void Press(WORD key) {
  Send({Key(key, 0), Key(key, KEYEVENTF_KEYUP)});
}

void PressWithAlt(WORD key) {
  Send({Key(VK_MENU, 0), Key(key, 0), Key(key, KEYEVENTF_KEYUP), Key(VK_MENU, KEYEVENTF_KEYUP)});
}

void Close(HWND window) {
  PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

void ClickBox(HWND window, int identifier) {
  const bool before = IsChecked(window, identifier);
  Click(Control(window, identifier));
  EXPECT_TRUE(Becomes([&] { return IsChecked(window, identifier) != before; })) << identifier;
}

void ChooseBelow(HWND window, int identifier, int entry) {
  HWND list = Control(window, identifier);
  // After two clicks the list has opened and closed again, and has the focus.
  Click(list);
  EXPECT_TRUE(Becomes([&] { return SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != 0; }));
  Click(list);
  EXPECT_TRUE(Becomes([&] { return SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) == 0; }));
  for (int step = Selected(window, identifier) + 1; step <= entry; ++step) {
    Press(VK_DOWN);
    EXPECT_TRUE(Becomes([&] { return Selected(window, identifier) == step; })) << step;
  }
}

}  // namespace krnqb::testing
