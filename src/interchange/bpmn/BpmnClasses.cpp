// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnClasses.h"

namespace qor::interchange::bpmn {

namespace {

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

ObjectClass classForGateway(const Node& it) {
    if ((it.flags & kInstantiate) != 0 && it.row->cls == ObjectClass::EventBasedGateway)
        return ObjectClass::InstantiatingEventBasedGateway;
    return it.row->cls;
}

ObjectClass classForEvent(const Document& document, const Links& links, NodeIndex node, bool isInAdHoc) {
    const Node& it = document[node];
    if (it.row->family == Family::Event) return it.row->cls;
    const std::string_view trigger = triggerWord(document, node, links.triggersOf(node));
    if (it.row->family == Family::BoundaryEvent)
        return trigger == "compensation" ? ObjectClass::CompensationBoundaryEvent : it.row->cls;
    if (trigger == "link")
        return it.row->family == Family::CatchEvent ? ObjectClass::LinkCatchEvent : ObjectClass::LinkThrowEvent;
    return isInAdHoc ? ObjectClass::AdHocEvent : it.row->cls;
}

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
            return classForGateway(it);
        case Family::Activity:
        case Family::SubProcess:
            return classForActivity(it, isInAdHoc);
        case Family::AdHoc:
            return classForActivity(it, isInAdHoc);
        default:
            return classForEvent(document, links, node, isInAdHoc);
    }
}

std::string_view triggerWord(const Document& document, NodeIndex event, const std::vector<NodeIndex>& triggers) {
    if (triggers.empty()) return "none";
    if (triggers.size() == 1) return document[triggers.front()].row->word;
    return (document[event].flags & kParallelMultiple) != 0 ? "parallel multiple" : "multiple";
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
        const bool isOwn = it.parent == event;
        detail += detail.empty() ? "" : "\n";
        detail.append(it.row->word).append(": ").append(isOwn ? line : folded(line, kMaxBorrowedBytes));
    }
    return detail;
}

}  // namespace qor::interchange::bpmn
