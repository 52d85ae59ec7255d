#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace krnqb::testing {

/// Returns whether the condition becomes true within five seconds.
bool Becomes(const std::function<bool()>& condition);

/// A program that shows dialogs in its own process, started with the current environment.
class Program {
 public:
  /// Starts the program; fails the test if that fails.
  explicit Program(const std::wstring& commandLine);
  /// Terminates the program if it is still running.
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// Waits until a dialog with this caption is visible and in front, and returns it; throws after five
  /// seconds.
  HWND Dialog(const wchar_t* caption) const;
  bool Shows(const wchar_t* caption) const;
  /// Returns the lines printed so far.
  std::vector<std::string> Lines() const;
  bool HasSaid(const std::string& line) const;
  /// Waits for the program to end and returns its lines; fails the test if it does not end.
  std::vector<std::string> End();

 private:
  PROCESS_INFORMATION process_{};
};

/// Returns a control by its number, on any page; null if it is missing.
HWND Control(HWND window, int identifier);
std::wstring TextOf(HWND window);
std::wstring ClassOf(HWND window);
bool IsShown(HWND window, int identifier);
bool IsEnabled(HWND window, int identifier);
bool IsChecked(HWND window, int identifier);
/// Returns the selected entry of a drop-down list; -1 for none.
int Selected(HWND window, int identifier);

/// Returns the numbers of the window's controls whose text does not fit.
std::vector<int> CutOff(HWND window);

// What a user does, through the system's own mouse and keyboard.
void Click(HWND control);
void Press(WORD key);
void PressWithAlt(WORD key);
/// Clicks the window's close button.
void Close(HWND window);

/// Clicks a check box and waits until it has changed.
void ClickBox(HWND window, int identifier);
/// Presses the Down key in a drop-down list until the entry is selected.
void ChooseBelow(HWND window, int identifier, int entry);

}  // namespace krnqb::testing
