// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnFindings.h"

#include <algorithm>
#include <utility>

#include "interchange/Wording.h"
#include "interchange/bpmn/BpmnElements.h"

namespace qor::interchange::bpmn {

namespace {

std::string counted(std::uint64_t count, std::string_view noun) {
    return concat({std::to_string(count), " ", noun, count == 1 ? "" : "s"});
}

bool isBefore(Place one, Place other) { return std::pair(one.line, one.column) < std::pair(other.line, other.column); }

constexpr std::array<std::string_view, static_cast<std::size_t>(FindingKind::Count)> kKindNames = {
    "elements that are not understood", "elements outside a process",
    "ids that are given twice",         "references to nothing",
    "flows from an element to itself",  "relations whose ends do not fit",
    "values that could not be kept",
};

/// "<a> (line 2), <b> (line 5) and 7 more", behind the words that lead there.
std::string firstOf(std::string_view before, const std::vector<QorMention>& mentions, std::uint64_t named) {
    constexpr std::size_t kShown = 3;
    std::string list;
    const std::size_t shown = std::min(kShown, mentions.size());
    for (std::size_t i = 0; i < shown; ++i)
        list += concat({i == 0 ? before : ", ", mentions[i].text, " (line ", std::to_string(mentions[i].line), ")"});
    if (named > shown && shown != 0) list += concat({" and ", std::to_string(named - shown), " more"});
    return list;
}

}  // namespace

void Findings::error(Place place, std::string text) {
    _hasErrors = true;
    _findings.push_back({QorSeverity::Error, place, std::move(text), {}});
}

void Findings::warn(FindingKind kind, Place place, std::string text) {
    Tally& tally = _kinds[static_cast<std::size_t>(kind)];
    if (tally.elements++ < kMaxOfOneKind)
        _findings.push_back({QorSeverity::Warning, place, std::move(text), {}});
    else if (tally.first.line == 0)
        tally.first = place;
}

void Findings::leftOut(std::string_view element, std::string_view id, Place place) {
    auto at = _leftOut.find(element);
    if (at == _leftOut.end()) at = _leftOut.emplace(element, Tally{0, 0, place}).first;
    ++at->second.elements;
    if (isBefore(place, at->second.first)) at->second.first = place;
    mention(_namesLeftOut, place, [&] {
        return concat({"<", element, id.empty() ? ">" : "> ", id.empty() ? std::string() : inQuotes(id)});
    });
}

Findings::Tally& Findings::countForeign(std::string_view space, bool isElement, Place place) {
    Tally* tally = &_furtherForeign;
    if (const auto at = _foreign.find(space); at != _foreign.end())
        tally = &at->second;
    else if (_foreign.size() < kMaxNamespaces)
        tally = &_foreign[std::string(space)];
    if (tally->first.line == 0) tally->first = place;
    ++(isElement ? tally->elements : tally->attributes);
    return *tally;
}

void Findings::tellKinds() {
    for (std::size_t kind = 0; kind < _kinds.size(); ++kind) {
        const Tally& tally = _kinds[kind];
        if (tally.elements > kMaxOfOneKind)
            _findings.push_back({QorSeverity::Warning,
                                 tally.first,
                                 concat({"from here on ", std::to_string(tally.elements - kMaxOfOneKind), " more ",
                                         kKindNames[kind], " are not listed one by one"}),
                                 {}});
    }
}

void Findings::tellLeftOut() {
    if (_leftOut.empty()) return;
    std::string list;
    Place first = _leftOut.begin()->second.first;
    for (const auto& [element, tally] : _leftOut) {
        list += concat({list.empty() ? "<" : ", <", element, "> (", std::to_string(tally.elements), ")"});
        if (isBefore(tally.first, first)) first = tally.first;
    }
    std::vector<QorMention>& mentions = _namesLeftOut.mentions;
    std::stable_sort(mentions.begin(), mentions.end(), [](const QorMention& a, const QorMention& b) {
        return isBefore({a.line, a.column}, {b.line, b.column});
    });
    list += firstOf("; these are ", mentions, _namesLeftOut.named);
    _findings.push_back({QorSeverity::Warning, first, "left out, since the method library has no place for it: " + list,
                         std::move(mentions)});
}

void Findings::tellForeign() {
    const auto tell = [this](std::string_view subject, Tally& tally,
                             std::string_view why = "as an extension that is not part of BPMN") {
        const std::string what = tally.elements == 0     ? counted(tally.attributes, "attribute")
                                 : tally.attributes == 0 ? counted(tally.elements, "element")
                                                         : counted(tally.elements, "element") + " and " +
                                                               counted(tally.attributes, "attribute");
        _findings.push_back(
            {QorSeverity::Warning, tally.first,
             concat({"left out, ", why, ": ", what, " of ", subject, firstOf(": ", tally.mentions, tally.named)}),
             std::move(tally.mentions)});
    };
    for (auto& [space, tally] : _foreign) {
        const std::string subject =
            space.empty() ? std::string("no namespace") : concat({"the namespace ", inQuotes(space)});
        if (space == kBpmnSpace)
            tell(subject, tally, "since it stands among extensions");
        else
            tell(subject, tally);
    }
    if (_furtherForeign.first.line != 0) tell("further namespaces", _furtherForeign);
}

void Findings::deliver(ImportSink& sink) {
    tellKinds();
    tellLeftOut();
    tellForeign();
    std::stable_sort(_findings.begin(), _findings.end(),
                     [](const Finding& a, const Finding& b) { return isBefore(a.place, b.place); });
    for (Finding& finding : _findings)
        sink.report(finding.severity, finding.place.line, finding.place.column, std::move(finding.text),
                    std::move(finding.mentions));
    _findings.clear();
}

}  // namespace qor::interchange::bpmn
