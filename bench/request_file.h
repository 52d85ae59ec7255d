#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::bench {

/// Keeps the requests of an import, so that another process can send the very same ones. Error when the file
/// cannot be written or read.
void WriteRequests(const std::filesystem::path& file, const std::vector<std::string>& requests);
std::vector<std::string> ReadRequests(const std::filesystem::path& file);

/// What a request asks for, such as "BillQuery".
std::string QueryOf(std::string_view request);
/// The month (YYYY-MM) with which a transaction query's date range begins; empty for any other request.
std::string MonthOf(std::string_view request);

}  // namespace krnqb::bench
