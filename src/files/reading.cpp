#include "files/reading.h"

#include "files/input_file.h"

namespace krnqb::files {

FileStamp StampFrom(const struct stat& status) noexcept {
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

FileContents ReadFile(const std::filesystem::path& file, std::string_view failure) {
  SystemFileOperations operations;
  return ReadFile(file, failure, operations);
}

FileContents ReadFile(const std::filesystem::path& file, std::string_view failure,
                      FileOperations& operations) {
  InputFile input(file, {.pipes = false, .failure = failure, .interrupted = {}}, operations);
  std::string bytes = input.ReadAll(documentLimit);
  return {std::move(bytes), input.Stamp()};
}

std::string ReadDocument(const std::filesystem::path& document, const InterruptQuery& interrupted) {
  SystemFileOperations operations;
  return InputFile(document, {.pipes = true, .failure = {}, .interrupted = interrupted}, operations)
      .ReadAll(documentLimit);
}

std::optional<FileStamp> StampOf(const std::filesystem::path& file) noexcept {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) return std::nullopt;
  return StampFrom(status);
}

}  // namespace krnqb::files
