// SPDX-License-Identifier: Apache-2.0
#include "simmap/ResultHolders.h"

namespace qor::simmap {

namespace {

constexpr std::string_view kProcessStartKeys[] = {"fixedinfo", "fixedcycletime", "fixedpersonalcosts"};
constexpr std::string_view kActivityKeys[] = {"fixedinfo", "fixednumber", "fixedpersonalcosts"};
constexpr std::string_view kPersonKeys[] = {"fixedinfo", "fixedworkload", "fixedcapacity", "fixedpersonalcosts"};

constexpr auto kBusinessProcess = QorCoreVarType::BusinessProcessLibrary;
constexpr auto kWorkingEnvironment = QorCoreVarType::WorkingEnvironmentLibrary;

constexpr ResultHolder kHolders[] = {
    {QorSimResultAttributeType::ProcessStart, kBusinessProcess, "PROCESSSTART", kProcessStartKeys,  //
     1044, 1054, 1062, 1070, 1079},
    {QorSimResultAttributeType::Activity, kBusinessProcess, "ACTIVITY", kActivityKeys,  //
     1105, 1116, 1124, 1132, 1141},
    {QorSimResultAttributeType::Person, kWorkingEnvironment, "PERSON", kPersonKeys,  //
     1169, 1180, 1188, 1196, 1205},
};

}  // namespace

long ResultHolder::writeLine(QorCoreAttributeType type) const {
    switch (type) {
        case QorCoreAttributeType::Integer:
            return integerLine;
        case QorCoreAttributeType::Floating:
            return floatingLine;
        case QorCoreAttributeType::Time:
            return timeLine;
        default:
            return otherLine;
    }
}

std::span<const ResultHolder> resultHolders() { return kHolders; }

const ResultHolder* resultHolder(QorSimResultAttributeType kind) {
    for (const auto& holder : kHolders)
        if (holder.kind == kind) return &holder;
    return nullptr;
}

const ResultHolder* resultHolder(QorCoreVarType part, std::string_view element) {
    for (const auto& holder : kHolders)
        if (holder.part == part && holder.element == element) return &holder;
    return nullptr;
}

}  // namespace qor::simmap
