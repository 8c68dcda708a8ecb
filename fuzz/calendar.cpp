// SPDX-License-Identifier: Apache-2.0
// Any bytes as a calendar text, behind one byte that sets type, cyclic flag and period length. What is read must write
// itself so that it reads as the same again; what is refused must leave an empty calendar and name a place in the text.
// Then the bytes are read as a calendar file, which must answer alike.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "interchange/QorCalendarFile.h"
#include "platform/QorHost.h"
#include "platform/QorInternational.h"
#include "simcal/QorCalendar.h"
#include "simcal/QorCalendarAlgebra.h"
#include "simcal/QorCalendarText.h"
#include "simcal/QorWorkingTime.h"

namespace {

using Code = QorCalendarErrorCode;

void demand(bool condition) {
    if (!condition) std::abort();
}

class Texts : public QorMessageTexts {
    const char* text(unsigned short number) const override { return number == 14000 ? "Exponential" : "Uniform"; }
};

// Names of profiles that read as other tokens do not come back.
bool namesReadBack(const QorCalendar& calendar) {
    for (const QorDayProfile* profile : calendar.getProfiles()) {
        const std::string_view name = profile->getName();
        if (name.empty() || name.front() == '$' || (name.front() >= '0' && name.front() <= '9')) return false;
    }
    return true;
}

void checkRoundTrip(const QorCalendar& calendar) {
    SV::String text;
    demand(calendar.getCalendarAsString(text) == Code::Ok);
    QorCalendar again(calendar.getPropertyType(), 0, calendar.isCyclic(), calendar.getPeriodLengthInDays());
    demand(again.initializeCalendar(text) == Code::Ok);
    SV::String textAgain;
    int equal = 0;
    demand(again.getCalendarAsString(textAgain) == Code::Ok && text == textAgain);
    demand(QorCalendarAlgebra::areEqual(calendar, again, equal) == Code::Ok && equal == 1);
}

// Sums in 32 and in 64 bits agree, and adding what was summed arrives within the span.
void checkArithmetic(const QorCalendar& calendar) {
    const QorWorkingTime time(calendar);
    const std::int64_t period = calendar.getPeriodLengthInDays() * std::int64_t{QorCalendar::kSecondsPerDay};
    for (const std::int64_t to : {std::int64_t{1}, period / 2, period, 2 * period + 40000}) {
        std::int64_t plain = 0;
        std::int64_t sum = 0;
        std::int64_t finish = 0;
        demand(time.sumBetween(0, to, sum) == Code::Ok);
        if (calendar.getTimeIntervalsSumInBetween(0, to, plain) != Code::Ok) continue;
        demand(plain == sum);
        demand(time.finishOf(0, sum, finish) == Code::Ok && finish <= to);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Texts texts;
    QorHost host;
    host.texts = const_cast<Texts*>(&texts);
    const QorHostInstallation installation(host);

    const auto type = (data[0] & 1) == 0 ? QorCalendarPropertyType::Flag : QorCalendarPropertyType::Distribution;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    int days = data[0] >> 2;
    if ((data[0] & 128) != 0) (void)QorCalendarText::periodLengthOf(text, days);

    QorCalendar calendar(type, 0, data[0] & 2, days);
    unsigned long failedAt = 0;
    const Code code = QorCalendarText::read(calendar, text, failedAt);
    if (code != Code::Ok) {
        demand(failedAt <= text.size());
        demand(calendar.getProfiles().isEmpty() && calendar.getProfileOfDay(1) == nullptr);
    } else if (calendar.getProfileOfDay(1) != nullptr) {
        if (namesReadBack(calendar)) checkRoundTrip(calendar);
        checkArithmetic(calendar);
    }

    std::vector<QorDiagnostic> diagnostics;
    const auto file = QorCalendarFile::readText("file", text, {}, diagnostics);
    demand((file == nullptr) == !diagnostics.empty());
    return 0;
}
