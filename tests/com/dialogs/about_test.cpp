// The About box and the system-information tool that it starts.
#include <gtest/gtest.h>

#include "host/component.h"
#include "numbers.h"
#include "person.h"
#include "registry_values.h"

namespace krnqb::testing {
namespace {

const wchar_t* const caption = L"About KRN6_QB2002";
const wchar_t* const toolKey = L"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
const wchar_t* const folderKey = L"SOFTWARE\\Microsoft\\Shared Tools Location";
const std::vector<std::string> nothingSaid;

std::wstring CurrentFolder() {
  wchar_t folder[MAX_PATH];
  return {folder, GetCurrentDirectoryW(MAX_PATH, folder)};
}

std::wstring WideText(const char* path) {
  const std::string bytes = FileText(path);
  std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
  bytes.copy(reinterpret_cast<char*>(text.data()), text.size() * sizeof(wchar_t));
  return text;
}

bool Exists(const wchar_t* path) {
  return GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}

TEST(About, ShowsItsTexts) {
  Program host(L"krnqb_dialog_host.exe about");
  HWND window = host.Dialog(caption);
  EXPECT_EQ(L"KRN6_QB2002", TextOf(Control(window, aboutTitle)));
  EXPECT_EQ(L"Version " KRNQB_EXPECTED_VERSION, TextOf(Control(window, aboutVersion)));
  EXPECT_EQ(
      L"This component performs data exchabge between Inutuit's QuickBooks 2002 and Korrin Software's "
      L"Korrin Planner Pro 2002.",
      TextOf(Control(window, aboutDescription)));
  EXPECT_EQ(L"", TextOf(Control(window, aboutDisclaimer)));
  EXPECT_EQ(L"Icon", TextOf(Control(window, aboutIcon)));
  EXPECT_EQ(L"OK", TextOf(Control(window, aboutOk)));
  EXPECT_EQ(L"&System Info...", TextOf(Control(window, aboutSystemInformation)));
  EXPECT_EQ(std::vector<int>(), CutOff(window));
  Click(Control(window, aboutOk));
  EXPECT_EQ(nothingSaid, host.End());
}

TEST(About, IsClosedByEnterEscapeAndItsCloseButton) {
  for (void (*close)(HWND) :
       {+[](HWND /*window*/) { Press(VK_RETURN); }, +[](HWND /*window*/) { Press(VK_ESCAPE); }, &Close}) {
    Program host(L"krnqb_dialog_host.exe about");
    close(host.Dialog(caption));
    EXPECT_EQ(nothingSaid, host.End());
  }
}

// Puts the tool into a folder with a blank in its name, beside a decoy program named like the part before the
// blank.
struct Tool : ::testing::Test {
  Tool() {
    CreateDirectoryW(L"shared tools", nullptr);
    CopyFileW(L"krnqb_information_tool.exe", L"shared tools\\MSINFO32.EXE", FALSE);
    CopyFileW(L"krnqb_information_tool.exe", L"shared.exe", FALSE);
    DeleteFileW(L"shared tools\\MSINFO32.EXE.txt");
  }

  void ExpectStart() const {
    Program host(L"krnqb_dialog_host.exe about");
    HWND window = host.Dialog(caption);
    Click(Control(window, aboutSystemInformation));
    EXPECT_TRUE(Becomes([] { return FileText("shared tools\\MSINFO32.EXE.txt").size() > 40; }));
    EXPECT_EQ(L"\"" + folder + L"\\MSINFO32.EXE\"\nwindow 1\n", WideText("shared tools\\MSINFO32.EXE.txt"));
    EXPECT_FALSE(Exists(L"shared.exe.txt"));
    EXPECT_TRUE(host.Shows(caption));
    Click(Control(window, aboutOk));
    EXPECT_EQ(nothingSaid, host.End());
  }

  static void ExpectUnavailable() {
    Program host(L"krnqb_dialog_host.exe about");
    HWND window = host.Dialog(caption);
    Click(Control(window, aboutSystemInformation));
    HWND message = host.Dialog(L"");
    ASSERT_NE(nullptr, message);
    HWND text = FindWindowExW(message, nullptr, L"Static", L"System Information Is Unavailable At This Time");
    EXPECT_NE(nullptr, text);
    EXPECT_EQ(window, GetWindow(message, GW_OWNER));
    Press(VK_RETURN);
    EXPECT_TRUE(Becomes([window] { return IsWindowEnabled(window) != FALSE; }));
    Press(VK_ESCAPE);
    EXPECT_EQ(nothingSaid, host.End());
  }

  const std::wstring folder = CurrentFolder() + L"\\shared tools";
};

TEST_F(Tool, IsStartedByItsFullPathFromTheRegistry) {
  const RegistryValue path(toolKey, L"PATH", folder + L"\\MSINFO32.EXE");
  ExpectStart();
}

TEST_F(Tool, IsOtherwiseTheOneInTheSharedToolsFolder) {
  const RegistryValue path(folderKey, L"MSINFO", folder);
  ExpectStart();
}

TEST_F(Tool, IsUnavailableIfTheRegistryNamesNone) {
  ExpectUnavailable();
}

TEST_F(Tool, IsNotSearchedForByNameAlone) {
  const RegistryValue path(toolKey, L"PATH", std::wstring(L"krnqb_information_tool.exe"));
  ExpectUnavailable();
  EXPECT_FALSE(Exists(L"krnqb_information_tool.exe.txt"));
}

TEST_F(Tool, IsUnavailableIfItCannotBeStarted) {
  const RegistryValue path(toolKey, L"PATH", folder + L"\\missing.exe");
  ExpectUnavailable();
}

}  // namespace
}  // namespace krnqb::testing
