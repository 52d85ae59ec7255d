#include "ui/win32/toolkit.h"

#include <windows.h>

#include <vector>

#include "support/windows_text.h"
#include "ui/win32/form_window.h"
#include "ui/win32/open_file.h"

namespace krnqb::ui::win32 {
namespace {

class SystemWindows final : public Toolkit {
 public:
  void ShowModal(Dialog& dialog) override {
    FormWindow window(dialog);
    windows.push_back(&window);
    try {
      window.Run(GetActiveWindow());
    } catch (...) {
      windows.pop_back();
      throw;
    }
    windows.pop_back();
  }

  void ShowNow(const Dialog& dialog) override {
    for (FormWindow* window : windows) {
      if (&window->Shown() == &dialog) window->ShowNow();
    }
  }

  // An empty caption: without one the system would write "Error".
  void ShowMessage(std::string_view text) override {
    MessageBoxW(GetActiveWindow(), Wide(text).c_str(), L"", MB_OK);
  }

  std::optional<std::string> AskForFile(const FileDialogSettings& settings) override {
    return OpenFile(settings, GetActiveWindow());
  }

 private:
  std::vector<FormWindow*> windows;
};

}  // namespace

std::shared_ptr<Toolkit> Win32Toolkit() {
  return std::make_shared<SystemWindows>();
}

}  // namespace krnqb::ui::win32
