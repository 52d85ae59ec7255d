#include "com/windows_world.h"

#include "com/calls/request_processor_calls.h"
#include "com/program_starter.h"
#include "support/system_files.h"
#include "support/system_registry.h"
#include "ui/dialogs.h"
#include "ui/win32/toolkit.h"

namespace krnqb::com {

OutsideWorld WindowsOutsideWorld(std::shared_ptr<EventSink> sink, std::shared_ptr<Observer> observer) {
  const ui::SystemInformation system = WindowsSystem();
  const auto dialogs = std::make_shared<ui::Dialogs>(ui::win32::Win32Toolkit(), system);
  OutsideWorld world;
  world.processors = InstalledRequestProcessors();
  world.sinks = {std::move(sink), dialogs};
  world.observer = std::move(observer);
  world.userInterface = dialogs;
  world.registry = system.registry;
  world.files = system.files;
  return world;
}

ui::SystemInformation WindowsSystem() {
  return {.registry = SystemRegistry(), .files = SystemFiles(), .programs = SystemPrograms()};
}

}  // namespace krnqb::com
