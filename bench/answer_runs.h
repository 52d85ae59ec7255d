#pragma once

#include <filesystem>

namespace krnqb::bench {

/// Sends the requests of a request file again, parses each answer with libxml2 into a document that is freed
/// at once, and prints what the parsing took: the least that whoever reads the answers as documents pays.
/// Error when an answer is no document.
void RunParse(const std::filesystem::path& company, const std::filesystem::path& requestFile);

/// Sends the transaction queries of a request file again and prints how fast they are answered: bytes and
/// seconds of all together, and the rate (bytes a second) of the month that is answered slowest.
void RunQueries(const std::filesystem::path& company, const std::filesystem::path& requestFile);

/// Writes the answers to the requests of a request file to files of a folder, which is made, called by their
/// place, query and month: "004-BillQuery-2002-01.xml". Error when one cannot be written.
void RunResponses(const std::filesystem::path& company, const std::filesystem::path& requestFile,
                  const std::filesystem::path& folder);

}  // namespace krnqb::bench
