#include "com/registration/component_keys.h"

#include <gtest/gtest.h>

#include <cstring>

#include <map>
#include <optional>
#include <string>

#include "krnqb/error.h"

namespace krnqb::com {
namespace {

using Values = std::map<std::wstring, std::wstring>;
using Keys = std::map<std::wstring, Values>;

constexpr std::int32_t accessDenied = -2147024891;
constexpr RegistryHive machine = RegistryHive::LocalMachine;
constexpr RegistryHive user = RegistryHive::CurrentUser;

constexpr std::uint32_t textType = 1;

StoredValue Stored(const std::wstring& text) {
  StoredValue stored{textType, std::vector<std::byte>(text.size() * sizeof(wchar_t))};
  std::memcpy(stored.bytes.data(), text.data(), stored.bytes.size());
  return stored;
}

std::wstring TextOf(const StoredValue& stored) {
  std::wstring text(stored.bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), stored.bytes.data(), stored.bytes.size());
  return text;
}

// An in-memory registry that can refuse writes.
class FakeRegistry final : public RegistryWriter {
 public:
  void Create(RegistryHive hive, const std::wstring& key) override {
    Refuse(hive);
    hives[hive][key];
  }
  void Write(RegistryHive hive, const std::wstring& key, const std::wstring& name,
             const std::wstring& value) override {
    Refuse(hive);
    hives[hive].at(key)[name] = value;
  }
  void Restore(RegistryHive hive, const std::wstring& key, const std::wstring& name,
               const StoredValue& value) override {
    hives[hive].at(key)[name] = TextOf(value);
  }
  std::optional<StoredValue> Read(RegistryHive hive, const std::wstring& key,
                                  const std::wstring& name) override {
    if (!Has(hive, key) || !hives[hive][key].contains(name)) return std::nullopt;
    return Stored(hives[hive][key][name]);
  }
  bool Has(RegistryHive hive, const std::wstring& key) override { return hives[hive].contains(key); }
  void RemoveValue(RegistryHive hive, const std::wstring& key, const std::wstring& name) override {
    RefuseRemoval(hive);
    if (Has(hive, key)) hives[hive][key].erase(name);
  }
  void RemoveEmptyKey(RegistryHive hive, const std::wstring& key) override {
    RefuseRemoval(hive);
    Keys& keys = hives[hive];
    if (!Has(hive, key) || !keys[key].empty()) return;
    const auto next = keys.upper_bound(key + L"\\");
    const bool hasKeys = next != keys.end() && next->first.starts_with(key + L"\\");
    if (!hasKeys) keys.erase(key);
  }

  std::map<RegistryHive, Keys> hives;
  bool machineRefuses = false;
  bool machineRefusesRemoval = false;
  std::optional<int> writesUntilRefusal;

 private:
  void Refuse(RegistryHive hive) {
    if (hive == machine && machineRefuses) throw Error(accessDenied);
    if (writesUntilRefusal && (*writesUntilRefusal)-- == 0) throw Error(accessDenied);
  }
  void RefuseRemoval(RegistryHive hive) const {
    if (hive == machine && machineRefusesRemoval) throw Error(accessDenied);
  }
};

Registration Own() {
  return RegistrationOf(L"C:\\Programs\\Planner\\KRN6_QB2002.dll");
}

// Registers what a library of the other architecture adds to the shared keys.
void RegisterOther(FakeRegistry& registry, const Registration& own) {
  for (const RegisteredKey& key : own.keys) {
    if (!key.isShared) continue;
    Values& values = registry.hives[machine][key.path];
    if (key.HasValue()) values[key.name] = key.value;
  }
  registry.hives[machine][own.otherServerKey][L""] = L"C:\\Programs\\Other\\KRN6_QB2002.dll";
}

TEST(Register, WritesEveryKeyForAllUsers) {
  FakeRegistry registry;
  Register(registry, Own());
  EXPECT_TRUE(registry.hives[user].empty());
  for (const RegisteredKey& key : Own().keys) {
    ASSERT_TRUE(registry.Has(machine, key.path));
    if (key.HasValue()) {
      EXPECT_EQ(key.value, registry.hives[machine][key.path][key.name]);
    }
  }
}

TEST(Register, NamesTheServerByItsFullPath) {
  FakeRegistry registry;
  Register(registry, Own());
  int servers = 0;
  for (const auto& [path, values] : registry.hives[machine]) {
    if (!path.ends_with(L"InprocServer32")) continue;
    ++servers;
    EXPECT_EQ(L"C:\\Programs\\Planner\\KRN6_QB2002.dll", values.at(L""));
    EXPECT_EQ(L"Apartment", values.at(L"ThreadingModel"));
  }
  EXPECT_EQ(2, servers);
}

TEST(Register, WritesEveryKeyForOneUserIfTheMachineHiveRefuses) {
  FakeRegistry registry;
  registry.machineRefuses = true;
  Register(registry, Own());
  EXPECT_TRUE(registry.hives[machine].empty());
  for (const RegisteredKey& key : Own().keys) EXPECT_TRUE(registry.Has(user, key.path));
}

TEST(Register, LeavesNothingBehindIfALaterWriteIsRefused) {
  for (const int written : {3, 10, 40}) {
    FakeRegistry registry;
    registry.writesUntilRefusal = written;
    try {
      Register(registry, Own());
      FAIL() << "nothing was refused after " << written;
    } catch (const Error& error) {
      EXPECT_EQ(accessDenied, error.Number());
    }
    EXPECT_TRUE(registry.hives[machine].empty()) << written;
    EXPECT_TRUE(registry.hives[user].empty()) << written;
  }
}

// Registers at `path`, and refuses every write after the first `written` ones.
void ExpectRefusal(FakeRegistry& registry, const wchar_t* path, int written) {
  registry.writesUntilRefusal = written;
  try {
    Register(registry, RegistrationOf(path));
    FAIL() << "nothing was refused after " << written;
  } catch (const Error& error) {
    EXPECT_EQ(accessDenied, error.Number());
  }
  registry.writesUntilRefusal.reset();
}

TEST(Register, LeavesAnEarlierRegistrationWholeIfALaterWriteIsRefused) {
  for (const bool forOneUser : {false, true}) {
    for (const int written : {3, 4, 5, 10, 30}) {
      FakeRegistry registry;
      registry.machineRefuses = forOneUser;
      Register(registry, Own());
      const RegistryHive hive = forOneUser ? user : machine;
      // The registration before had no such key, and a value of its own.
      registry.hives[hive].erase(Own().keys[6].path);
      registry.hives[hive][Own().keys.front().path][L""] = L"an earlier description";
      const auto before = registry.hives;
      ExpectRefusal(registry, L"D:\\Elsewhere\\KRN6_QB2002.dll", written);
      EXPECT_EQ(before.at(hive), registry.hives[hive]) << written;
    }
  }
}

TEST(Register, LeavesKeysOfOthersIfALaterWriteIsRefused) {
  FakeRegistry registry;
  RegisterOther(registry, Own());
  const std::wstring own = Own().keys.front().path;
  registry.hives[machine][own];
  registry.hives[machine][L"CLSID"];
  registry.hives[machine][own + L"\\Notes"][L""] = L"a key of somebody else's";
  const Keys before = registry.hives[machine];
  ExpectRefusal(registry, L"D:\\Elsewhere\\KRN6_QB2002.dll", 20);
  EXPECT_EQ(before, registry.hives[machine]);
}

TEST(Unregister, RemovesAUsersKeysWhereTheMachinesKeysRefuse) {
  FakeRegistry registry;
  Register(registry, Own());
  registry.machineRefuses = true;
  Register(registry, Own());
  ASSERT_FALSE(registry.hives[user].empty());
  registry.machineRefusesRemoval = true;
  const Keys before = registry.hives[machine];
  try {
    Unregister(registry, Own());
    FAIL() << "the refusal was not reported";
  } catch (const Error& error) {
    EXPECT_EQ(accessDenied, error.Number());
  }
  EXPECT_FALSE(registry.Has(user, Own().ownServerKey));
  EXPECT_FALSE(registry.Has(user, Own().keys.front().path));
  EXPECT_EQ(before, registry.hives[machine]);
}

TEST(Unregister, RemovesEveryKeyThatRegisterWrote) {
  for (const bool refuses : {false, true}) {
    FakeRegistry registry;
    registry.machineRefuses = refuses;
    Register(registry, Own());
    Unregister(registry, Own());
    EXPECT_TRUE(registry.hives[machine].empty());
    EXPECT_TRUE(registry.hives[user].empty());
  }
}

TEST(Unregister, LeavesKeysAndValuesOfOthers) {
  FakeRegistry registry;
  registry.hives[machine][L"CLSID\\{other}"][L""] = L"another class";
  Register(registry, Own());
  const std::wstring own = Own().keys.front().path;
  registry.hives[machine][own + L"\\Notes"][L""] = L"a key of somebody else's";
  registry.hives[machine][own][L"note"] = L"a value of somebody else's";
  Unregister(registry, Own());
  const Keys left{{L"CLSID\\{other}", {{L"", L"another class"}}},
                  {own, {{L"note", L"a value of somebody else's"}}},
                  {own + L"\\Notes", {{L"", L"a key of somebody else's"}}}};
  EXPECT_EQ(left, registry.hives[machine]);
}

TEST(Unregister, KeepsSharedKeysWhileTheOtherArchitectureIsRegistered) {
  FakeRegistry registry;
  RegisterOther(registry, Own());
  const Keys before = registry.hives[machine];
  Register(registry, Own());
  Unregister(registry, Own());
  EXPECT_EQ(before, registry.hives[machine]);
}

TEST(RegisterInOneHive, WritesTheKeysOfThatHiveAlone) {
  FakeRegistry both;
  Register(both, Own());
  FakeRegistry registry;
  Register(registry, Own(), user);
  EXPECT_TRUE(registry.hives[machine].empty());
  EXPECT_EQ(both.hives[machine], registry.hives[user]);
}

TEST(RegisterInOneHive, DoesNotTurnToTheUserIfTheMachineHiveRefuses) {
  FakeRegistry registry;
  registry.machineRefuses = true;
  try {
    Register(registry, Own(), machine);
    FAIL() << "nothing was refused";
  } catch (const Error& error) {
    EXPECT_EQ(accessDenied, error.Number());
  }
  EXPECT_TRUE(registry.hives[user].empty());
}

TEST(UnregisterInOneHive, LeavesTheOtherHive) {
  for (const RegistryHive hive : {machine, user}) {
    FakeRegistry registry;
    Register(registry, Own(), machine);
    Register(registry, Own(), user);
    const RegistryHive other = hive == machine ? user : machine;
    const Keys before = registry.hives[other];
    Unregister(registry, Own(), hive);
    EXPECT_TRUE(registry.hives[hive].empty());
    EXPECT_EQ(before, registry.hives[other]);
  }
}

TEST(UnregisterInOneHive, RemovesTheKeysAboveOnlyIfTheyAreEmpty) {
  FakeRegistry registry;
  for (const wchar_t* group : {L"CLSID", L"Interface", L"TypeLib"}) registry.hives[user][group];
  registry.hives[user][L"Interface\\{other}"];
  Register(registry, Own(), user);
  Unregister(registry, Own(), user);
  EXPECT_EQ((Keys{{L"Interface", {}}, {L"Interface\\{other}", {}}}), registry.hives[user]);
}

TEST(UnregisterInOneHive, LeavesALibraryInAnotherFolderRegistered) {
  FakeRegistry registry;
  Register(registry, RegistrationOf(L"D:\\Elsewhere\\KRN6_QB2002.dll"), machine);
  const Keys before = registry.hives[machine];
  Unregister(registry, Own(), machine);
  EXPECT_EQ(before, registry.hives[machine]);
}

TEST(UnregisterInOneHive, KnowsItsOwnPathInOtherLetterCase) {
  FakeRegistry registry;
  Register(registry, RegistrationOf(L"c:\\programs\\PLANNER\\krn6_qb2002.DLL"), machine);
  Unregister(registry, Own(), machine);
  EXPECT_TRUE(registry.hives[machine].empty());
}

TEST(Unregister, DoesNothingIfTheLibraryIsNotRegistered) {
  FakeRegistry registry;
  RegisterOther(registry, Own());
  const Keys before = registry.hives[machine];
  Unregister(registry, Own());
  EXPECT_EQ(before, registry.hives[machine]);
}

}  // namespace
}  // namespace krnqb::com
