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
    windows_.push_back(&window);
    try {
      window.Run(GetActiveWindow());
    } catch (...) {
      windows_.pop_back();
      throw;
    }
    windows_.pop_back();
  }

  void ShowNow(const Dialog& dialog) override {
    for (FormWindow* window : windows_) {
      if (&window->Shown() == &dialog) window->ShowNow();
    }
  }

  // An empty caption; with a null caption the system would show "Error".
  void ShowMessage(std::string_view text) override {
    MessageBoxW(GetActiveWindow(), Wide(text).c_str(), L"", MB_OK);
  }

  std::optional<std::string> AskForFile(const FileDialogSettings& settings) override {
    return OpenFile(settings, GetActiveWindow());
  }

 private:
  std::vector<FormWindow*> windows_;
};

}  // namespace

std::shared_ptr<Toolkit> Win32Toolkit() {
  return std::make_shared<SystemWindows>();
}

}  // namespace krnqb::ui::win32
