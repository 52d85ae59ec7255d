#include "com/message_box.h"

#include <windows.h>

#include "com/text.h"

namespace krnqb::com {
namespace {

class SystemMessages final : public UserInterface {
 public:
  // An empty caption: without one the system would write "Error".
  void ShowMessage(std::string_view text) override {
    MessageBoxW(GetActiveWindow(), Wide(text).c_str(), L"", MB_OK);
  }

  Variant ShowDialog(QBDataExchange& /*component*/, QBKRN_Dialogs /*dialog*/) override { return {}; }
};

}  // namespace

std::shared_ptr<UserInterface> MessageBoxes() {
  return std::make_shared<SystemMessages>();
}

}  // namespace krnqb::com
