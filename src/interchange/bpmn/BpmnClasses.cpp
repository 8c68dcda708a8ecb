// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnClasses.h"

#include <array>

namespace qor::interchange::bpmn {

namespace {

constexpr std::string_view kParallelMultipleTrigger = "parallel multiple";

ObjectClass classForProcess(const Document& document, const Links& links, NodeIndex node) {
    const Node& it = document[node];
    const bool hasPool = links.collaborationOf(node) != node;
    if (hasPool && !it.hasFlowNodes) return ObjectClass::BlackBoxProcess;
    if (it.hasInstantiator && !it.hasStartEvent) return ObjectClass::MessageStartedProcess;
    return ObjectClass::Process;
}

ObjectClass classForActivity(const Node& it, bool isInAdHoc) {
    const bool hasFlowOfItsOwn = it.row->family == Family::SubProcess;
    if ((it.flags & kTriggeredByEvent) != 0 && it.row->cls == ObjectClass::SubProcess)
        return ObjectClass::EventSubProcess;
    if ((it.flags & kForCompensation) != 0)
        return hasFlowOfItsOwn ? ObjectClass::CompensationSubProcess : ObjectClass::CompensationActivity;
    if (isInAdHoc) return hasFlowOfItsOwn ? ObjectClass::SubProcessInAdHoc : ObjectClass::AdHocActivity;
    if ((it.flags & kInstantiate) != 0 && it.row->cls == ObjectClass::ReceiveTask)
        return ObjectClass::InstantiatingReceiveTask;
    return it.row->cls;
}

ObjectClass classForGateway(const Node& it, bool isInAdHoc) {
    if (isInAdHoc) return ObjectClass::AdHocGateway;
    if ((it.flags & kInstantiate) != 0 && it.row->cls == ObjectClass::EventBasedGateway)
        return ObjectClass::InstantiatingEventBasedGateway;
    return it.row->cls;
}

ObjectClass classForEvent(const Document& document, const Links& links, NodeIndex node, bool isInAdHoc) {
    const Node& it = document[node];
    if (it.row->family == Family::Event) return it.row->cls;
    const std::string_view trigger = triggerWord(document, node, links.triggersOf(node));
    if (it.row->family == Family::BoundaryEvent) {
        if (trigger == "compensation") return ObjectClass::CompensationBoundaryEvent;
        return isInAdHoc ? ObjectClass::AdHocBoundaryEvent : it.row->cls;
    }
    if (isInAdHoc) return ObjectClass::AdHocEvent;
    if (trigger == "link")
        return it.row->family == Family::CatchEvent ? ObjectClass::LinkCatchEvent : ObjectClass::LinkThrowEvent;
    return it.row->cls;
}

struct FlagRow {
    Flag flag;
    std::string_view attribute;
    std::array<ObjectClass, 2> shownBy;
};

constexpr FlagRow kFlags[] = {
    {kForCompensation, "isForCompensation", {ObjectClass::CompensationActivity, ObjectClass::CompensationSubProcess}},
    {kTriggeredByEvent, "triggeredByEvent", {ObjectClass::EventSubProcess, ObjectClass::None}},
    {kInstantiate, "instantiate", {ObjectClass::InstantiatingReceiveTask, ObjectClass::InstantiatingEventBasedGateway}},
};

}  // namespace

ObjectClass classFor(const Document& document, const Links& links, NodeIndex node) {
    const Node& it = document[node];
    if (it.isInside || links.isDrawnByReference(node)) return ObjectClass::None;
    if (it.row->role == Role::Process) return classForProcess(document, links, node);
    const bool isInAdHoc = it.parent != kNoNode && document[it.parent].row->family == Family::AdHoc;
    switch (it.row->family) {
        case Family::None:
            return it.row->cls;
        case Family::Gateway:
            return classForGateway(it, isInAdHoc);
        case Family::Activity:
        case Family::SubProcess:
        case Family::AdHoc:
            return classForActivity(it, isInAdHoc);
        default:
            return classForEvent(document, links, node, isInAdHoc);
    }
}

std::vector<std::string_view> flagsNotShown(const Node& node, ObjectClass cls, std::string_view trigger) {
    std::vector<std::string_view> names;
    for (const FlagRow& row : kFlags)
        if ((node.flags & row.flag) != 0 && row.shownBy[0] != cls && row.shownBy[1] != cls)
            names.push_back(row.attribute);
    if ((node.flags & kParallelMultiple) != 0 && trigger != kParallelMultipleTrigger)
        names.emplace_back("parallelMultiple");
    return names;
}

std::string_view triggerWord(const Document& document, NodeIndex event, const std::vector<NodeIndex>& triggers) {
    if (triggers.empty()) return "none";
    if (triggers.size() == 1) return document[triggers.front()].row->word;
    return (document[event].flags & kParallelMultiple) != 0 ? kParallelMultipleTrigger : "multiple";
}

std::string triggerDetail(const Document& document, const Links& links, NodeIndex event,
                          const std::vector<NodeIndex>& triggers) {
    std::string detail;
    for (const NodeIndex trigger : triggers) {
        const Node& it = document[trigger];
        std::string line;
        const auto add = [&line](std::string_view key, std::string_view text) {
            line += line.empty() ? "" : ", ";
            if (!key.empty()) line.append(key).append(" ");
            line += text;
        };
        if (!it.name.empty()) add("", it.name);
        document.forEachValue(trigger, [&](const Value& value) {
            const bool isName = value.slot == Slot::MessageRef || value.slot == Slot::DefinitionRef;
            if (isName)
                add("", links.nameMeantBy(value.text));
            else
                add(value.key, value.text);
        });
        if (line.empty()) continue;
        const bool isOwn = it.parent == event || links.carrierOf(trigger) == event;
        detail += detail.empty() ? "" : "\n";
        detail.append(it.row->word).append(": ").append(isOwn ? line : folded(line, kMaxBorrowedBytes));
    }
    return detail;
}

}  // namespace qor::interchange::bpmn
