#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "krnqb/outside_world.h"

namespace krnqb::fakes {

/// A registry in memory, with the local machine's hive only. Records the access masks of all reads.
class MemoryRegistry : public Registry {
 public:
  using Value = std::variant<std::string, std::uint32_t>;

  std::optional<Value> Read(RegistryHive hive, std::string_view key, std::string_view name,
                            std::uint32_t askedRights) override {
    rights.push_back(askedRights);
    const auto value = values.find({std::string(key), std::string(name)});
    if (hive != RegistryHive::LocalMachine || value == values.end()) return std::nullopt;
    return value->second;
  }

  std::map<std::pair<std::string, std::string>, Value> values;  // by key and name
  std::vector<std::uint32_t> rights;
};

}  // namespace krnqb::fakes
