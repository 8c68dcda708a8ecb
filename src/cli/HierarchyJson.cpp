// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/HierarchyView.h"
#include "cli/JsonWriter.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

std::string_view wordOf(QorHierarchyEnd end) {
    constexpr std::string_view kWords[] = {"inner", "leaf", "cycle", "cut"};
    return kWords[static_cast<std::size_t>(end)];
}

void writeModels(JsonWriter& json, const HierarchyView& view) {
    json.key("models").beginList();
    for (const long model : view.index().models())
        json.beginObject(kLine)
            .field("id", std::int64_t{model})
            .field("name", std::string_view(view.nameOf(model)))
            .field("type", std::string_view(view.typeOf(model)))
            .field("file", std::string_view(view.set().placeOf(model).file))
            .endObject();
    json.endList();
}

void writeTrees(JsonWriter& json, const HierarchyReport& report) {
    json.key("trees").beginList();
    std::size_t room = report.maxElements;
    for (const long root : report.chosen) {
        QorHierarchyTree tree;
        if (room == 0 || tree.build(report.view.index(), root, room) != QorErrorCode::Ok) continue;
        room -= std::min(room, tree.elements().size());
        json.beginObject().field("complete", tree.isComplete()).key("elements").beginList();
        for (const QorHierarchyElement& element : tree.elements())
            json.beginObject(kLine)
                .field("depth", static_cast<std::int64_t>(element.depth))
                .field("model", std::int64_t{element.model})
                .field("end", wordOf(element.end))
                .field("omitted", static_cast<std::int64_t>(element.omitted))
                .endObject();
        json.endList().endObject();
    }
    json.endList();
}

void writeCycles(JsonWriter& json, const HierarchyView& view) {
    json.key("circles").beginList();
    for (const QorModelCycle& cycle : view.index().cycles()) {
        json.beginObject(kLine).field("models", static_cast<std::int64_t>(cycle.numberOfModels));
        json.key("path").beginList(kLine);
        for (const long model : cycle.path) json.value(std::int64_t{model});
        json.endList().endObject();
    }
    json.endList();
}

void writeUses(JsonWriter& json, const HierarchyReport& report) {
    json.key("uses").beginList();
    for (const long model : report.chosen)
        for (const QorModelReference& use : report.view.index().usesOf(model))
            json.beginObject(kLine)
                .field("model", std::int64_t{model})
                .field("object", std::string_view(use.object > 0 ? report.view.nameOf(use.object) : std::string()))
                .field("by", std::int64_t{use.source})
                .field("attribute", std::string_view(report.view.nameOf(use.attribute)))
                .field("hierarchy", use.hierarchy)
                .endObject();
    json.endList();
}

std::size_t writeBroken(JsonWriter& json, const HierarchyView& view) {
    const std::vector<HeldReference> all = view.badReferences();
    json.key("broken").beginList();
    for (const HeldReference& held : all) {
        const QorModelReference& reference = held.bad->reference;
        const QorInterModRefTarget& target = held.bad->target;
        const QorFilePlace place = view.set().placeOf(reference.source, held.object);
        json.beginObject(kLine)
            .field("model", std::int64_t{reference.source})
            .field("object", std::string_view(held.object > 0 ? view.nameOf(held.object) : std::string()))
            .field("attribute", std::string_view(view.nameOf(reference.attribute)))
            .field("state", HierarchyView::wordOf(reference.state))
            .field("target_model", target.modelName.view())
            .field("target_type", target.modelTypeName.view())
            .field("target_object", target.objectName.view())
            .field("target_class", target.className.view())
            .field("file", std::string_view(place.file))
            .field("line", std::int64_t{place.line})
            .field("column", std::int64_t{place.column})
            .endObject();
    }
    const auto calls = view.set().unknownCalls();
    for (const auto& call : calls) {
        const QorFilePlace place = view.set().placeOf(call.model, call.object);
        json.beginObject(kLine)
            .field("model", std::int64_t{call.model})
            .field("object", std::string_view(view.nameOf(call.object)))
            .field("state", "unknown_process")
            .field("called", std::string_view(call.called))
            .field("file", std::string_view(place.file))
            .field("line", std::int64_t{place.line})
            .field("column", std::int64_t{place.column})
            .endObject();
    }
    json.endList();
    return all.size() + calls.size();
}

}  // namespace

std::size_t writeHierarchyJson(const HierarchyReport& report, Console& console) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject().field("schema", "qor.hierarchy/1");
    writeDiagnostics(json, report.view.set().diagnostics());
    writeModels(json, report.view);
    writeTrees(json, report);
    writeCycles(json, report.view);
    if (report.whereUsed) writeUses(json, report);
    const std::size_t broken = report.broken ? writeBroken(json, report.view) : 0;
    json.endObject();
    return broken;
}

}  // namespace qor::cli
