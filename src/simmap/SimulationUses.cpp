// SPDX-License-Identifier: Apache-2.0
#include "simmap/SimulationUses.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "frame/RepositoryLookup.h"
#include "simmap/NumberedKey.h"
#include "simmap/ResultHolders.h"
#include "simmap/StandardAttributes.h"

namespace qor::simmap {

namespace {

using Type = QorCoreAttributeType;

constexpr QorSimUseKind kStandardUses[] = {QorSimUseKind::ExecutionTime, QorSimUseKind::WaitingTime,
                                           QorSimUseKind::RestingTime, QorSimUseKind::TransportTime};
constexpr std::string_view kEventWords[] = {"start", "interrupt", "continue", "finish", "any"};

bool isOneOf(Type type, std::initializer_list<Type> types) {
    return std::find(types.begin(), types.end(), type) != types.end();
}

bool canHoldResult(std::string_view key, Type type) {
    if (key == "fixedinfo") return isOneOf(type, {Type::Text, Type::LongText});
    if (key == "fixedcycletime") return type == Type::Time;
    if (key == "fixedworkload" || key == "fixedcapacity")
        return isOneOf(type, {Type::Integer, Type::Floating, Type::Time});
    return isOneOf(type, {Type::Integer, Type::Floating});
}

}  // namespace

void collectUses(long library, const QorSimulationOption& option, int index, std::vector<QorSimUse>& uses) {
    const long activity = frame::findClass(library, option.activityClassName).value_or(0);
    if (activity != 0) uses.push_back({QorSimUseKind::Activity, index, activity, 0, "activity"});
    for (unsigned long place = 0; place < kStandardAttributeKeys.size(); ++place)
        if (const long attribute = option.standardAttributes.elementAtIndex(place); attribute != 0)
            uses.push_back({kStandardUses[place], index, activity, attribute, kStandardAttributeKeys[place]});
    NumberedKey key(kUserAttributeKey);
    for (const long attribute : option.userAttributes) {
        if (attribute != 0) uses.push_back({QorSimUseKind::UserAttribute, index, activity, attribute, key.view()});
        key.next();
    }
    if (option.processCallClass != 0)
        uses.push_back({QorSimUseKind::ProcessCall, index, option.processCallClass, 0, "processcall"});
    if (option.subPerformerAttribute != 0)
        uses.push_back({QorSimUseKind::SubPerformer, index, option.processCallClass, option.subPerformerAttribute,
                        "subperformerattr"});
    for (const auto& action : option.actions)
        uses.push_back({QorSimUseKind::Action, index, action.cls, action.attribute,
                        kEventWords[static_cast<std::size_t>(action.event)]});
}

void collectUses(const QorSimResultHolder& holder, std::vector<QorSimUse>& uses) {
    const auto* const kind = resultHolder(holder.kind);
    if (kind == nullptr || holder.cls == 0) return;
    uses.push_back({QorSimUseKind::ResultHolder, -1, holder.cls, 0, kind->element});
    for (unsigned long place = 0; place < holder.attributes.numberOfElements(); ++place)
        if (const long attribute = holder.attributes.elementAtIndex(place); attribute != 0)
            uses.push_back({QorSimUseKind::FixedResult, -1, holder.cls, attribute, kind->fixedKeys[place]});
    for (const auto& source : holder.sources) {
        uses.push_back({QorSimUseKind::ResultSource, -1, source.cls, source.attribute, kFromAttributeKey});
        uses.push_back({QorSimUseKind::CarriedResult, -1, holder.cls, source.resultAttribute, kResultAttributeKey});
    }
}

bool canHold(const QorSimUse& use, QorCoreAttributeType type) {
    switch (use.kind) {
        case QorSimUseKind::ExecutionTime:
        case QorSimUseKind::WaitingTime:
        case QorSimUseKind::RestingTime:
        case QorSimUseKind::TransportTime:
            return isOneOf(type, {Type::Time, Type::Expression});
        case QorSimUseKind::SubPerformer:
            return isOneOf(type, {Type::Text, Type::LongText, Type::InterReference, Type::Expression});
        case QorSimUseKind::Action:
            return type == Type::SimulationAction;
        case QorSimUseKind::FixedResult:
            return canHoldResult(use.key.view(), type);
        case QorSimUseKind::CarriedResult:
            return !isOneOf(type, {Type::Expression, Type::Record, Type::AttributeProfile, Type::InterReference});
        default:
            return true;
    }
}

}  // namespace qor::simmap
