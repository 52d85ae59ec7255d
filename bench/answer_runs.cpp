#include "bench/answer_runs.h"

#include <fmt/format.h>
#include <libxml/parser.h>

#include <algorithm>
#include <fstream>
#include <map>

#include "bench/request_file.h"
#include "bench/stopwatch.h"
#include "company/file.h"
#include "krnqb/error.h"

namespace krnqb::bench {
namespace {

using company::CompanyFile;
using company::FileAccess;

void ParseAndFree(const std::string& answer) {
  xmlDoc* const document = xmlReadMemory(answer.data(), static_cast<int>(answer.size()), nullptr, nullptr,
                                         XML_PARSE_NONET | XML_PARSE_HUGE);
  if (document == nullptr) throw Error(error_number::unspecified, "an answer is not an XML document");
  xmlFreeDoc(document);
}

// Receives every event and does nothing: what any program pays that reads the answers with the library.
void ReadEvents(const std::string& answer) {
  xmlSAXHandler handlers{};
  handlers.initialized = XML_SAX2_MAGIC;
  handlers.startElementNs = [](void*, const xmlChar*, const xmlChar*, const xmlChar*, int, const xmlChar**,
                               int, int, const xmlChar**) {};
  handlers.endElementNs = [](void*, const xmlChar*, const xmlChar*, const xmlChar*) {};
  handlers.characters = [](void*, const xmlChar*, int) {};
  if (xmlSAXUserParseMemory(&handlers, nullptr, answer.data(), static_cast<int>(answer.size())) != 0)
    throw Error(error_number::unspecified, "an answer is not an XML document");
}

// Reads each answer of the company to the recorded requests; prints what it cost.
void RunReading(const std::filesystem::path& companyPath, const std::filesystem::path& requestFile,
                void (*read)(const std::string& answer)) {
  const CompanyFile company = CompanyFile::Open(companyPath, FileAccess::ReadOnly);
  Elapsed reading;
  std::int64_t bytes = 0;
  for (const std::string& request : ReadRequests(requestFile)) {
    const std::string answer = company.Answer(request);
    bytes += static_cast<std::int64_t>(answer.size());
    const Stopwatch stopwatch;
    read(answer);
    reading += stopwatch.Read();
  }
  fmt::print("wall {:.3f}\ncpu {:.3f}\npeak {}\nbytes {}\n", reading.wall.count(), reading.cpu.count(),
             PeakMemory(), bytes);
}

}  // namespace

void RunParse(const std::filesystem::path& companyPath, const std::filesystem::path& requestFile) {
  RunReading(companyPath, requestFile, ParseAndFree);
}

void RunEvents(const std::filesystem::path& companyPath, const std::filesystem::path& requestFile) {
  RunReading(companyPath, requestFile, ReadEvents);
}

void RunQueries(const std::filesystem::path& companyPath, const std::filesystem::path& requestFile) {
  const CompanyFile company = CompanyFile::Open(companyPath, FileAccess::ReadOnly);
  struct Answered {
    double bytes = 0;
    Elapsed elapsed;
  };
  Answered all;
  std::map<std::string, Answered> months;
  std::string answer;
  for (const std::string& request : ReadRequests(requestFile)) {
    const std::string month = MonthOf(request);
    if (month.empty()) continue;
    const Stopwatch stopwatch;
    answer = company.Answer(request, std::move(answer));  // uses its memory again, as an import does
    const Elapsed elapsed = stopwatch.Read();
    for (Answered* const answered : {&all, &months[month]}) {
      answered->bytes += static_cast<double>(answer.size());
      answered->elapsed += elapsed;
    }
  }
  if (months.empty()) throw Error(error_number::unspecified, "the request file has no transaction queries");
  const auto rate = [](const Answered& answered) { return answered.bytes / answered.elapsed.wall.count(); };
  const auto slowest =
      std::ranges::min_element(months, {}, [&](const auto& month) { return rate(month.second); });
  fmt::print("bytes {:.0f}\nwall {:.3f}\ncpu {:.3f}\nrate {:.0f}\nslowest {:.0f}\n", all.bytes,
             all.elapsed.wall.count(), all.elapsed.cpu.count(), rate(all), rate(slowest->second));
}

void RunResponses(const std::filesystem::path& companyPath, const std::filesystem::path& requestFile,
                  const std::filesystem::path& folder) {
  const CompanyFile company = CompanyFile::Open(companyPath, FileAccess::ReadOnly);
  std::filesystem::create_directories(folder);
  int place = 0;
  for (const std::string& request : ReadRequests(requestFile)) {
    const std::string month = MonthOf(request);
    const std::filesystem::path file =
        folder / fmt::format("{:03}-{}{}{}.xml", ++place, QueryOf(request), month.empty() ? "" : "-", month);
    std::ofstream stream(file, std::ios::binary);
    stream << company.Answer(request);
    stream.close();
    if (!stream) throw Error(error_number::unspecified, file.string() + ": cannot be written");
  }
}

}  // namespace krnqb::bench
