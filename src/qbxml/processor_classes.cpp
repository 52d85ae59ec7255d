#include "qbxml/processor_classes.h"

#include <fmt/format.h>

#include "krnqb/error.h"

namespace krnqb {
namespace {

// The system's texts end with a full stop.
std::string WithoutFullStop(std::string text) {
  while (text.ends_with('.') || text.ends_with(' ')) text.pop_back();
  return text;
}

}  // namespace

std::unique_ptr<RequestProcessor> CreateFirstProcessor(const std::vector<ProcessorClass>& classes) {
  std::string reasons;
  for (const ProcessorClass& processorClass : classes) {
    try {
      return processorClass.create();
    } catch (const Error& error) {
      reasons +=
          fmt::format("{}{}: {} ({:08X})", reasons.empty() ? "" : ", ", processorClass.name,
                      WithoutFullStop(error.Description()), static_cast<std::uint32_t>(error.Number()));
    }
  }
  throw Error(error_number::cannotCreateObject, reasons);
}

std::vector<std::string> ClassesForOtherWidth(const std::vector<ProcessorClass>& classes) {
  std::vector<std::string> names;
  for (const ProcessorClass& processorClass : classes) {
    if (processorClass.onlyForOtherWidth()) names.push_back(processorClass.name);
  }
  return names;
}

}  // namespace krnqb
