#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace krnqb::testing {

/// Whether it became true within five seconds.
bool Becomes(const std::function<bool()>& condition);

/// A program that shows dialogs, in a process of its own, started with the variables that are set now.
class Program {
 public:
  /// Starts it; the test fails when that fails.
  explicit Program(const std::wstring& commandLine);
  /// Ends it when it is still there.
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// Its dialog of that caption, once it is shown and in front; throws when there is none within five
  /// seconds.
  HWND Dialog(const wchar_t* caption) const;
  bool Shows(const wchar_t* caption) const;
  /// What it has said until now, as lines.
  std::vector<std::string> Lines() const;
  bool HasSaid(const std::string& line) const;
  /// The same once it has come to its end; the test fails when it does not.
  std::vector<std::string> End();

 private:
  PROCESS_INFORMATION process_{};
};

/// A control by its number, on whatever page it stands; null when there is none.
HWND Control(HWND window, int identifier);
std::wstring TextOf(HWND window);
std::wstring ClassOf(HWND window);
bool IsShown(HWND window, int identifier);
bool IsEnabled(HWND window, int identifier);
bool IsChecked(HWND window, int identifier);
/// The entry that a drop-down list shows; -1 for none.
int Selected(HWND window, int identifier);

/// The controls of the window that show text which does not fit, by number.
std::vector<int> CutOff(HWND window);

// What a person does, with the system's own mouse and keyboard.
void Click(HWND control);
void Press(WORD key);
void PressWithAlt(WORD key);
/// The window's own close button.
void Close(HWND window);

/// Clicks a check box and waits until it has changed.
void ClickBox(HWND window, int identifier);
/// Presses the Down key in a drop-down list until the entry is selected.
void ChooseBelow(HWND window, int identifier, int entry);

}  // namespace krnqb::testing
