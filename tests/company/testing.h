#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "company/file.h"
#include "krnqb/error.h"
#include "qbxml/envelope.h"

namespace krnqb::company::testing {

/// A folder of a test's own, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "krnqb-company-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw Error(error_number::unspecified, "no temporary folder");
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::filesystem::path File(std::string_view name) const { return path_ / name; }

  std::vector<std::string> FileNames() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
      names.push_back(entry.path().filename());
    return names;
  }

 private:
  std::filesystem::path path_;
};

inline std::string ReadBytes(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return std::move(bytes).str();
}

inline void WriteBytes(const std::filesystem::path& file, std::string_view bytes) {
  std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

/// A request document with these messages in the envelope of that version.
inline std::string Request(std::string_view version, std::string_view messages) {
  return EnvelopeHead(version) + "\r\n" + std::string(messages) + "\r\n" + EnvelopeTail();
}

/// A response document with these answers.
inline std::string Response(std::string_view answers) {
  return "<?xml version=\"1.0\" ?>\n<QBXML>\n<QBXMLMsgsRs>\n" + std::string(answers) +
         "</QBXMLMsgsRs>\n</QBXML>\n";
}

/// What there is to know of an account besides its id: as short as it can be loaded.
inline std::string Account(std::string_view id, std::string_view type, std::string_view parent = {}) {
  std::string account = "<AccountRet>\n<ListID>" + std::string(id) + "</ListID>\n";
  if (!parent.empty()) account += "<ParentRef>\n<ListID>" + std::string(parent) + "</ListID>\n</ParentRef>\n";
  return account + "<AccountType>" + std::string(type) + "</AccountType>\n</AccountRet>\n";
}

inline std::string Accounts(std::string_view records) {
  return Response("<AccountQueryRs>\n" + std::string(records) + "</AccountQueryRs>\n");
}

/// The texts of all elements of a name in an answer, in order.
inline std::vector<std::string> TextsOf(const std::string& answer, const std::string& path) {
  std::vector<std::string> texts;
  for (const XmlElement& element : XmlElement::Parse(answer).SelectAll(path)) texts.push_back(element.Text());
  return texts;
}

/// The error of an operation that must fail.
template <typename Operation>
Error ErrorOf(Operation&& operation) {
  try {
    std::forward<Operation>(operation)();
  } catch (const Error& error) {
    return error;
  }
  ADD_FAILURE() << "the operation did not fail";
  return Error(0, "");
}

/// A test with a new company of its own, whose fiscal year begins in April.
class CompanyTest : public ::testing::Test {
 protected:
  CompanyFile NewCompany(std::string_view processorVersion) {
    return CompanyFile::Create(folder.File("company.qbw"), "Green Nursery", 4, processorVersion);
  }

  TemporaryFolder folder;
};

}  // namespace krnqb::company::testing
