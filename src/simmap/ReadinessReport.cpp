// SPDX-License-Identifier: Apache-2.0
#include "simmap/ReadinessReport.h"

#include <cstdint>
#include <string>

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorMessage.h"
#include "simmap/ReadinessQueries.h"
#include "simmap/messages.h"

namespace qor::simmap {

namespace {

// A finding without a name is better than none.
SV::String textOf(long owner, long attribute) { return frame::readText(owner, attribute).value_or(SV::String()); }
SV::String className(long cls) { return textOf(cls, QorAttributeId::ClassName); }
SV::String objectName(long object) { return textOf(object, QorAttributeId::Name); }
SV::String attributeName(long attribute) { return frame::nameOfAttribute(attribute).value_or(SV::String()); }

std::uint16_t messageOf(QorSimReadinessIssue issue) {
    switch (issue) {
        case QorSimReadinessIssue::NoExecutionTimeNamed:
            return message::noExecutionTimeNamed;
        case QorSimReadinessIssue::NoExecutionTime:
            return message::noExecutionTime;
        case QorSimReadinessIssue::CannotCallModel:
            return message::cannotCallModel;
        case QorSimReadinessIssue::CallsNoModel:
            return message::callsNoModel;
        case QorSimReadinessIssue::CalledModelMissing:
            return message::calledModelMissing;
        case QorSimReadinessIssue::CannotHaveCalendar:
            return message::cannotHaveCalendar;
        case QorSimReadinessIssue::HasNoCalendar:
            return message::hasNoCalendar;
        case QorSimReadinessIssue::IsNotAssigned:
            return message::isNotAssigned;
        case QorSimReadinessIssue::TypeDoesNotFit:
            return message::typeDoesNotFit;
        case QorSimReadinessIssue::ClassTakesNoPart:
            return message::classTakesNoPart;
        case QorSimReadinessIssue::PerformersNotLookedAt:
            return message::performersNotLookedAt;
    }
    return message::classTakesNoPart;
}

}  // namespace

void ReadinessReport::noExecutionTimeNamed(const QorSimulationOption& option, int index) {
    constexpr auto kIssue = QorSimReadinessIssue::NoExecutionTimeNamed;
    _findings.push_back({kIssue, index, 0, 0, 0, 0, 0, Qor_Message(messageOf(kIssue), {{"%p", option.name.view()}})});
}

void ReadinessReport::typeDoesNotFit(const QorSimUse& use) {
    constexpr auto kIssue = QorSimReadinessIssue::TypeDoesNotFit;
    const auto cls = className(use.cls);
    const auto attribute = attributeName(use.attribute);
    _findings.push_back(
        {kIssue, use.option, use.cls, use.attribute, 0, 0, 0,
         Qor_Message(messageOf(kIssue), {{"%a", attribute.view()}, {"%c", cls.view()}, {"%u", use.key.view()}})});
}

void ReadinessReport::aboutClass(QorSimReadinessIssue issue, int option, long cls) {
    const auto name = className(cls);
    _findings.push_back({issue, option, cls, 0, 0, 0, 0, Qor_Message(messageOf(issue), {{"%c", name.view()}})});
}

void ReadinessReport::aboutObject(QorSimReadinessIssue issue, int option, long model, long object, long attribute) {
    const long cls = classOf(object);
    const auto name = objectName(object);
    const auto clsName = className(cls);
    const auto attrName = attribute != 0 ? attributeName(attribute) : SV::String();
    _findings.push_back(
        {issue, option, cls, attribute, model, object, 1,
         Qor_Message(messageOf(issue), {{"%o", name.view()}, {"%c", clsName.view()}, {"%a", attrName.view()}})});
}

void ReadinessReport::calledModelIsMissing(int option, long model, long object, const CalledModels& called) {
    constexpr auto kIssue = QorSimReadinessIssue::CalledModelMissing;
    const long cls = classOf(object);
    const auto name = objectName(object);
    const auto clsName = className(cls);
    _findings.push_back(
        {kIssue, option, cls, called.missingAttribute, model, object, 1,
         Qor_Message(messageOf(kIssue), {{"%o", name.view()}, {"%c", clsName.view()}, {"%m", called.missing.view()}})});
}

void ReadinessReport::performersAreUnknown() {
    constexpr auto kIssue = QorSimReadinessIssue::PerformersNotLookedAt;
    _findings.push_back({kIssue, -1, 0, 0, 0, 0, 0, Qor_Message(messageOf(kIssue))});
}

void ReadinessReport::classTakesNoPart(long cls, long model, unsigned long count) {
    constexpr auto kIssue = QorSimReadinessIssue::ClassTakesNoPart;
    const auto name = className(cls);
    _findings.push_back({kIssue, -1, cls, 0, model, 0, count,
                         Qor_Message(messageOf(kIssue), {{"%c", name.view()}, {"%n", std::to_string(count)}})});
}

}  // namespace qor::simmap
