#pragma once

#include <string_view>

namespace kiv {

/// A local date and time.
struct DateTime {
    int year = 0;
    int month = 1; // 1 to 12
    int day = 1;   // 1 to 31
    int hour = 0;  // 0 to 23
    int minute = 0;
    int second = 0;
    bool operator==(const DateTime&) const = default;
};

/// "January" to "December"; `month` is 1 to 12.
std::string_view MonthName(int month);

class Clock {
  public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    virtual DateTime Now() = 0;
};

/// The machine's clock.
class SystemClock : public Clock {
  public:
    DateTime Now() override;
};

/// A clock that stands still.
class FrozenClock : public Clock {
  public:
    explicit FrozenClock(const DateTime& now) : now_(now) {}
    DateTime Now() override { return now_; }

  private:
    DateTime now_;
};

} // namespace kiv
