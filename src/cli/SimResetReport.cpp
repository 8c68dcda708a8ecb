// SPDX-License-Identifier: Apache-2.0
#include "cli/SimResetReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "cli/Console.h"
#include "cli/JsonWriter.h"
#include "cli/Nearest.h"
#include "cli/SimTable.h"
#include "cli/Text.h"

namespace qor::cli {

namespace {

std::string nameOf(const QorRepositoryReader& reader, long id) {
    return std::string(reader.nameOf(static_cast<QorIdentifier>(id)));
}

void writeText(const SimResetOptions& options, const QorRepositoryReader& reader, const QorSimResultReset& reset,
               Console& console) {
    SimTable table({"model", "object", "attribute", options.dryRun ? "now" : "before", "after"});
    std::set<long> objects;
    for (const QorSimResultChange& change : reset.changes()) {
        objects.insert(change.object);
        table.add({nameOf(reader, change.model), nameOf(reader, change.object), nameOf(reader, change.attribute),
                   change.before.str(), QorSimResultReset::textAfter(change)});
    }
    table.write(console);
    console.out(fmt::format("{} {} of {}\n", options.dryRun ? "A reset would change" : "The reset changed",
                            counted(reset.changes().size(), "value"), counted(objects.size(), "object")));
}

void writeJson(const SimResetOptions& options, const QorRepositoryReader& reader, const QorSimResultReset& reset,
               Console& console) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject().field("schema", "qor.sim.reset/1").field("dry_run", options.dryRun);
    json.key("changes").beginList();
    for (const QorSimResultChange& change : reset.changes())
        json.beginObject(JsonWriter::Layout::Line)
            .field("model", std::string_view(nameOf(reader, change.model)))
            .field("object", std::string_view(nameOf(reader, change.object)))
            .field("attribute", std::string_view(nameOf(reader, change.attribute)))
            .field("now", change.before.view())
            .field("after", std::string_view(QorSimResultReset::textAfter(change)))
            .endObject();
    json.endList().endObject();
}

}  // namespace

bool chooseModels(const std::vector<std::string>& wanted, const ISortedSet<long>& offered,
                  const QorRepositoryReader& reader, ISortedSet<long>& chosen, Console& console) {
    std::vector<std::string> names;
    std::set<std::string> missing(wanted.begin(), wanted.end());
    for (const long model : offered) {
        names.push_back(nameOf(reader, model));
        if (std::find(wanted.begin(), wanted.end(), names.back()) == wanted.end()) continue;
        chosen.add(model);
        missing.erase(names.back());
    }
    for (const std::string& name : missing)
        refuseReset(console, fmt::format("no model is named {}{}", quoted(name), didYouMean(name, names)));
    return missing.empty();
}

void refuseReset(Console& console, std::string_view why) {
    console.err(fmt::format("qor: {} {}\n", console.errColours().error("error:"), why));
}

void reportReset(const SimResetOptions& options, const QorRepositoryReader& reader, const QorSimResultReset& reset,
                 Console& console) {
    (options.json ? writeJson : writeText)(options, reader, reset, console);
}

}  // namespace qor::cli
