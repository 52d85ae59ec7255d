// Tests the lines that a debugger attached to the host receives. The fixture takes the debugger's place: it
// marks the process as debugged and handles the exceptions that contain the lines.
#include "com/debugger_observer.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <winternl.h>

#include <cstring>
#include <string>
#include <vector>

namespace krnqb::com {
namespace {

constexpr DWORD narrowLine = 0x40010006;
constexpr DWORD wideLine = 0x4001000A;

// An exception handler is a plain function.
std::vector<std::wstring>* receivedLines = nullptr;

LONG CALLBACK Receive(EXCEPTION_POINTERS* exception) {
  const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
  if (receivedLines == nullptr) return EXCEPTION_CONTINUE_SEARCH;
  if (record.ExceptionCode == wideLine) {
    receivedLines->emplace_back(reinterpret_cast<const wchar_t*>(record.ExceptionInformation[1]));
  } else if (record.ExceptionCode == narrowLine) {
    const auto* line = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
    std::wstring& received = receivedLines->emplace_back(std::strlen(line), L'\0');
    const int length = static_cast<int>(received.size());
    const int converted = MultiByteToWideChar(CP_ACP, 0, line, length, received.data(), length);
    received.resize(static_cast<std::size_t>(converted));
  } else {
    return EXCEPTION_CONTINUE_SEARCH;
  }
  return EXCEPTION_CONTINUE_EXECUTION;
}

class Debugged : public ::testing::Test {
 protected:
  Debugged() : handler_(AddVectoredExceptionHandler(1, Receive)) {
    receivedLines = &lines;
    Mark(TRUE);
  }
  ~Debugged() override {
    Mark(FALSE);
    RemoveVectoredExceptionHandler(handler_);
    receivedLines = nullptr;
  }

  static void Mark(BOOL isDebugged) {
    PROCESS_BASIC_INFORMATION process{};
    ASSERT_EQ(NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process,
                                        sizeof(process), nullptr),
              0);
    process.PebBaseAddress->BeingDebugged = static_cast<BYTE>(isDebugged);
  }
  void Notify(const Notice& notice) const { DebuggerObserver()->Notify(notice); }

  std::vector<std::wstring> lines;

 private:
  void* handler_;
};

TEST_F(Debugged, HostsSeeALineForEveryKindOfNotice) {
  struct Case {
    NoticeKind kind;
    const wchar_t* what;
  };
  const std::vector<Case> cases{{NoticeKind::StatementSkipped, L"skipped a statement"},
                                {NoticeKind::OperationEnded, L"ended early"},
                                {NoticeKind::AnswerStatus, L"was answered with a status"},
                                {NoticeKind::AnswerUnreadable, L"got an answer that is not a document"},
                                {NoticeKind::TableUnreadable, L"found a plan table unreadable"},
                                {NoticeKind::TablesNotLoaded, L"loaded no tables into the plan"},
                                {NoticeKind::AmountSkipped, L"left an amount out"},
                                {NoticeKind::AccountInSeveralRows, L"found an account in several rows"},
                                {NoticeKind::ColumnsMisaligned, L"found misaligned columns"},
                                {NoticeKind::PastPerformanceEnded, L"ended past performance"},
                                {NoticeKind::Warning, L"has a warning"},
                                {NoticeKind::CompanyFileUnlisted, L"could not list a company file"}};
  for (const Case& test : cases) {
    lines.clear();
    Notify({.kind = test.kind,
            .place = {.operation = Operation::Go},
            .number = 13,
            .description = "caf\xc3\xa9"});
    ASSERT_EQ(lines.size(), 1U) << static_cast<int>(test.kind);
    EXPECT_EQ(lines.front(), L"KRN6_QB2002: Go " + std::wstring(test.what) + L" (13): caf\u00e9\n");
  }
}

TEST_F(Debugged, HostsSeeARefusalOnceAsTheEndOfItsOperation) {
  Notify({.kind = NoticeKind::RequestRefused, .number = 13, .description = "refused"});
  EXPECT_TRUE(lines.empty());
}

TEST_F(Debugged, HostsSeeTheWordsOfAWarning) {
  Notice notice{.kind = NoticeKind::Warning};
  notice.place.operation = Operation::Go;
  notice.finding = Finding{.code = WarningCode::NoRow, .name = "Rent", .amount = 12.5};
  Notify(notice);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_TRUE(lines.front().starts_with(L"KRN6_QB2002: Go has a warning (0): ")) << lines.front().size();
  EXPECT_NE(lines.front().find(L"Rent"), std::wstring::npos);
}

TEST_F(Debugged, NothingIsWrittenWithoutADebugger) {
  Mark(FALSE);
  Notify({.kind = NoticeKind::OperationEnded, .number = 13, .description = "ended"});
  EXPECT_TRUE(lines.empty());
}

}  // namespace
}  // namespace krnqb::com
