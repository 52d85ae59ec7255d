#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>

#include "files/descriptor.h"
#include "files/operations.h"
#include "qbxml/exchange_header.h"
#include "qbxml/exchange_replaying.h"

namespace krnqb::cli {

/// A recording that grows in FILE.part and becomes FILE when it is complete. Every answer is in FILE.part as
/// soon as it is added, so that a recording that was interrupted goes on where it stopped.
class PartialFile {
 public:
  /// Does nothing yet. `file` is FILE.
  explicit PartialFile(std::filesystem::path file);
  PartialFile(const PartialFile&) = delete;
  PartialFile& operator=(const PartialFile&) = delete;
  /// Removes FILE.part if it was begun anew and holds no answer.
  ~PartialFile();

  /// Creates FILE.part, or goes on with it and reads its answers; no other process may use it until the
  /// object is destroyed. An entry that was cut off at the end is removed. Throws Failure if another process
  /// has FILE.part, if it is another recording than `header` says, or if it is damaged or cannot be written.
  void Begin(const ExchangeHeader& header);

  /// Returns how many answers FILE.part had when it was opened, and whether its last entry was cut off.
  std::size_t Continued() const noexcept { return continued_; }
  bool EntryWasCut() const noexcept { return entryWasCut_; }

  /// Returns the answer to a request, or null if the recording does not have it yet.
  const RecordedAnswer* Find(std::string_view request) const;

  /// Adds the answer to a request. A refusal is written only when the recording is complete: a recording that
  /// goes on asks once more. Throws Failure if FILE.part cannot be written.
  void Add(std::string_view request, RecordedAnswer answer);

  std::size_t Answers() const noexcept { return answers_.size(); }
  std::size_t Refusals() const noexcept;

  /// Writes the refusals and renames FILE.part to FILE. Throws Failure if that fails, also if FILE exists
  /// by now.
  void Place();

 private:
  void Claim();
  void RemoveCutEntry();
  void ReadAnswers(const ExchangeHeader& header);
  void Write(const std::string& line);
  [[noreturn]] void Fail(std::string_view reason, std::string_view whatToDo) const;

  std::filesystem::path file_;
  std::filesystem::path part_;
  files::SystemFileOperations operations_;
  files::FileDescriptor claim_;
  std::ofstream lines_;
  std::map<std::string, RecordedAnswer, std::less<>> answers_;
  std::size_t continued_ = 0;
  bool entryWasCut_ = false;
  bool begunAnew_ = false;
};

}  // namespace krnqb::cli
