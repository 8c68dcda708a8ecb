// SPDX-License-Identifier: Apache-2.0
#include "simcal/WorkingTimeReasons.h"

#include <string>

#include "platform/QorMessage.h"
#include "simcal/messages.h"

namespace qor::simcal {
namespace {

SV::String message(QorSimCalMessage number, std::initializer_list<QorPlaceholder> placeholders = {}) {
    return Qor_Message(static_cast<std::uint16_t>(number), placeholders);
}

void appendTwoDigits(std::string& text, std::int64_t number) {
    if (number < 10) text += '0';
    text += std::to_string(number);
}

}  // namespace

std::string clockTime(std::int64_t secondOfDay) {
    std::string text;
    appendTwoDigits(text, secondOfDay / 3600);
    text += ':';
    appendTwoDigits(text, secondOfDay / 60 % 60);
    if (secondOfDay % 60 != 0) {
        text += ':';
        appendTwoDigits(text, secondOfDay % 60);
    }
    return text;
}

SV::String WorkingTimeReasons::sentence(std::int64_t moment) const {
    if (_plan.isNeverOpen()) return message(QorSimCalMessage::NeverOpen);
    if (moment < 0) return message(QorSimCalMessage::BeforePeriod);
    if (!_plan.isInside(moment)) return message(QorSimCalMessage::AfterPeriod);

    const DayAndTime now = _plan.dayAndTime(moment);
    const std::string time = clockTime(now.time);
    const std::string day = std::to_string(now.day);
    const SV::String& profile = _calendar.getProfileOfDay(now.day)->getName();
    if (const auto current = _plan.current(moment)) {
        const std::string end = clockTime(now.time + (current->end - moment));
        return message(QorSimCalMessage::OpenUntil,
                       {{"%time", time}, {"%day", day}, {"%profile", profile}, {"%end", end}});
    }
    const auto next = _plan.next(moment);
    if (!next) return message(QorSimCalMessage::ClosedForGood, {{"%time", time}, {"%day", day}, {"%profile", profile}});
    const DayAndTime then = _plan.dayAndTime(next->start);
    return message(QorSimCalMessage::ClosedUntil, {{"%time", time},
                                                   {"%day", day},
                                                   {"%profile", profile},
                                                   {"%nextday", std::to_string(then.day)},
                                                   {"%nexttime", clockTime(then.time)}});
}

QorCalendarErrorCode WorkingTimeReasons::neverOpen() const {
    if (_why != nullptr) *_why = message(QorSimCalMessage::NeverOpen);
    return QorCalendarErrorCode::NoNextInterval;
}

QorCalendarErrorCode WorkingTimeReasons::periodEndsTooEarly(std::int64_t missing) const {
    if (_why != nullptr) *_why = message(QorSimCalMessage::PeriodEndsTooEarly, {{"%seconds", std::to_string(missing)}});
    return QorCalendarErrorCode::NoNextInterval;
}

QorCalendarErrorCode WorkingTimeReasons::periodStartsTooLate(std::int64_t missing) const {
    if (_why != nullptr)
        *_why = message(QorSimCalMessage::PeriodStartsTooLate, {{"%seconds", std::to_string(missing)}});
    return QorCalendarErrorCode::NoNextInterval;
}

}  // namespace qor::simcal
