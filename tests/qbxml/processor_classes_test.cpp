#include "qbxml/processor_classes.h"

#include <gtest/gtest.h>

#include "fakes/request_processor.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

constexpr std::int32_t notRegistered = -2147221164;  // 80040154

ProcessorClass Creatable(const std::string& name, std::vector<std::string>& created) {
  return {.name = name,
          .create =
              [name, &created] {
                created.push_back(name);
                return std::make_unique<fakes::FakeRequestProcessor>(
                    std::make_shared<fakes::FakeQuickBooks>(), std::make_shared<fakes::Journal>());
              },
          .onlyForOtherWidth = [] { return false; }};
}

ProcessorClass Missing(const std::string& name, const std::string& text = "Class not registered.",
                       bool onlyForOtherWidth = false) {
  return {.name = name,
          .create = [text]() -> std::unique_ptr<RequestProcessor> { throw Error(notRegistered, text); },
          .onlyForOtherWidth = [onlyForOtherWidth] { return onlyForOtherWidth; }};
}

TEST(CreateFirstProcessor, TakesTheFirstClassThatCanBeCreated) {
  std::vector<std::string> created;
  EXPECT_NE(CreateFirstProcessor({Creatable("A", created), Creatable("B", created)}), nullptr);
  EXPECT_NE(CreateFirstProcessor({Missing("A"), Creatable("B", created)}), nullptr);
  EXPECT_EQ(created, (std::vector<std::string>{"A", "B"}));
}

TEST(CreateFirstProcessor, NamesEveryClassWithItsReasonIfNoneCanBeCreated) {
  const auto create = [] { CreateFirstProcessor({Missing("A"), Missing("B", "No such interface")}); };
  const Error error = tests::ThrownError(create);
  EXPECT_EQ(error.Number(), error_number::cannotCreateObject);
  EXPECT_EQ(error.Description(), "A: Class not registered (80040154), B: No such interface (80040154)");
}

TEST(ClassesForOtherWidth, AreThoseThatOnlyTheOtherWidthFinds) {
  std::vector<std::string> created;
  EXPECT_EQ(ClassesForOtherWidth({Missing("A"), Missing("B", "x", true), Creatable("C", created)}),
            std::vector<std::string>{"B"});
  EXPECT_TRUE(created.empty());
}

}  // namespace
}  // namespace krnqb
