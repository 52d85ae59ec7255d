#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::bench {

/// Saves and reads the requests of an import, so that another process can repeat them. Throws Error if the
/// file cannot be written or read.
void WriteRequests(const std::filesystem::path& file, const std::vector<std::string>& requests);
std::vector<std::string> ReadRequests(const std::filesystem::path& file);

/// Returns the query of a request, such as "BillQuery".
std::string QueryOf(std::string_view request);
/// Returns the first month (YYYY-MM) of a transaction query's date range; empty for any other request.
std::string MonthOf(std::string_view request);

}  // namespace krnqb::bench
