#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace krnqb::company {

/// How records of a kind are told apart and ordered.
enum class RecordShape {
  ListEntry,    ///< by ListID; parents before their children
  Transaction,  ///< by TxnID; by date
  Setting       ///< the company has one of it
};

/// A kind of record that a company keeps.
struct RecordKind {
  std::string_view element;  ///< the record's element name, such as "ItemServiceRet"
  std::string_view
      family;  ///< the kinds that one request asks for together, such as "Item" for "ItemQueryRq"
  RecordShape shape;
};

/// All kinds. Those of a family stand in the order in which the family's answer lists them.
std::span<const RecordKind> RecordKinds() noexcept;

/// The kind of an element name; null when the company keeps no such records.
const RecordKind* FindRecordKind(std::string_view element) noexcept;

/// The place of a kind in `RecordKinds`, counted from 0.
std::size_t KindOrder(const RecordKind& kind) noexcept;

/// The place of an account type in QuickBooks' account list, counted from 0; nothing for a type that is none.
std::optional<std::size_t> AccountTypeOrder(std::string_view accountType) noexcept;

/// Whether a child element of a transaction is one of its lines.
bool IsTransactionLine(std::string_view element) noexcept;

}  // namespace krnqb::company
