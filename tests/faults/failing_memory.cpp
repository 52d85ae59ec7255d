#include "faults/failing_memory.h"

#include <libxml/parser.h>
#include <libxml/xmlerror.h>
#include <libxml/xmlmemory.h>
#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <new>

namespace krnqb::faults {
namespace {

struct Counting {
  bool running = false;
  Allocator allocator = Allocator::New;
  Shortage shortage = Shortage::Passing;
  long failing = 0;
  long counted = 0;
  bool struck = false;
  long blocks = 0;
};
constinit Counting counting;
sqlite3_mem_methods databaseMemory{};

bool Fails(Allocator allocator) noexcept {
  if (!counting.running || counting.allocator != allocator) return false;
  ++counting.counted;
  const bool fails = counting.failing != 0 &&
                     (counting.counted == counting.failing ||
                      (counting.shortage == Shortage::Lasting && counting.counted > counting.failing));
  counting.struck = counting.struck || fails;
  return fails;
}

void* NewBlock(std::size_t size) noexcept {
  if (Fails(Allocator::New)) return nullptr;
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block != nullptr) ++counting.blocks;
  return block;
}

void ReleaseBlock(void* block) noexcept {
  if (block != nullptr) --counting.blocks;
  std::free(block);
}

void* XmlBlock(std::size_t size) {
  if (Fails(Allocator::Xml)) return nullptr;
  void* const block = std::malloc(size);
  if (block != nullptr) ++counting.blocks;
  return block;
}

void* XmlResized(void* block, std::size_t size) {
  if (block == nullptr) return XmlBlock(size);
  return Fails(Allocator::Xml) ? nullptr : std::realloc(block, size);
}

char* XmlCopy(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  void* const copy = XmlBlock(size);
  return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text, size));
}

void* DatabaseBlock(int size) {
  return Fails(Allocator::Database) ? nullptr : databaseMemory.xMalloc(size);
}

void* DatabaseResized(void* block, int size) {
  return Fails(Allocator::Database) ? nullptr : databaseMemory.xRealloc(block, size);
}

// The library prints to standard error otherwise.
void IgnoreMessage(void* /*context*/, const char* /*format*/, ...) {}

bool Installed() {
  // Disables the database's pool of small blocks, whose allocations would never fail.
  if (sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0) != SQLITE_OK) return false;
  if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &databaseMemory) != SQLITE_OK) return false;
  sqlite3_mem_methods failing = databaseMemory;
  failing.xMalloc = DatabaseBlock;
  failing.xRealloc = DatabaseResized;
  if (sqlite3_config(SQLITE_CONFIG_MALLOC, &failing) != SQLITE_OK) return false;
  if (xmlMemSetup(ReleaseBlock, XmlBlock, XmlResized, XmlCopy) != 0) return false;
  xmlInitParser();
  xmlSetGenericErrorFunc(nullptr, IgnoreMessage);
  return true;
}

// Before main, and so before either library is used.
const bool installed = Installed() || (std::abort(), false);

}  // namespace

FailingMemory::FailingMemory(Allocator allocator, long failing, Shortage shortage) noexcept {
  counting.allocator = allocator;
  counting.failing = failing;
  counting.shortage = shortage;
  counting.counted = 0;
  counting.struck = false;
  counting.running = true;
}

void FailingMemory::Stop() noexcept {
  counting.running = false;
}

long FailingMemory::Counted() noexcept {
  return counting.counted;
}

bool FailingMemory::Struck() noexcept {
  return counting.struck;
}

long BlocksInUse() noexcept {
  xmlResetLastError();  // the library keeps the texts of its last error
  return counting.blocks;
}

long long DatabaseBytesInUse() noexcept {
  return sqlite3_memory_used();
}

}  // namespace krnqb::faults

void* operator new(std::size_t size) {
  void* const block = krnqb::faults::NewBlock(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void* operator new[](std::size_t size) {
  return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return krnqb::faults::NewBlock(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return krnqb::faults::NewBlock(size);
}
void operator delete(void* block) noexcept {
  krnqb::faults::ReleaseBlock(block);
}
void operator delete[](void* block) noexcept {
  krnqb::faults::ReleaseBlock(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  krnqb::faults::ReleaseBlock(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
  krnqb::faults::ReleaseBlock(block);
}
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
  krnqb::faults::ReleaseBlock(block);
}
void operator delete[](void* block, const std::nothrow_t& /*tag*/) noexcept {
  krnqb::faults::ReleaseBlock(block);
}
