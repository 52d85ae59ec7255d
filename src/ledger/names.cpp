#include "ledger/names.h"

namespace krnqb::ledger {

NameStore::NameStore(const database::Connection& database)
    : insert_(database.Prepare("INSERT INTO name (id, text) VALUES (?1, ?2)")) {}

std::int64_t NameStore::IdOf(std::string_view text) {
  if (text.empty()) return 0;
  if (const auto found = ids_.find(text); found != ids_.end()) return found->second;
  const auto id = static_cast<std::int64_t>(ids_.size()) + 1;
  insert_.Bind(1, id).Bind(2, text).Run();
  ids_.emplace(text, id);
  return id;
}

NameReader::NameReader(const database::Connection& database)
    : select_(database.Prepare("SELECT text FROM name WHERE id = ?1")) {}

const std::string& NameReader::TextOf(std::int64_t id) {
  static const std::string missing;
  if (id == 0) return missing;
  if (const auto found = texts_.find(id); found != texts_.end()) return found->second;
  select_.Bind(1, id);
  std::string text(select_.Step() ? select_.Text(0) : std::string_view());
  select_.Reset();
  return texts_.emplace(id, std::move(text)).first->second;
}

}  // namespace krnqb::ledger
