#pragma once

#include <filesystem>

namespace krnqb::bench {

/// Repeats the requests of a request file, parses each answer with libxml2 into a document that is freed at
/// once, and prints the cost of parsing, the minimum for any reader of the answers as documents. Throws Error
/// if an answer is not a document.
void RunParse(const std::filesystem::path& company, const std::filesystem::path& requestFile);

/// Does the same with events instead of documents: the minimum for any reader of the answers. The events
/// reach functions that do nothing.
void RunEvents(const std::filesystem::path& company, const std::filesystem::path& requestFile);

/// Repeats the transaction queries of a request file and prints how fast they are answered: total bytes and
/// seconds, and the rate (bytes per second) of the slowest month.
void RunQueries(const std::filesystem::path& company, const std::filesystem::path& requestFile);

/// Writes the answers to the requests of a request file into a folder, which it creates. Files are named by
/// position, query and month: "004-BillQuery-2002-01.xml". Throws Error if a file cannot be written.
void RunResponses(const std::filesystem::path& company, const std::filesystem::path& requestFile,
                  const std::filesystem::path& folder);

}  // namespace krnqb::bench
