#include "ui/qt/display.h"

#include <xcb/xcb.h>

#include <QByteArray>
#include <QtGlobal>
#include <string>

#include "krnqb/error.h"

namespace krnqb::ui::qt {

HeldDisplay RequireDisplay() {
  // If the user selects Qt's platform, or uses a display other than X, leave the check to Qt.
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (!platform.isEmpty() && !platform.startsWith("xcb")) return {};
  const QByteArray display = qgetenv("DISPLAY");
  if (platform.isEmpty() && display.isEmpty() && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) return {};
  if (display.isEmpty()) throw Error(error_number::cannotCreateObject, "there is no display");
  std::shared_ptr<xcb_connection_t> connection(xcb_connect(nullptr, nullptr), xcb_disconnect);
  if (xcb_connection_has_error(connection.get()) != 0) {
    throw Error(error_number::cannotCreateObject,
                "the display " + display.toStdString() + " does not answer");
  }
  return connection;
}

}  // namespace krnqb::ui::qt
