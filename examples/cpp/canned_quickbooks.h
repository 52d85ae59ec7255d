#pragma once

#include <krnqb/request_processor.h>

#include <memory>

/// Processors that answer as QuickBooks would for a small garden shop, using answers embedded in this
/// program.
class CannedQuickBooks : public krnqb::RequestProcessorFactory {
 public:
  std::unique_ptr<krnqb::RequestProcessor> Create() override;
};
