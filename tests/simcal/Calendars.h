// SPDX-License-Identifier: Apache-2.0
// What the tests of simcal/ share: the words of the field, random calendars, and the arithmetic as a plain walk.
#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <random>
#include <string>

#include "platform/QorHost.h"
#include "platform/QorInternational.h"
#include "platform/QorWindows.h"
#include "simcal/QorCalendar.h"

using Code = QorCalendarErrorCode;

inline std::ostream& operator<<(std::ostream& out, Code code) { return out << static_cast<std::int32_t>(code); }

namespace simcal_tests {

constexpr auto kFlag = QorCalendarPropertyType::Flag;
constexpr auto kDistribution = QorCalendarPropertyType::Distribution;
constexpr std::int64_t kDay = 86400;
constexpr std::int64_t kHour = 3600;

// A host that offers the texts of one language and nothing else, and keeps internal errors to itself.
class Language : public QorMessageTexts {
public:
    explicit Language(std::string iso = "en");
    const char* text(unsigned short number) const override;

private:
    struct Silent : QorWindows {
        void internalError(const char*, long, const char*) override {}
    };
    std::string _iso;
    Silent _windows;
    QorHost _host;
    std::optional<QorHostInstallation> _installation;
};

SV::Time at(int hour, int minute = 0, int second = 0);
QorDayIntervalWithProperty open(SV::Time start, SV::Time end, int flag = 1);
QorDayIntervalWithProperty arrivals(SV::Time start, SV::Time end, const std::string& longText);

// A calendar read from its text; the period's length is that of the day list.
std::unique_ptr<QorCalendar> calendar(const std::string& text, int cyclic = 1, std::int64_t offset = 0);
std::string textOf(const QorCalendar& calendar);
// "28800-43200 46800-61200" of a day, "" for a day without intervals.
std::string day(const QorCalendar& calendar, int day);

// Monday to Friday 8 to 12 and 13 to 17, weekend closed.
inline const std::string kWeek = "B@Workday@A@28800-43200@T@46800-61200@T@Weekend@B@@@$AAAAABB";

// Intervals made by hand can reach out of the day; those of texts cannot.
enum class Reach { WithinTheDay, BeyondTheDay };
std::unique_ptr<QorCalendar> randomCalendar(std::mt19937_64& random, int period, int cyclic = 1,
                                            std::int64_t offset = 0, Reach reach = Reach::WithinTheDay);
void addRandomInterval(std::mt19937_64& random, QorDayProfile& profile, Reach reach = Reach::WithinTheDay);
// Near the bounds of days and intervals for the most part, anywhere in 64 bits now and then.
std::int64_t randomInstant(std::mt19937_64& random, const QorCalendar& calendar);

struct Answer {
    Code code;
    std::int64_t value;
    friend bool operator==(const Answer& a, const Answer& b) { return a.code == b.code && a.value == b.value; }
    friend std::ostream& operator<<(std::ostream& out, const Answer& a) {
        return out << "code " << a.code << ", value " << a.value;
    }
};

// The calendar's arithmetic from day to day and interval to interval, by the profiles' own operations alone. Values
// that stay untouched read as `kUntouched`.
constexpr std::int64_t kUntouched = 777;
namespace plain {
Answer untilStart(const QorCalendar& calendar, std::int64_t instant);
Answer untilEnd(const QorCalendar& calendar, std::int64_t instant);
Answer isIn(const QorCalendar& calendar, std::int64_t instant, std::int64_t duration);
Answer sum(const QorCalendar& calendar, std::int64_t from, std::int64_t to);
Answer covered(const QorCalendar& calendar, std::int64_t from, std::int64_t to);
}  // namespace plain

}  // namespace simcal_tests
