#include "files/output_buffer.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace krnqb::files {
namespace {

// Keeps the parts that are written.
class RecordingOperations final : public SystemFileOperations {
 public:
  std::error_code WritePart(const FileDescriptor& /*file*/, std::string_view contents,
                            std::size_t& length) override {
    parts.emplace_back(contents);
    length = contents.size();
    return {};
  }

  std::vector<std::string> parts;
};

class WrittenParts : public testing::Test {
 protected:
  // Returns the parts in which a text is written that comes piece by piece, and is then flushed.
  static std::vector<std::string> Of(const std::vector<std::string>& pieces) {
    RecordingOperations operations;
    const FileDescriptor file = FileDescriptor::Open("/dev/null", O_WRONLY);
    OutputBuffer buffer(file, {}, operations);
    std::ostream stream(&buffer);
    for (const std::string& piece : pieces) stream << piece;
    stream.flush();
    EXPECT_TRUE(stream.good());
    return operations.parts;
  }
};

TEST_F(WrittenParts, EndWithWholeCharactersWhereverTheBufferIsFull) {
  for (const std::string_view character : {"é", "–", "😀"}) {
    for (std::size_t before = 4090; before <= 4097; ++before) {
      const std::string text = std::string(before, 'a') + std::string(character) + "b";
      const std::vector<std::string> parts = Of({text});
      std::string joined;
      for (const std::string& part : parts) {
        EXPECT_NE(static_cast<unsigned char>(part.front()) & 0xC0U, 0x80U) << before << ' ' << character;
        joined += part;
      }
      EXPECT_EQ(joined, text);
    }
  }
}

TEST_F(WrittenParts, AreWrittenAsTheyAreIfTheyAreNotText) {
  const std::string bytes(9000, '\xBF');
  const std::string starts(9000, '\xF0');
  for (const std::string& text : {bytes, starts}) {
    std::string joined;
    for (const std::string& part : Of({text})) joined += part;
    EXPECT_EQ(joined, text);
  }
}

TEST_F(WrittenParts, AreWrittenOnAFlushEvenIfACharacterIsNotComplete) {
  EXPECT_EQ(Of({"a\xC3"}), (std::vector<std::string>{"a\xC3"}));
}

}  // namespace
}  // namespace krnqb::files
