// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include "cli/Console.h"
#include "cli/JsonWriter.h"
#include "cli/SimCommands.h"
#include "cli/SimLibrary.h"
#include "cli/SimTable.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;
constexpr const char* kStandardKeys[] = {"executiontime", "waitingtime", "restingtime", "transporttime"};
constexpr const char* kEvents[] = {"start", "interrupt", "continue", "finish", "any"};
constexpr const char* kHolders[] = {"PROCESSSTART", "ACTIVITY", "PERSON"};

/// What a listing shows: rows under the same names, for people and for programs.
struct Listing {
    std::string_view name;
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;
    std::vector<QorDiagnostic> errors;
};

Listing optionsOf(SimLibrary& library) {
    Listing listing{"options", {"option", "key", "value"}, {}, library.mappingErrors()};
    for (int index = 0; index < library.mapping().getSimOptionCount(); ++index) {
        const QorSimulationOption& option = *library.mapping().option(index);
        const auto add = [&](std::string key, std::string value) {
            listing.rows.push_back({std::to_string(option.number), std::move(key), std::move(value)});
        };
        const auto addThing = [&](std::string key, long id) {
            if (id > 0) add(std::move(key), library.nameOf(id));
        };
        add("name", option.name.str());
        add("helptext", option.helpText.str());
        if (option.complete == 0) continue;  // the default option: nothing else is known of it
        add("activity", option.activityClassName.str());
        for (unsigned long place = 0; place < std::size(kStandardKeys); ++place)
            addThing(kStandardKeys[place], option.standardAttributes.elementAtIndex(place));
        int number = 0;
        for (const long attribute : option.userAttributes)
            addThing(fmt::format("userattribute-{}", ++number), attribute);
        addThing("processcall", option.processCallClass);
        addThing("subperformerattr", option.subPerformerAttribute);
    }
    return listing;
}

Listing classesOf(SimLibrary& library) {
    Listing listing{"classes", {"part", "class"}, {}, library.mappingErrors()};
    ISortedSet<long> classes;
    library.mapping().getSimableBPClasses(classes);
    for (const long cls : classes) listing.rows.push_back({"business_process", library.nameOf(cls)});
    library.mapping().getSimableWEClasses(classes);
    for (const long cls : classes) listing.rows.push_back({"working_environment", library.nameOf(cls)});
    return listing;
}

Listing actionsOf(SimLibrary& library) {
    Listing listing{"actions", {"option", "class", "attribute", "event"}, {}, library.mappingErrors()};
    for (int index = 0; index < library.mapping().getSimOptionCount(); ++index) {
        const QorSimulationOption& option = *library.mapping().option(index);
        for (const QorSimOptionAction& action : option.actions)
            listing.rows.push_back({option.name.str(), library.nameOf(action.cls), library.nameOf(action.attribute),
                                    kEvents[static_cast<std::size_t>(action.event)]});
    }
    return listing;
}

Listing textsOf(SimLibrary& library) {
    Listing listing{"texts", {"key", "text"}, {}, library.textErrors()};
    const QorSimTextHandler& texts = library.texts();
    if (texts.isDefined() == 0 || !texts.getErrorText().IsEmpty()) return listing;
    const std::pair<const char*, SV::String> rows[] = {
        {"bp", texts.getBPText()},
        {"cycletime", texts.getCycleTimeText()},
        {"activity", texts.getActivityText()},
        {"number", texts.getNumberText()},
        {"actor", texts.getActorText()},
        {"perscost", texts.getPersCostText()},
        {"resource", texts.getResourceText()},
        {"rescost", texts.getResCostText()},
    };
    for (const auto& [key, text] : rows) listing.rows.push_back({key, text.str()});
    return listing;
}

Listing resultsOf(SimLibrary& library) {
    Listing listing{"results", {"holder", "class", "key", "attribute", "from"}, {}, library.resultErrors()};
    for (const QorSimResultHolder& holder : library.results().holders()) {
        if (holder.cls == 0) continue;
        const std::string kind = kHolders[static_cast<std::size_t>(holder.kind)];
        const auto keys = QorSimResultDefinitions::fixedKeys(holder.kind);
        for (unsigned long place = 0; place < holder.attributes.numberOfElements(); ++place)
            if (const long attribute = holder.attributes.elementAtIndex(place); attribute != 0)
                listing.rows.push_back(
                    {kind, holder.className.str(), keys.elementAtIndex(place).str(), library.nameOf(attribute), ""});
        for (const QorSimResultSource& source : holder.sources)
            listing.rows.push_back({kind, holder.className.str(), "resultattribute",
                                    library.nameOf(source.resultAttribute),
                                    library.nameOf(source.cls) + "." + library.nameOf(source.attribute)});
    }
    return listing;
}

Listing listingOf(SimListing listing, SimLibrary& library) {
    switch (listing) {
        case SimListing::Options:
            return optionsOf(library);
        case SimListing::Classes:
            return classesOf(library);
        case SimListing::Actions:
            return actionsOf(library);
        case SimListing::Texts:
            return textsOf(library);
        case SimListing::Results:
            return resultsOf(library);
    }
    return {};
}

std::string_view nameOf(SimListing listing) {
    constexpr std::string_view kNames[] = {"options", "classes", "actions", "texts", "results"};
    return kNames[static_cast<std::size_t>(listing)];
}

void writeText(Console& console, const Workspace& workspace, const Listing& listing) {
    for (const auto* diagnostics : {&workspace.fileDiagnostics(), &listing.errors})
        for (const QorDiagnostic& diagnostic : *diagnostics)
            console.err(diagnosticLine(diagnostic, console.errColours()));
    SimTable table(listing.columns);
    for (const auto& row : listing.rows) table.add(row);
    table.write(console);
    if (workspace.hasLibrary() && table.isEmpty())
        console.err(fmt::format("{}: there are no simulation {}\n", printable(workspace.libraryPath()), listing.name));
}

void writeJson(Console& console, const Workspace& workspace, const Listing& listing) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject()
        .field("schema", std::string_view(fmt::format("qor.sim.{}/1", listing.name)))
        .field("file", std::string_view(workspace.libraryPath()));
    std::vector<QorDiagnostic> diagnostics = workspace.fileDiagnostics();
    diagnostics.insert(diagnostics.end(), listing.errors.begin(), listing.errors.end());
    writeDiagnostics(json, diagnostics);
    json.key(listing.name).beginList();
    for (const auto& row : listing.rows) {
        json.beginObject(kLine);
        for (std::size_t column = 0; column < row.size(); ++column)
            json.field(listing.columns[column], std::string_view(row[column]));
        json.endObject();
    }
    json.endList().endObject();
}

}  // namespace

Exit runSimList(const SimListOptions& options, Console& console) {
    InternalErrors internalErrors(console);
    Workspaces workspaces(options.language, internalErrors.windows());
    Workspace& workspace = workspaces.open(resolveLibrary(options.library));
    Listing listing{nameOf(options.listing), {}, {}, {}};
    if (workspace.hasLibrary()) {
        SimLibrary library(workspace);
        listing = listingOf(options.listing, library);
    }
    (options.json ? writeJson : writeText)(console, workspace, listing);

    if (internalErrors.count() != 0) return Exit::Internal;
    if (!workspace.hasLibrary()) return Exit::BadInput;
    return hasErrors(listing.errors) ? Exit::Findings : Exit::Clean;
}

Exit runSimWrite(const SimWriteOptions& options, Console& console) {
    InternalErrors internalErrors(console);
    Workspaces workspaces("en", internalErrors.windows());
    Workspace& workspace = workspaces.open(resolveLibrary(options.library));
    for (const QorDiagnostic& diagnostic : workspace.fileDiagnostics())
        console.err(diagnosticLine(diagnostic, console.errColours()));
    if (!workspace.hasLibrary()) return Exit::BadInput;

    SimLibrary library(workspace);
    for (const QorDiagnostic& error : library.mappingErrors()) console.err(diagnosticLine(error, console.errColours()));
    SV::String text;
    const bool written = library.mapping().getSimMappingKEX(text, options.withoutClasses ? 0 : 1) == 1;
    console.setMode(OutputMode::Document);
    console.out(text.view());
    if (!text.view().ends_with('\n')) console.out("\n");
    if (!written || internalErrors.count() != 0) return Exit::Internal;
    return library.mappingErrors().empty() ? Exit::Clean : Exit::Findings;
}

}  // namespace qor::cli
