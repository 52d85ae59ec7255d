#include "build_paths.h"

namespace krnqb::tests {

std::string SamplesFolder() {
  return KRNQB_SAMPLES;
}

std::string GoldenRequestsFolder() {
  return KRNQB_GOLDEN_REQUESTS;
}

std::string RecordingsFolder() {
  return KRNQB_RECORDINGS;
}

std::string ChangesFolder() {
  return KRNQB_CHANGES;
}

std::string FuzzCorpusFolder() {
  return KRNQB_FUZZ_CORPUS;
}

std::string SchemasFolder() {
  return KRNQB_SCHEMAS;
}

std::string HostGuide() {
  return KRNQB_HOST_GUIDE;
}

std::string Program() {
  return KRNQB_PROGRAM;
}

std::string PlanWriteChild() {
  return KRNQB_PLAN_WRITE_CHILD;
}

std::string BuiltDialogModule() {
  return KRNQB_BUILT_DIALOG_MODULE;
}

std::string ModuleOfAnotherVersion() {
  return KRNQB_MODULE_OF_ANOTHER_VERSION;
}

std::string ModuleWithoutFunction() {
  return KRNQB_MODULE_WITHOUT_FUNCTION;
}

std::string ExpectedVersion() {
  return KRNQB_EXPECTED_VERSION;
}

}  // namespace krnqb::tests
