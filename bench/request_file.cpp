#include "bench/request_file.h"

#include <fstream>
#include <sstream>

#include "krnqb/error.h"

namespace krnqb::bench {
namespace {

// A separator that cannot occur in XML.
constexpr char separator = '\0';

[[noreturn]] void Fail(const std::filesystem::path& file, std::string_view what) {
  throw Error(error_number::unspecified, file.string() + ": " + std::string(what));
}

}  // namespace

void WriteRequests(const std::filesystem::path& file, const std::vector<std::string>& requests) {
  std::ofstream stream(file, std::ios::binary);
  for (const std::string& request : requests) stream << request << separator;
  stream.close();
  if (!stream) Fail(file, "cannot be written");
}

std::vector<std::string> ReadRequests(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::vector<std::string> requests;
  for (std::string request; std::getline(stream, request, separator);) requests.push_back(request);
  if (requests.empty()) Fail(file, "contains no requests");
  return requests;
}

std::string QueryOf(std::string_view request) {
  const std::size_t end = request.find("Rq requestID=");
  if (end == std::string_view::npos) return "Query";
  const std::size_t begin = request.rfind('<', end) + 1;
  return std::string(request.substr(begin, end - begin));
}

std::string MonthOf(std::string_view request) {
  constexpr std::string_view tag = "<FromTxnDate>";
  constexpr std::size_t monthLength = 7;
  const std::size_t begin = request.find(tag);
  return begin == std::string_view::npos ? std::string()
                                         : std::string(request.substr(begin + tag.size(), monthLength));
}

}  // namespace krnqb::bench
