// Imports repeated in one process: neither memory nor handles may grow with their number.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>

#include "host/component.h"
#include "host/library.h"
#include "process_use.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

constexpr std::size_t allowedGrowth = std::size_t{64} * 1024;

const RecordedImport import{"1.1", "ald", "all"};

int Repetitions() {
  const char* set = std::getenv("KRNQB_REPETITIONS");
  return set == nullptr ? 50 : std::atoi(set);
}

void Import(const Exchange& exchange) {
  const auto plan = std::make_shared<PlanState>("recordings\\ald.kpf");
  Configure(exchange, import, NewHostPlan(plan).Get());
  VARIANT_BOOL imported = VARIANT_FALSE;
  ASSERT_EQ(S_OK, exchange->Go(&imported));
  ASSERT_EQ(VARIANT_TRUE, imported);
  ASSERT_EQ(import.Cells(), plan->tables.Cells());
  ASSERT_EQ(S_OK, exchange->putref_KRNPlanData(Value().Raw()));
}

long long Difference(std::size_t after, std::size_t before) {
  return static_cast<long long>(after) - static_cast<long long>(before);
}

// Repeats, and compares what the process holds after a tenth of the repetitions with what it holds at the
// end.
void ExpectNoGrowth(const char* what, const std::function<void()>& repeated) {
  const int repetitions = Repetitions();
  const int first = repetitions / 10;
  ASSERT_GT(first, 0);
  ProcessUse early;
  for (int number = 1; number <= repetitions; ++number) {
    repeated();
    if (::testing::Test::HasFatalFailure()) return;
    if (number == first) early = OwnUse();
  }
  const ProcessUse late = OwnUse();
  std::printf("%s after %d and %d: heap %zu and %zu bytes, private %zu and %zu bytes, handles %d and %d\n",
              what, first, repetitions, early.heapBytes, late.heapBytes, early.privateBytes,
              late.privateBytes, early.handles, late.handles);
  EXPECT_LT(Difference(late.heapBytes, early.heapBytes), static_cast<long long>(allowedGrowth));
  EXPECT_EQ(early.handles, late.handles);
}

TEST(Repetition, OneObjectImportsAgainAndAgain) {
  const Replaying recording(Utf16(import.Name()));
  const Exchange exchange = NewExchange();
  ExpectNoGrowth("one object", [&] { Import(exchange); });
}

TEST(Repetition, ManyObjectsImport) {
  const Replaying recording(Utf16(import.Name()));
  ExpectNoGrowth("objects", [] { Import(NewExchange()); });
}

// Keeps a library of the system loaded: what it loses by itself when it is unloaded does not count here.
class Pinned {
 public:
  explicit Pinned(const wchar_t* library) : module_(LoadLibraryW(library)) {}
  ~Pinned() { FreeLibrary(module_); }
  Pinned(const Pinned&) = delete;
  Pinned& operator=(const Pinned&) = delete;

 private:
  HMODULE module_;
};

TEST(Repetition, TheLibraryIsLoadedAgainAndAgain) {
  const Replaying recording(Utf16(import.Name()));
  const Pinned dialogs(L"comdlg32.dll");
  CoFreeUnusedLibrariesEx(0, 0);
  ExpectNoGrowth("loads", [] {
    {
      const Library library;
      Import(library.New<_QBDataExchange>(CLSID_QBDataExchange));
    }
    ASSERT_EQ(nullptr, GetModuleHandleW(L"KRN6_QB2002.dll"));
  });
}

TEST(Repetition, TheLibraryIsLoadedAgainAndAgainForNothing) {
  const Pinned dialogs(L"comdlg32.dll");
  CoFreeUnusedLibrariesEx(0, 0);
  ExpectNoGrowth("unused loads", [] { const Library library; });
}

}  // namespace
}  // namespace krnqb::testing
