#include "com/windows_world.h"

#include "com/message_box.h"
#include "com/request_processor_calls.h"

namespace krnqb::com {

OutsideWorld WindowsOutsideWorld(std::shared_ptr<EventSink> sink, std::shared_ptr<Observer> observer) {
  OutsideWorld world;
  world.processors = InstalledRequestProcessors();
  world.sinks = {std::move(sink)};
  world.observer = std::move(observer);
  world.userInterface = MessageBoxes();
  return world;
}

}  // namespace krnqb::com
