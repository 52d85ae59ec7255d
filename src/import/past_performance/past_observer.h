#pragma once

#include <cstdint>
#include <optional>

#include "krnqb/booking.h"
#include "krnqb/observer.h"

namespace krnqb {

/// Adds the past period to the lines read and bookings made for it.
class PastBookings final : public BookingReceiver {
 public:
  /// The receiver must outlive this object.
  PastBookings(BookingReceiver& receiver, std::int16_t period) : receiver_(receiver), period_(period) {}

  void ReadLine(const SourceLine& line) noexcept override {
    SourceLine past = line;
    past.pastPeriod = period_;
    receiver_.ReadLine(past);
  }
  void Book(const Booking& booking) noexcept override {
    Booking past = booking;
    past.slot.pastPeriod = period_;
    receiver_.Book(past);
  }
  void WriteCell(const WrittenCell& cell) noexcept override { receiver_.WriteCell(cell); }

 private:
  BookingReceiver& receiver_;
  const std::int16_t period_;
};

/// Adds the past period to the notices raised while it is read, because the import itself may read the same
/// transactions.
class PastObserver final : public Observer {
 public:
  enum class Warnings : std::uint8_t { Reported, Dropped };

  /// The observer must outlive this object. Warnings that are dropped are only those without an effect on the
  /// figures.
  PastObserver(Observer& observer, std::int16_t period, Warnings warnings)
      : observer_(observer), period_(period), warnings_(warnings) {
    if (BookingReceiver* const receiver = observer.Bookings()) bookings_.emplace(*receiver, period);
  }

  BookingReceiver* Bookings() noexcept override { return bookings_ ? &*bookings_ : nullptr; }

  void Notify(const Notice& notice) noexcept override {
    if (notice.kind == NoticeKind::Warning && warnings_ == Warnings::Dropped &&
        notice.meaning == NoticeMeaning::Complete) {
      return;
    }
    // A notice that cannot be copied is passed on without the period.
    try {
      Notice past = notice;
      past.place.pastPeriod = period_;
      observer_.Notify(past);
    } catch (...) {
      observer_.Notify(notice);
    }
  }

 private:
  Observer& observer_;
  std::int16_t period_;
  Warnings warnings_;
  std::optional<PastBookings> bookings_;
};

}  // namespace krnqb
