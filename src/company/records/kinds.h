#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace krnqb::company {

/// How records of a kind are identified and ordered.
enum class RecordShape {
  ListEntry,    ///< by ListID; parents before their children
  Transaction,  ///< by TxnID; by date
  Setting       ///< a single record per company
};

/// A kind of record that a company file stores.
struct RecordKind {
  std::string_view element;  ///< the record's element name, such as "ItemServiceRet"
  std::string_view family;   ///< the name shared by kinds with one request, such as "Item" of "ItemQueryRq"
  RecordShape shape;
};

/// Returns all kinds, within a family in the order of the family's answer.
std::span<const RecordKind> RecordKinds() noexcept;

/// Returns the kind with an element name; null if company files do not store such records.
const RecordKind* FindRecordKind(std::string_view element) noexcept;

/// Returns the index of a kind in `RecordKinds`.
std::size_t KindOrder(const RecordKind& kind) noexcept;

/// Returns the rank of an account type in QuickBooks' account list, from 0; nullopt for an unknown type.
std::optional<std::size_t> AccountTypeOrder(std::string_view accountType) noexcept;

/// Returns whether a child element of a transaction is one of its lines.
bool IsTransactionLine(std::string_view element) noexcept;

}  // namespace krnqb::company
