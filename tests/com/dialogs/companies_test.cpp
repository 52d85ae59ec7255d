// The list of company files, from the folder that the registry gives for QuickBooks.
#include <gtest/gtest.h>

#include "host/component.h"
#include "person.h"
#include "registry_values.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

const wchar_t* const programKey = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\qbw32.exe";

// Returns the list as text without the line breaks and indents that some systems write, or nothing if the
// list is missing.
std::optional<std::wstring> Companies() {
  const Exchange exchange = NewExchange();
  Held<IDispatch> list;
  EXPECT_EQ(S_OK, exchange->get_QBCompanies(list.Receive()));
  if (!list) return std::nullopt;
  std::wstring text = LateBound(list).Read(L"xml").value.AsText();
  std::erase_if(text, [](wchar_t unit) { return unit == L'\r' || unit == L'\n' || unit == L'\t'; });
  return text;
}

std::wstring NewFolder(const wchar_t* name, const std::vector<std::wstring>& files) {
  wchar_t current[MAX_PATH];
  const std::wstring folder = std::wstring(current, GetCurrentDirectoryW(MAX_PATH, current)) + L'\\' + name;
  CreateDirectoryW(folder.c_str(), nullptr);
  for (const std::wstring& file : files) {
    CloseHandle(
        CreateFileW((folder + L'\\' + file).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  }
  return folder;
}

std::wstring Company(const std::wstring& folder, const std::wstring& name) {
  return L"<company><name><![CDATA[" + name + L"]]></name><fullpath><![CDATA[" + folder + L'\\' + name +
         L"]]></fullpath></company>";
}

TEST(Companies, AreTheCompanyFilesInTheFolderSortedByName) {
  const std::wstring folder = NewFolder(
      L"QuickBooks Pr\u00f6", {L"B.QBW", L"a.qbw", L"caf\u00e9 \u20ac.Qbw", L"notes.txt", L"a.qbw.bak"});
  CreateDirectoryW((folder + L"\\folder.qbw").c_str(), nullptr);
  const RegistryValue program(programKey, L"", folder + L"\\qbw32.exe");
  EXPECT_EQ(L"<qbcompanies>" + Company(folder, L"a.qbw") + Company(folder, L"B.QBW") +
                Company(folder, L"caf\u00e9 \u20ac.Qbw") + L"</qbcompanies>",
            Companies());
}

TEST(Companies, AreAnEmptyListIfTheFolderHasNone) {
  const RegistryValue program(programKey, L"", NewFolder(L"empty", {L"notes.txt"}) + L"\\qbw32.exe");
  EXPECT_EQ(L"<qbcompanies/>", Companies());
}

TEST(Companies, AreMissingWithoutQuickBooks) {
  EXPECT_EQ(std::nullopt, Companies());
}

TEST(Companies, AreMissingIfTheProgramPathHasNoFolder) {
  const RegistryValue program(programKey, L"", std::wstring(L"qbw32.exe"));
  EXPECT_EQ(std::nullopt, Companies());
}

TEST(Companies, AreMissingIfTheFolderDoesNotExist) {
  const RegistryValue program(programKey, L"", std::wstring(L"C:\\not there\\qbw32.exe"));
  EXPECT_EQ(std::nullopt, Companies());
}

TEST(Companies, AreMissingIfTheRegistryValueIsANumber) {
  const DWORD number = 7;
  const RegistryValue program(programKey, L"", REG_DWORD, &number, sizeof(number));
  EXPECT_EQ(std::nullopt, Companies());
}

TEST(Companies, IncludeANameWithBrackets) {
  const std::wstring folder = NewFolder(L"broken", {L"a.qbw", L"b]].qbw"});
  const RegistryValue program(programKey, L"", folder + L"\\qbw32.exe");
  EXPECT_EQ(L"<qbcompanies>" + Company(folder, L"a.qbw") + Company(folder, L"b]].qbw") + L"</qbcompanies>",
            Companies());
}

}  // namespace
}  // namespace krnqb::testing
