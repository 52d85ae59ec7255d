#include "files/input_file.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "files/fault.h"
#include "files/status.h"
#include "support/path_text.h"

namespace krnqb::files {
namespace {

constexpr std::size_t partSize = 65536;

std::string SizeText(std::uint64_t bytes) {
  constexpr std::uint64_t kibibyte = 1024;
  constexpr std::uint64_t gibibyte = kibibyte * kibibyte * kibibyte;
  return bytes >= gibibyte ? fmt::format("{} GiB", bytes / gibibyte)
                           : fmt::format("{} KiB", bytes / kibibyte);
}

}  // namespace

InputFile::InputFile(std::filesystem::path file, ReadingRules rules, FileOperations& operations)
    : file_(std::move(file)), rules_(std::move(rules)), operations_(operations) {
  if (const std::error_code failure = operations_.OpenForReading(file_, opened_)) Fail(failure);
  FileStatus status;
  if (const std::error_code failure = StatusOf(opened_.Number(), status)) Fail(failure);
  if (status.type == FileType::Folder) Fail(std::make_error_code(std::errc::is_a_directory));
  const bool device = status.type == FileType::CharacterDevice || status.type == FileType::BlockDevice;
  if (device) Fail("it is a device", "give the path of a file");
  const bool readable = status.type == FileType::Regular || (rules_.pipes && status.type == FileType::Pipe);
  if (!readable) Fail("it is not a regular file", "give the path of a regular file");
  stamp_ = status.stamp;
  if (status.type == FileType::Regular) position_ = 0;
}

void InputFile::Limit(std::uint64_t limit) {
  limit_ = limit;
  if (static_cast<std::uint64_t>(stamp_.size) >= limit_) RefuseSize();
}

void InputFile::Seek(std::uint64_t position) {
  if (const std::error_code failure = operations_.Seek(opened_, position)) Fail(failure);
  position_ = position;
}

std::size_t InputFile::Read(std::span<char> part) {
  const std::size_t length = ReadSome(part);
  read_ += length;
  if (read_ >= limit_) RefuseSize();
  return length;
}

std::size_t InputFile::ReadSome(std::span<char> part) {
  StopIfInterrupted(rules_.interrupted);
  // Without this, a pipe that no program has opened yet would look like an empty one.
  if (rules_.pipes) WaitFor(opened_, Readiness::ToRead, rules_.interrupted);
  for (;;) {
    std::size_t length = 0;
    const std::error_code failure = operations_.Read(opened_, part, length);
    if (!failure) {
      if (position_) *position_ += length;
      return length;
    }
    if (failure == std::errc::resource_unavailable_try_again) {
      WaitFor(opened_, Readiness::ToRead, rules_.interrupted);
    } else if (failure == std::errc::interrupted) {
      StopIfInterrupted(rules_.interrupted);
    } else {
      Fail(failure);
    }
  }
}

std::string InputFile::ReadAll(std::uint64_t limit) {
  Limit(limit);
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(stamp_.size));
  std::array<char, partSize> part{};
  while (const std::size_t length = Read(part)) bytes.append(part.data(), length);
  return bytes;
}

void InputFile::RefuseSize() const {
  Fail(fmt::format("it holds {} or more", SizeText(limit_)), "give a smaller file");
}

void InputFile::Fail(std::string_view reason, std::string_view advice) const {
  if (!rules_.failure.empty()) throw FileError(rules_.failure, file_, reason, advice);
  throw Error(error_number::unspecified, fmt::format("{}: {}", TextOfPath(file_), reason));
}

void InputFile::Fail(std::error_code reason) const {
  Fail(ReasonText(reason), FileAdvice(reason));
}

}  // namespace krnqb::files
