#pragma once

#include <string>
#include <string_view>

namespace krnqb::tests {

/// Returns why docs/schema/SCHEMA.schema.json refuses a JSON text, or an empty text if it accepts it. Throws
/// std::runtime_error if there is no such schema.
///
/// Only the keywords of draft 4 are checked; tests/cli/schema_test.cpp holds the schemas to them.
std::string SchemaViolation(const std::string& schema, std::string_view json);

}  // namespace krnqb::tests
