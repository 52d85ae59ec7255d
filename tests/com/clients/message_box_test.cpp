// The one message box, closed by a thread that waits for it like a user. Needs a display.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "host/component.h"

namespace krnqb::testing {
namespace {

struct SeenBox {
  bool found = false;
  std::wstring caption;
  std::vector<std::wstring> texts;
  HWND owner = nullptr;
};

std::wstring TextOf(HWND window) {
  std::wstring text(256, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
  wchar_t name[16];
  GetClassNameW(window, name, 16);
  if (wcscmp(name, L"#32770") != 0 || !IsWindowVisible(window)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

BOOL CALLBACK CollectText(HWND window, LPARAM box) {
  reinterpret_cast<SeenBox*>(box)->texts.push_back(TextOf(window));
  return TRUE;
}

// Waits for a dialog of that thread, checks it, and presses OK.
SeenBox CloseBoxOf(DWORD thread) {
  SeenBox box;
  HWND dialog = nullptr;
  for (int attempt = 0; attempt < 200 && dialog == nullptr; ++attempt) {
    Sleep(50);
    EnumThreadWindows(thread, FindDialog, reinterpret_cast<LPARAM>(&dialog));
  }
  if (dialog == nullptr) return box;
  box.found = true;
  box.caption = TextOf(dialog);
  box.owner = GetWindow(dialog, GW_OWNER);
  EnumChildWindows(dialog, CollectText, reinterpret_cast<LPARAM>(&box));
  PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  return box;
}

bool Contains(const std::vector<std::wstring>& texts, const wchar_t* text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

TEST(MessageBoxes, ShowForACustomRequestWhichReturnsEmpty) {
  const HWND window = CreateWindowW(L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 200, 100,
                                    nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(nullptr, window);
  SetActiveWindow(window);
  const Exchange exchange = NewExchange();
  SeenBox box;
  std::thread person([&, thread = GetCurrentThreadId()] { box = CloseBoxOf(thread); });
  Value result(3);
  EXPECT_EQ(S_OK, exchange->SubmitCustomRequest(Text(L"<any/>").Get(), result.Receive()));
  person.join();
  EXPECT_TRUE(result.IsEmpty());
  ASSERT_TRUE(box.found);
  EXPECT_EQ(L"", box.caption);
  EXPECT_TRUE(Contains(box.texts, L"future implementation"));
  EXPECT_EQ(GetActiveWindow(), box.owner);
  EXPECT_EQ(window, box.owner);
  DestroyWindow(window);
}

}  // namespace
}  // namespace krnqb::testing
