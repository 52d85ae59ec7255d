#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "krnqb/booking.h"
#include "krnqb/observer.h"

namespace krnqb::fakes {

/// Keeps every notice.
class RecordingObserver : public Observer {
 public:
  void Notify(const Notice& notice) noexcept override { notices.push_back(notice); }
  BookingReceiver* Bookings() noexcept override { return bookings; }

  /// Returns whether a notice of this kind and number was reported.
  bool Reported(NoticeKind kind, std::int32_t number) const {
    return std::any_of(notices.begin(), notices.end(), [kind, number](const Notice& notice) {
      return notice.kind == kind && notice.number == number;
    });
  }

  std::vector<Notice> notices;
  BookingReceiver* bookings = nullptr;  ///< receives the bookings, unless null
};

}  // namespace krnqb::fakes
