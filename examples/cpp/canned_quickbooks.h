#pragma once

#include <krnqb/request_processor.h>

#include <memory>

/// Processors that answer as QuickBooks would for a small garden shop, using answers embedded in this
/// program.
class CannedQuickBooks : public krnqb::RequestProcessorFactory {
 public:
  /// `companyOpen` is whether the shop's company is open in QuickBooks. If it is not, sessions are refused.
  explicit CannedQuickBooks(bool companyOpen) : companyOpen_(companyOpen) {}

  std::unique_ptr<krnqb::RequestProcessor> Create() override;

 private:
  bool companyOpen_;
};
