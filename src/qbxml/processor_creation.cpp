#include "qbxml/processor_creation.h"

#include <algorithm>
#include <array>

namespace krnqb {
namespace {

constexpr std::array<std::uint32_t, 5> missingResults = {
    0x80040154U,  // class not registered
    0x80040111U,  // the module does not have the class
    0x80040155U,  // interface not registered
    0x8007007EU,  // module not found
    0x80070002U   // file not found
};

}  // namespace

Error CreationError(const Error& error, std::int32_t result) {
  const auto bits = static_cast<std::uint32_t>(result);
  const bool missing = std::ranges::find(missingResults, bits) != missingResults.end();
  return missing ? Error(error_number::cannotCreateObject) : error;
}

}  // namespace krnqb
