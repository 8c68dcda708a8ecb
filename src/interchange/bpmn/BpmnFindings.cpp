// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnFindings.h"

#include <algorithm>
#include <utility>

#include "interchange/Wording.h"

namespace qor::interchange::bpmn {

namespace {

std::string counted(std::uint64_t count, std::string_view noun) {
    return concat({std::to_string(count), " ", noun, count == 1 ? "" : "s"});
}

constexpr std::array<std::string_view, static_cast<std::size_t>(FindingKind::Count)> kKindNames = {
    "elements that are not understood", "elements outside a process",
    "ids that are given twice",         "references to nothing",
    "flows from an element to itself",  "relations whose ends do not fit",
    "values that could not be kept",
};

}  // namespace

void Findings::error(Place place, std::string text) {
    _hasErrors = true;
    _findings.push_back({QorSeverity::Error, place, std::move(text)});
}

void Findings::warn(FindingKind kind, Place place, std::string text) {
    Tally& tally = _kinds[static_cast<std::size_t>(kind)];
    if (tally.elements++ < kMaxOfOneKind)
        _findings.push_back({QorSeverity::Warning, place, std::move(text)});
    else if (tally.first.line == 0)
        tally.first = place;
}

void Findings::leftOut(std::string_view element, Place place) {
    auto at = _leftOut.find(element);
    if (at == _leftOut.end()) at = _leftOut.emplace(element, Tally{0, 0, place}).first;
    ++at->second.elements;
}

void Findings::foreign(std::string_view space, bool isElement, Place place) {
    Tally* tally = &_furtherForeign;
    if (const auto at = _foreign.find(space); at != _foreign.end())
        tally = &at->second;
    else if (_foreign.size() < kMaxNamespaces)
        tally = &_foreign[std::string(space)];
    if (tally->first.line == 0) tally->first = place;
    ++(isElement ? tally->elements : tally->attributes);
}

void Findings::tellKinds() {
    for (std::size_t kind = 0; kind < _kinds.size(); ++kind) {
        const Tally& tally = _kinds[kind];
        if (tally.elements > kMaxOfOneKind)
            _findings.push_back({QorSeverity::Warning, tally.first,
                                 concat({"from here on ", std::to_string(tally.elements - kMaxOfOneKind), " more ",
                                         kKindNames[kind], " are not listed one by one"})});
    }
}

void Findings::tellLeftOut() {
    if (_leftOut.empty()) return;
    std::string list;
    Place first = _leftOut.begin()->second.first;
    for (const auto& [element, tally] : _leftOut) {
        list += concat({list.empty() ? "<" : ", <", element, "> (", std::to_string(tally.elements), ")"});
        if (std::pair(tally.first.line, tally.first.column) < std::pair(first.line, first.column)) first = tally.first;
    }
    _findings.push_back(
        {QorSeverity::Warning, first, "left out, since the method library has no place for it: " + list});
}

void Findings::tellForeign() {
    const auto tell = [this](std::string_view subject, const Tally& tally) {
        const std::string what = tally.elements == 0     ? counted(tally.attributes, "attribute")
                                 : tally.attributes == 0 ? counted(tally.elements, "element")
                                                         : counted(tally.elements, "element") + " and " +
                                                               counted(tally.attributes, "attribute");
        _findings.push_back({QorSeverity::Warning, tally.first,
                             concat({"left out, as an extension that is not part of BPMN: ", what, " of ", subject})});
    };
    for (const auto& [space, tally] : _foreign)
        tell(space.empty() ? "no namespace" : concat({"the namespace ", inQuotes(space)}), tally);
    if (_furtherForeign.first.line != 0) tell("further namespaces", _furtherForeign);
}

void Findings::deliver(ImportSink& sink) {
    tellKinds();
    tellLeftOut();
    tellForeign();
    std::stable_sort(_findings.begin(), _findings.end(), [](const Finding& a, const Finding& b) {
        return std::pair(a.place.line, a.place.column) < std::pair(b.place.line, b.place.column);
    });
    for (Finding& finding : _findings)
        sink.report(finding.severity, finding.place.line, finding.place.column, std::move(finding.text));
    _findings.clear();
}

}  // namespace qor::interchange::bpmn
