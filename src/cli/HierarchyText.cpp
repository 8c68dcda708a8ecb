// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <map>

#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/HierarchyView.h"

namespace qor::cli {

namespace {

std::string lineOf(const HierarchyView& view, const QorHierarchyElement& element, Console& console) {
    std::string line = std::string(4 * element.depth, ' ') + view.called(element.model);
    const QorFilePlace place = view.set().placeOf(element.model);
    if (element.depth == 0 && !place.file.empty()) line += console.outColours().dim("  " + printable(place.file));
    if (element.end == QorHierarchyEnd::Cycle) line += console.outColours().warning(" stands above itself");
    if (element.omitted != 0) line += console.outColours().dim(fmt::format(" and {} not shown", element.omitted));
    return line + "\n";
}

void writeTrees(const HierarchyReport& report, Console& console) {
    std::size_t room = report.maxElements;
    for (std::size_t at = 0; at < report.chosen.size(); ++at) {
        if (room == 0) {
            console.out(fmt::format("{} not shown; --max-elements shows more\n",
                                    counted(report.chosen.size() - at, "further tree")));
            return;
        }
        QorHierarchyTree tree;
        if (tree.build(report.view.index(), report.chosen[at], room) != QorErrorCode::Ok) continue;
        for (const QorHierarchyElement& element : tree.elements()) console.out(lineOf(report.view, element, console));
        room -= std::min(room, tree.elements().size());
    }
}

void writeCycles(const HierarchyView& view, Console& console) {
    for (const QorModelCycle& cycle : view.index().cycles()) {
        std::string line = "circle: ";
        for (const long model : cycle.path) line += view.called(model) + " -> ";
        line += view.called(cycle.path.front());
        if (cycle.numberOfModels > cycle.path.size())
            line += fmt::format("; {} reach each other", counted(cycle.numberOfModels, "model"));
        console.out(line + "\n");
    }
}

void writeUses(const HierarchyView& view, long model, Console& console) {
    const auto uses = view.index().usesOf(model);
    if (uses.empty()) return console.out(view.called(model) + " is not used\n");
    console.out(fmt::format("{} is used {}\n", view.called(model),
                            uses.size() == 1 ? "once" : fmt::format("{} times", uses.size())));
    std::map<std::tuple<long, long, long>, std::size_t> counts;  // one line for the same use
    for (const QorModelReference& use : uses) ++counts[{use.source, use.attribute, use.object}];
    for (const auto& [use, count] : counts) {
        const auto& [source, attribute, object] = use;
        std::string line = fmt::format("    {}: {}", view.called(source), printable(view.nameOf(attribute)));
        if (object > 0) line += fmt::format(", to {}", quoted(view.nameOf(object)));
        if (count > 1) line += fmt::format(", {} times", count);
        const std::string file = view.set().placeOf(source).file;
        console.out(line + (file.empty() ? "" : console.outColours().dim("  " + printable(file))) + "\n");
    }
}

std::size_t writeBroken(const HierarchyView& view, Console& console) {
    const std::vector<HeldReference> all = view.badReferences();
    for (const HeldReference& held : all) {
        const QorModelReference& reference = held.bad->reference;
        std::string text = fmt::format("model {}: ", quoted(view.nameOf(reference.source)));
        if (held.object > 0) text += fmt::format("object {}: ", quoted(view.nameOf(held.object)));
        text += fmt::format("{}: {}", printable(view.nameOf(reference.attribute)), HierarchyView::reasonOf(*held.bad));
        const auto severity =
            reference.state == QorReferenceState::SeveralObjects ? QorSeverity::Warning : QorSeverity::Error;
        console.out(diagnosticLine({severity, view.set().placeOf(reference.source, held.object), std::move(text)},
                                   console.outColours()));
    }
    const auto calls = view.set().unknownCalls();
    for (const auto& call : calls) {
        std::string text =
            fmt::format("model {}: object {}: calls {}, which is no process of these files",
                        quoted(view.nameOf(call.model)), quoted(view.nameOf(call.object)), quoted(call.called));
        console.out(diagnosticLine({QorSeverity::Error, view.set().placeOf(call.model, call.object), std::move(text)},
                                   console.outColours()));
    }
    return all.size() + calls.size();
}

}  // namespace

std::size_t writeHierarchyText(const HierarchyReport& report, Console& console) {
    if (!report.whereUsed && !report.broken) {
        writeTrees(report, console);
        writeCycles(report.view, console);
        return 0;
    }
    if (report.whereUsed)
        for (const long model : report.chosen) writeUses(report.view, model, console);
    if (!report.broken) return 0;
    const std::size_t count = writeBroken(report.view, console);
    console.out(fmt::format("{} in {}; {} lead nowhere or to several objects\n",
                            counted(report.view.index().numberOfReferences(), "reference"),
                            counted(report.view.index().models().numberOfElements(), "model"), count));
    return count;
}

}  // namespace qor::cli
