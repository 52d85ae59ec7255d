#include "setup/search_path.h"

#include <gtest/gtest.h>

#include "krnqb/error.h"

namespace krnqb::setup {
namespace {

constexpr const wchar_t* folder = L"C:\\Program Files\\krnqb";

struct Addition {
  ProgramPath before;
  std::wstring after;
};

const Addition additions[] = {
    {std::nullopt, L"C:\\Program Files\\krnqb"},
    {L"", L";C:\\Program Files\\krnqb"},
    {L"%SystemRoot%\\system32;C:\\Tools", L"%SystemRoot%\\system32;C:\\Tools;C:\\Program Files\\krnqb"},
    {L"C:\\Tools;", L"C:\\Tools;;C:\\Program Files\\krnqb"},
    {L"C:\\Tools;;", L"C:\\Tools;;;C:\\Program Files\\krnqb"},
    {L"\"C:\\a;b\"", L"\"C:\\a;b\";C:\\Program Files\\krnqb"},
    {L"C:\\Program Files\\krnqb 2", L"C:\\Program Files\\krnqb 2;C:\\Program Files\\krnqb"},
};

TEST(ProgramPath, HasAnAddedFolderLastAndIsAsBeforeWithoutIt) {
  for (const Addition& addition : additions) {
    ProgramPath path = addition.before;
    EXPECT_TRUE(AddFolder(path, folder));
    EXPECT_EQ(addition.after, path);
    EXPECT_TRUE(RemoveFolder(path, folder));
    EXPECT_EQ(addition.before, path);
    EXPECT_FALSE(RemoveFolder(path, folder));
    EXPECT_EQ(addition.before, path);
  }
}

TEST(ProgramPath, HasAFolderOnlyOnce) {
  for (const wchar_t* before : {L"C:\\Program Files\\krnqb", L"C:\\a;c:\\program files\\KRNQB\\;C:\\b",
                                L";C:\\Program Files\\krnqb\\"}) {
    ProgramPath path = before;
    EXPECT_FALSE(AddFolder(path, folder)) << before;
    EXPECT_EQ(before, path);
  }
}

TEST(ProgramPath, KeepsWhatOthersHaveAddedBehindTheFolder) {
  for (const auto& [before, after] : {std::pair{L"C:\\a;C:\\Program Files\\krnqb;C:\\b", L"C:\\a;C:\\b"},
                                      std::pair{L"C:\\Program Files\\krnqb;C:\\b", L"C:\\b"},
                                      std::pair{L"C:\\a;;C:\\Program Files\\krnqb;;", L"C:\\a;;;"}}) {
    ProgramPath path = before;
    EXPECT_TRUE(RemoveFolder(path, folder));
    EXPECT_EQ(after, path);
  }
}

TEST(ProgramPath, IsNeverCut) {
  ProgramPath path = std::wstring(longestPath - 1 - std::wstring(folder).size(), L'x');
  const ProgramPath before = path;
  EXPECT_TRUE(AddFolder(path, folder));
  EXPECT_EQ(longestPath, path->size());
  EXPECT_TRUE(RemoveFolder(path, folder));
  EXPECT_EQ(before, path);

  *path += L'x';
  const ProgramPath longer = path;
  EXPECT_THROW(AddFolder(path, folder), Error);
  EXPECT_EQ(longer, path);
}

TEST(ProgramPath, RefusesAFolderThatWouldBeTwo) {
  ProgramPath path = L"C:\\a";
  EXPECT_THROW(AddFolder(path, L"C:\\b;c"), Error);
  EXPECT_EQ(L"C:\\a", path);
}

}  // namespace
}  // namespace krnqb::setup
