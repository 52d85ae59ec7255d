#include "component/helper.h"

#include <gtest/gtest.h>

#include "fakes/memory_registry.h"

namespace krnqb {
namespace {

using fakes::MemoryRegistry;

constexpr RegistryHive machine = RegistryHive::LocalMachine;

Variant ValueOf(const MemoryRegistry::Value& stored) {
  MemoryRegistry registry;
  registry.values[{"Software", "Name"}] = stored;
  return RegistryValue(&registry, machine, "Software", "Name", registry_rights::read);
}

std::optional<std::string> KeyValueOf(const MemoryRegistry::Value& stored) {
  MemoryRegistry registry;
  registry.values[{"Software", "Name"}] = stored;
  return GetKeyValue(&registry, machine, "Software", "Name");
}

TEST(RegistryValue, IsATextOrANumberAsStored) {
  const Variant text = ValueOf("C:\\Program Files");
  ASSERT_NE(text.AsText(), nullptr);
  EXPECT_EQ(*text.AsText(), "C:\\Program Files");
  const Variant number = ValueOf(std::uint32_t{5});
  ASSERT_NE(number.AsLong(), nullptr);
  EXPECT_EQ(*number.AsLong(), 5);
}

TEST(RegistryValue, KeepsTheBitsOfANumber) {
  EXPECT_EQ(*ValueOf(std::uint32_t{0xFFFFFFFF}).AsLong(), -1);
}

TEST(RegistryValue, LosesOnlyTheFinalNul) {
  EXPECT_EQ(*ValueOf(std::string("ab\0", 3)).AsText(), "ab");
  EXPECT_EQ(*ValueOf(std::string("a\0b\0\0", 5)).AsText(), std::string("a\0b\0", 4));
}

TEST(RegistryValue, IsTheEmptyTextWhenMissingOrEmpty) {
  MemoryRegistry registry;
  registry.values[{"Software", "Empty"}] = std::string();
  for (const char* name : {"Empty", "Missing"}) {
    const Variant value = RegistryValue(&registry, machine, "Software", name, registry_rights::read);
    ASSERT_NE(value.AsText(), nullptr) << name;
    EXPECT_EQ(*value.AsText(), "") << name;
  }
  EXPECT_EQ(*RegistryValue(&registry, machine, "No Key", "Empty", registry_rights::read).AsText(), "");
  EXPECT_EQ(*RegistryValue(nullptr, machine, "Software", "Empty", registry_rights::read).AsText(), "");
}

TEST(RegistryValue, IsReadWithTheCallersRights) {
  MemoryRegistry registry;
  RegistryValue(&registry, machine, "Software", "", registry_rights::all);
  EXPECT_EQ(registry.rights, std::vector<std::uint32_t>{0x3F});
}

TEST(GetKeyValue, ReturnsATextUnchanged) {
  EXPECT_EQ(KeyValueOf("C:\\Tools\\info.exe"), "C:\\Tools\\info.exe");
  EXPECT_EQ(KeyValueOf(std::string("ab\0", 3)), "ab");
  EXPECT_EQ(KeyValueOf(""), "");
}

TEST(GetKeyValue, PrintsANumberAsTheHexadecimalDigitsOfItsBytes) {
  EXPECT_EQ(KeyValueOf(std::uint32_t{0x01020A1F}), "&h01020A1F");
  EXPECT_EQ(KeyValueOf(std::uint32_t{0}), "&h00000000");
}

TEST(GetKeyValue, FailsForATextLongerThanTheBuffer) {
  EXPECT_EQ(KeyValueOf(std::string(1023, 'x')), std::string(1023, 'x'));
  EXPECT_EQ(KeyValueOf(std::string(1023, 'x') + '\0'), std::string(1023, 'x'));
  EXPECT_EQ(KeyValueOf(std::string(1024, 'x')), std::nullopt);
}

TEST(GetKeyValue, FailsForAMissingKeyOrValueAndAsksForReadRightsOnly) {
  MemoryRegistry registry;
  EXPECT_EQ(GetKeyValue(&registry, machine, "Software", "Name"), std::nullopt);
  EXPECT_EQ(GetKeyValue(nullptr, machine, "Software", "Name"), std::nullopt);
  EXPECT_EQ(registry.rights, std::vector<std::uint32_t>{registry_rights::read});
}

}  // namespace
}  // namespace krnqb
