#include "files/reading.h"

#include "files/input_file.h"

namespace krnqb::files {

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

}  // namespace krnqb::files
