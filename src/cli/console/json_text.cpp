#include "cli/console/json_text.h"

namespace krnqb::cli {

std::string JsonText(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace);
}

}  // namespace krnqb::cli
