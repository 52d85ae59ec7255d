#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "fakes/journal.h"
#include "krnqb/outside_world.h"

namespace krnqb::fakes {

/// Records every event. A non-empty `name` is the prefix of each line, to distinguish several sinks.
class RecordingSink : public EventSink {
 public:
  explicit RecordingSink(std::shared_ptr<Journal> sharedJournal, const std::string& name = {})
      : journal_(std::move(sharedJournal)), prefix_(name.empty() ? "" : name + ": ") {}

  void XMLprocessing(Variant& oXML) override {
    receivedNothing = oXML.IsObject() && oXML.IsNothing();
    oXML = Variant("left behind by the host");
    journal_->Record(prefix_ + "XMLprocessing");
  }
  void TableModified(std::string_view sTableID) override {
    journal_->Record(prefix_ + "TableModified " + std::string(sTableID));
  }
  void AfterImport() override { journal_->Record(prefix_ + "AfterImport"); }
  void ProgressBarChange(std::int16_t PercentValue, std::string_view Description) override {
    journal_->Record(prefix_ + "ProgressBarChange " + std::to_string(PercentValue) + " " +
                     std::string(Description));
  }

  /// Whether the last XMLprocessing received Nothing.
  bool receivedNothing = false;

 private:
  std::shared_ptr<Journal> journal_;
  std::string prefix_;
};

}  // namespace krnqb::fakes
