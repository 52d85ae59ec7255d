#include "cli/record/partial_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "cli/console/attempt.h"
#include "cli/console/failure.h"
#include "cli/console/interrupt_watch.h"
#include "cli/record/span.h"
#include "files/fault.h"
#include "files/input_buffer.h"
#include "plan_file/headings.h"
#include "qbxml/exchange_recording.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view failed = "recording failed";
constexpr mode_t forItsOwner = 0600;

// Returns how many bytes a file has up to the end of its last complete line.
std::uintmax_t CompleteBytes(const std::filesystem::path& file) {
  std::ifstream bytes(file, std::ios::binary);
  std::array<char, 65536> part{};
  std::uintmax_t read = 0;
  std::uintmax_t complete = 0;
  while (bytes.read(part.data(), part.size()) || bytes.gcount() > 0) {
    const std::string_view text(part.data(), static_cast<std::size_t>(bytes.gcount()));
    const std::size_t lineEnd = text.rfind('\n');
    if (lineEnd != std::string_view::npos) complete = read + lineEnd + 1;
    read += text.size();
  }
  return complete;
}

std::string SpanText(const ExchangeHeader& header) {
  if (!header.span) return "one import";
  return fmt::format("{} for plans from {}", MonthsText(header.span->from, header.span->to),
                     plan_file::MonthOfYear(header.span->planStart));
}

std::string HeaderText(const ExchangeHeader& header) {
  return fmt::format("{} ({}, qbXML {}.{})", SpanText(header), header.company, header.processor.major,
                     header.processor.minor);
}

bool SameRecording(const ExchangeHeader& one, const ExchangeHeader& other) {
  return one.company == other.company && one.processor == other.processor && one.span == other.span;
}

}  // namespace

PartialFile::PartialFile(std::filesystem::path file)
    : file_(std::move(file)), part_(files::WithSuffix(file_, ".part")) {}

PartialFile::~PartialFile() {
  const bool empty = claim_ && begunAnew_ && answers_.empty();
  lines_.close();
  if (empty) operations_.Remove(part_);
}

void PartialFile::Fail(std::string_view reason, std::string_view whatToDo) const {
  throw CommandFailure(failed, fmt::format("{} {}", TextOfPath(part_), reason), whatToDo);
}

void PartialFile::Begin(const ExchangeHeader& header) {
  Claim();
  RemoveCutEntry();
  std::error_code unknown;
  begunAnew_ = std::filesystem::file_size(part_, unknown) == 0;
  if (!begunAnew_) ReadAnswers(header);
  continued_ = answers_.size();
  lines_.open(part_, std::ios::binary | std::ios::app);
  if (begunAnew_) Write(ExchangeHeaderLine(header));
}

void PartialFile::Claim() {
  std::error_code unknown;
  const bool exists =
      std::filesystem::symlink_status(part_, unknown).type() != std::filesystem::file_type::not_found;
  std::error_code failure = exists ? operations_.OpenLockFile(part_, claim_)
                                   : operations_.CreateTemporary(part_, forItsOwner, claim_);
  if (exists && !failure) failure = claim_.Lock();
  if (!failure) return;
  claim_ = files::FileDescriptor();
  if (failure == std::errc::device_or_resource_busy)
    Fail("is being written by another recording", "wait until that has ended");
  if (failure == std::errc::too_many_symbolic_link_levels || failure == std::errc::invalid_argument)
    Fail("is not a regular file", "move it away, or give another --out");
  Fail(fmt::format("cannot be written: {}", files::ReasonText(failure)), files::FileAdvice(failure));
}

void PartialFile::RemoveCutEntry() {
  std::error_code failure;
  const std::uintmax_t size = std::filesystem::file_size(part_, failure);
  if (failure || size == 0) return;
  const std::uintmax_t complete = CompleteBytes(part_);
  if (complete == size) return;
  std::filesystem::resize_file(part_, complete, failure);
  if (failure) {
    Fail(fmt::format("ends in the middle of an answer and cannot be shortened: {}",
                     files::ReasonText(failure)),
         "remove it, or give another --out");
  }
  entryWasCut_ = true;
}

void PartialFile::ReadAnswers(const ExchangeHeader& header) {
  const std::string name = TextOfPath(part_);
  const ExchangeHeader recorded = Attempt(failed, fmt::format("remove {}, or give another --out", name), [&] {
    files::InputFile input(part_, {.interrupted = InterruptRequested}, operations_);
    files::InputBuffer buffer(input);
    std::istream lines(&buffer);
    lines.exceptions(std::ios::badbit);
    return ReadExchange(lines, name, [&](std::string&& request, RecordedAnswer&& answer) {
      answers_.insert_or_assign(std::move(request), std::move(answer));
    });
  });
  if (SameRecording(recorded, header)) return;
  Fail(fmt::format("is another recording, of {}; asked for is {}", HeaderText(recorded), HeaderText(header)),
       "remove it, or give another --out");
}

const RecordedAnswer* PartialFile::Find(std::string_view request) const {
  const auto found = answers_.find(request);
  return found == answers_.end() ? nullptr : &found->second;
}

void PartialFile::Add(std::string_view request, RecordedAnswer answer) {
  if (const auto* response = std::get_if<std::string>(&answer)) Write(RecordedAnswerLine(request, *response));
  answers_.insert_or_assign(std::string(request), std::move(answer));
}

std::size_t PartialFile::Refusals() const noexcept {
  return static_cast<std::size_t>(std::ranges::count_if(
      answers_, [](const auto& answer) { return std::holds_alternative<Error>(answer.second); }));
}

void PartialFile::Write(const std::string& line) {
  errno = 0;
  lines_ << line;
  lines_.flush();
  if (lines_) return;
  const std::error_code reason(errno == 0 ? EIO : errno, std::generic_category());
  Fail(fmt::format("could not be written: {}", files::ReasonText(reason)),
       fmt::format("{}, and run the same command again to go on", files::FileAdvice(reason)));
}

void PartialFile::Place() {
  for (const auto& [request, answer] : answers_) {
    if (const auto* refusal = std::get_if<Error>(&answer))
      Write(RecordedRefusalLine(request, refusal->Number(), refusal->Description()));
  }
  lines_.close();
  std::error_code failure = operations_.Sync(claim_);
  if (!failure) failure = operations_.RenameToNew(part_, file_);
  if (failure) {
    Fail(fmt::format("is complete but cannot be renamed to {}: {}", TextOfPath(file_),
                     files::ReasonText(failure)),
         "rename it yourself, or run the same command again");
  }
  claim_ = files::FileDescriptor();
  // The recording is whole; at worst a power failure takes its new name back.
  static_cast<void>(operations_.SyncFolder(file_.has_parent_path() ? file_.parent_path() : "."));
}

}  // namespace krnqb::cli
