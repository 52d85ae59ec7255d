#include "cli/company/loaded_document.h"

#include <istream>
#include <span>
#include <utility>

#include "cli/company/recorded_documents.h"
#include "cli/console/interrupt_watch.h"
#include "files/input_buffer.h"
#include "support/path_text.h"

namespace krnqb::cli {

LoadedDocument::LoadedDocument(std::string name, files::FileOperations& operations)
    : name_(std::move(name)), operations_(operations) {
  std::unique_ptr<files::InputFile> opened = Open();
  if (opened->IsPipe()) pipe_ = std::move(opened);
}

company::LoadSummary LoadedDocument::LoadInto(company::CompanyFile& company,
                                              company::UnknownKinds unknownKinds) {
  const std::unique_ptr<files::InputFile> input = pipe_ ? std::move(pipe_) : Open();
  files::InputBuffer buffer(*input);
  buffer.sgetc();  // so that the buffer holds the beginning
  if (IsRecording(buffer.Held())) {
    std::istream recording(&buffer);
    recording.exceptions(std::ios::badbit);  // a failure to read is not the recording's end
    return LoadRecording(company, name_, recording, unknownKinds);
  }
  const auto read = [&](std::span<char> part) {
    return static_cast<std::size_t>(buffer.sgetn(part.data(), static_cast<std::streamsize>(part.size())));
  };
  return company.Load(name_, read, unknownKinds);
}

std::unique_ptr<files::InputFile> LoadedDocument::Open() const {
  auto opened = std::make_unique<files::InputFile>(
      PathFrom(name_), files::ReadingRules{.pipes = true, .failure = {}, .interrupted = InterruptRequested},
      operations_);
  opened->Limit(files::documentLimit);
  return opened;
}

}  // namespace krnqb::cli
