#pragma once

#include <string>

namespace krnqb::tests {

// Where this build finds and puts things. One source file knows, so that the others compile to the same in
// every checkout.

/// Returns the folder samples/.
std::string SamplesFolder();
/// Returns the folder with the golden requests.
std::string GoldenRequestsFolder();
/// Returns the folder with the recorded exchanges, and the one with the cells that each import changes.
std::string RecordingsFolder();
std::string ChangesFolder();
/// Returns the folder with the inputs from which the fuzzers start.
std::string FuzzCorpusFolder();
/// Returns the folder docs/schema/.
std::string SchemasFolder();
/// Returns the path of the guide for hosts.
std::string HostGuide();
/// Returns the path of the program krnqb, and that of the program that saves plans until it is killed.
std::string Program();
std::string PlanWriteChild();
/// Returns the path of the module with the dialogs that belongs to the program.
std::string BuiltDialogModule();
/// Returns the path of a module with dialogs for another version of the program, and that of a library that
/// is no such module.
std::string ModuleOfAnotherVersion();
std::string ModuleWithoutFunction();
/// Returns the version that dialogs show.
std::string ExpectedVersion();

}  // namespace krnqb::tests
