// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>

#include "cardinality/QorCardinalityHandler.h"
#include "cardinality/QorClassCardinality.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/InternalErrors.h"
#include "cli/JsonWriter.h"
#include "cli/Nearest.h"
#include "cli/RuleOversights.h"
#include "cli/ShippedLibraries.h"
#include "cli/Workspace.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

template <class Record>
struct NamedLimit {
    std::string_view name;
    QorCardinalityLimit Record::*limit;
};
constexpr NamedLimit<QorClassCardinality> kClassLimits[] = {
    {"max_objects", &QorClassCardinality::maxObjects}, {"min_objects", &QorClassCardinality::minObjects},
    {"max_total", &QorClassCardinality::maxTotal},     {"min_total", &QorClassCardinality::minTotal},
    {"max_in", &QorClassCardinality::maxIn},           {"min_in", &QorClassCardinality::minIn},
    {"max_out", &QorClassCardinality::maxOut},         {"min_out", &QorClassCardinality::minOut},
};
constexpr NamedLimit<QorRelationCardinality> kRelationLimits[] = {
    {"max_in", &QorRelationCardinality::maxIn},
    {"min_in", &QorRelationCardinality::minIn},
    {"max_out", &QorRelationCardinality::maxOut},
    {"min_out", &QorRelationCardinality::minOut},
    {"default_max_in", &QorRelationCardinality::defaultMaxIn},
    {"default_min_in", &QorRelationCardinality::defaultMinIn},
    {"default_max_out", &QorRelationCardinality::defaultMaxOut},
    {"default_min_out", &QorRelationCardinality::defaultMinOut},
};
constexpr NamedLimit<QorRelationTargetCardinality> kTargetLimits[] = {
    {"max_to_target", &QorRelationTargetCardinality::maxToTarget},
    {"min_to_target", &QorRelationTargetCardinality::minToTarget},
    {"max_from_source", &QorRelationTargetCardinality::maxFromSource},
    {"min_from_source", &QorRelationTargetCardinality::minFromSource},
};

/// What is to be told about a library's rules.
struct RulesListing {
    std::vector<RuleError> errors;
    std::vector<QorDiagnostic> ofFile;  ///< about the file as such, and what reading passes over in silence
    std::vector<QorClassInfo> classes;  ///< those with rules, in the order of the library file
};

std::vector<QorClassInfo> allClasses(Workspace& workspace) {
    std::vector<QorClassInfo> classes;
    for (const QorLibraryPart part : {QorLibraryPart::BusinessProcess, QorLibraryPart::WorkingEnvironment})
        for (const QorClassInfo& cls : workspace.reader().classesOf(workspace.part(part)))
            if (!cls.isRecordClass) classes.push_back(cls);
    return classes;
}

const QorClassCardinality* rulesOf(const QorClassInfo& cls) {
    return QorCardinalityHandler::Instance().getClassCardinality(cls.id);
}

RulesListing listingOf(Workspace& workspace, const std::vector<QorClassInfo>& classes) {
    RulesListing listing;
    for (const QorClassInfo& cls : classes)
        if (rulesOf(cls) != nullptr) listing.classes.push_back(cls);
    const auto isAsked = [&classes](QorIdentifier about) {
        return about == QorNoIdentifier || std::any_of(classes.begin(), classes.end(),
                                                       [about](const QorClassInfo& cls) { return cls.id == about; });
    };
    for (const RuleError& error : workspace.ruleErrors())
        if (isAsked(error.cls)) listing.errors.push_back(error);
    listing.ofFile = workspace.fileDiagnostics();
    for (const RuleOversight& oversight : ruleOversights(workspace))
        if (isAsked(oversight.cls)) listing.ofFile.push_back(oversight.warning);
    return listing;
}

template <class Record, std::size_t count>
void writeLimits(JsonWriter& json, const Record& record, const NamedLimit<Record> (&limits)[count]) {
    json.key("limits").beginObject(kLine);
    for (const NamedLimit<Record>& limit : limits) json.field(limit.name, std::int64_t{(record.*limit.limit).count});
    json.endObject();
}

void writeClass(JsonWriter& json, const QorRepositoryReader& reader, const QorClassInfo& cls) {
    const QorClassCardinality& rules = *rulesOf(cls);
    json.beginObject().field("class", cls.name);
    writeLimits(json, rules, kClassLimits);
    json.key("relations").beginList();
    for (const QorRelationCardinality& relation : rules.relations) {
        json.beginObject().field("relation_class", reader.nameOf(relation.key()));
        writeLimits(json, relation, kRelationLimits);
        json.key("targets").beginList();
        for (const QorRelationTargetCardinality& target : relation.targets) {
            json.beginObject().field("other_class", reader.nameOf(target.key()));
            writeLimits(json, target, kTargetLimits);
            json.endObject();
        }
        json.endList().endObject();
    }
    SV::String report;
    json.endList().field("report", rules.toReportText(report).view()).endObject();
}

void writeJson(Console& console, const Workspace& workspace, const RulesListing& listing) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject().field("schema", "qor.rules/1").field("file", std::string_view(workspace.libraryPath()));
    writeDiagnostics(json, listing.ofFile);
    json.field("library", workspace.reader().nameOf(workspace.library()));
    json.key("definition_errors").beginList();
    for (const RuleError& error : listing.errors) writePlacedText(json, error.place, error.text);
    json.endList().key("classes").beginList();
    for (const QorClassInfo& cls : listing.classes) writeClass(json, workspace.reader(), cls);
    json.endList().endObject();
}

void writeText(Console& console, const Workspace& workspace, const RulesListing& listing) {
    for (const QorDiagnostic& diagnostic : listing.ofFile)
        console.err(diagnosticLine(diagnostic, console.errColours()));
    for (const RuleError& error : listing.errors)
        console.out(diagnosticLine({QorSeverity::Error, error.place, error.text}, console.outColours()));
    for (const QorClassInfo& cls : listing.classes) {
        SV::String report;
        console.out(printableLines(rulesOf(cls)->toReportText(report).view()));
    }
    if (workspace.hasLibrary() && listing.classes.empty() && listing.errors.empty())
        console.err(fmt::format("{}: there are no rules\n", printable(workspace.libraryPath())));
}

/// Narrows the classes down to the one that is wanted; false, after telling so, when there is none of that name.
bool keepClass(const std::string& wanted, std::vector<QorClassInfo>& classes, Console& console) {
    std::vector<std::string> names;
    for (const QorClassInfo& cls : classes) names.emplace_back(cls.name);
    std::erase_if(classes, [&](const QorClassInfo& cls) { return cls.name != wanted; });
    if (!classes.empty()) return true;
    console.err(fmt::format("qor: {} no class is named {}{}\n", console.errColours().error("error:"), quoted(wanted),
                            didYouMean(wanted, names)));
    return false;
}

}  // namespace

Exit runRules(const RulesOptions& options, Console& console) {
    InternalErrors internalErrors(console);
    console.progress().start();
    console.progress().say("reading " + options.file);
    Workspaces workspaces(options.language, internalErrors.windows());
    Workspace& workspace = workspaces.open(resolveLibrary(options.file));

    std::vector<QorClassInfo> classes = allClasses(workspace);
    if (workspace.hasLibrary() && !options.cls.empty() && !keepClass(options.cls, classes, console))
        return Exit::WrongUse;
    const RulesListing listing = listingOf(workspace, classes);
    (options.json ? writeJson : writeText)(console, workspace, listing);

    if (internalErrors.count() != 0) return Exit::Internal;
    if (!workspace.hasLibrary()) return Exit::BadInput;
    return listing.errors.empty() ? Exit::Clean : Exit::Findings;
}

}  // namespace qor::cli
