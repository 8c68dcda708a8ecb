// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>

#include "cli/Console.h"
#include "cli/JsonWriter.h"
#include "cli/Nearest.h"
#include "cli/SimCommands.h"
#include "cli/SimLibrary.h"
#include "cli/SimModels.h"
#include "cli/SimTable.h"
#include "simmap/QorSimReadiness.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

std::string_view issueName(QorSimReadinessIssue issue) {
    constexpr std::string_view kNames[] = {
        "no_execution_time_named", "no_execution_time",    "cannot_call_model",        "calls_no_model",
        "called_model_missing",    "cannot_have_calendar", "has_no_calendar",          "is_not_assigned",
        "type_does_not_fit",       "class_takes_no_part",  "performers_not_looked_at",
    };
    static_assert(std::size(kNames) == static_cast<std::size_t>(QorSimReadinessIssue::PerformersNotLookedAt) + 1);
    return kNames[static_cast<std::size_t>(issue)];
}

/// Everything that a check tells, in the words of people.
struct CheckedLibrary {
    Workspace& workspace;
    SimLibrary* library = nullptr;  ///< null when the file is no valid library
    std::vector<QorDiagnostic> definitionErrors;
    std::vector<QorDiagnostic> modelErrors;
    const SimModels* models = nullptr;
    const QorSimReadiness* readiness = nullptr;

    [[nodiscard]] std::string optionName(int index) const {
        return index < 0 ? std::string() : library->mapping().option(index)->name.str();
    }
    [[nodiscard]] std::string nameOf(long id) const { return id > 0 ? library->nameOf(id) : std::string(); }
    [[nodiscard]] QorFilePlace placeOf(const QorSimReadinessFinding& finding) const {
        if (finding.model == 0) return {workspace.libraryPath(), 0, 0};
        return models->placeOf(finding.model, finding.object);
    }
};

void writeText(Console& console, const CheckedLibrary& checked) {
    for (const auto* diagnostics : {&checked.workspace.fileDiagnostics(), &checked.modelErrors})
        for (const QorDiagnostic& diagnostic : *diagnostics)
            console.err(diagnosticLine(diagnostic, console.errColours()));
    for (const QorDiagnostic& error : checked.definitionErrors)
        console.out(diagnosticLine(error, console.outColours()));
    if (checked.library == nullptr) return;

    std::set<std::string> findings;  // several options may miss the same
    for (const QorSimReadinessFinding& finding : checked.readiness->findings()) {
        std::string text = finding.text.str();
        if (finding.isRemark()) {
            console.err(fmt::format("{}: {}\n", printable(checked.workspace.libraryPath()), printable(text)));
            continue;
        }
        if (finding.model != 0) text += fmt::format(" [{}]", checked.nameOf(finding.model));
        const QorDiagnostic diagnostic{QorSeverity::Warning, checked.placeOf(finding), std::move(text)};
        const std::string line = diagnosticLine(diagnostic, console.outColours());
        if (findings.insert(line).second) console.out(line);
    }
    SimTable uses({"option", "used as", "class", "attribute"});
    for (const QorSimUse& use : checked.readiness->uses())
        uses.add(
            {checked.optionName(use.option), use.key.str(), checked.nameOf(use.cls), checked.nameOf(use.attribute)});
    uses.write(console);
    console.out(fmt::format("{}, {} to complete in {}\n", counted(checked.definitionErrors.size(), "definition error"),
                            counted(findings.size(), "thing"),
                            counted(checked.models->models().numberOfElements(), "model")));
}

void writeFinding(JsonWriter& json, const CheckedLibrary& checked, const QorSimReadinessFinding& finding) {
    const QorFilePlace place = checked.placeOf(finding);
    json.beginObject(kLine)
        .field("issue", issueName(finding.issue))
        .field("option", std::string_view(checked.optionName(finding.option)))
        .field("class", std::string_view(checked.nameOf(finding.cls)))
        .field("attribute", std::string_view(checked.nameOf(finding.attribute)))
        .field("model", std::string_view(checked.nameOf(finding.model)))
        .field("object", std::string_view(checked.nameOf(finding.object)))
        .field("count", static_cast<std::int64_t>(finding.count))
        .field("file", std::string_view(place.file))
        .field("line", std::int64_t{place.line})
        .field("column", std::int64_t{place.column})
        .field("text", finding.text.view())
        .endObject();
}

void writeJson(Console& console, const CheckedLibrary& checked) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject().field("schema", "qor.sim.check/1");
    json.field("file", std::string_view(checked.workspace.libraryPath()));
    std::vector<QorDiagnostic> diagnostics = checked.workspace.fileDiagnostics();
    diagnostics.insert(diagnostics.end(), checked.modelErrors.begin(), checked.modelErrors.end());
    writeDiagnostics(json, diagnostics);
    json.key("definitions").beginObject();
    writeDiagnostics(json, checked.definitionErrors);
    json.endObject().key("findings").beginList();
    if (checked.readiness != nullptr)
        for (const QorSimReadinessFinding& finding : checked.readiness->findings())
            writeFinding(json, checked, finding);
    json.endList().key("uses").beginList();
    if (checked.readiness != nullptr)
        for (const QorSimUse& use : checked.readiness->uses())
            json.beginObject(kLine)
                .field("option", std::string_view(checked.optionName(use.option)))
                .field("key", use.key.view())
                .field("class", std::string_view(checked.nameOf(use.cls)))
                .field("attribute", std::string_view(checked.nameOf(use.attribute)))
                .endObject();
    json.endList().endObject();
}

/// Index of the option of that name, all of them without a name; nothing, after telling so, when there is none.
std::optional<int> chooseOption(const std::string& wanted, QorSimMappingHandler& mapping, Console& console) {
    if (wanted.empty()) return QorSimReadiness::kAllOptions;
    std::vector<std::string> names;
    for (int index = 0; index < mapping.getSimOptionCount(); ++index) {
        if (mapping.option(index)->name.view() == wanted) return index;
        names.push_back(mapping.option(index)->name.str());
    }
    console.err(fmt::format("qor: {} no simulation option is named {}{}\n", console.errColours().error("error:"),
                            quoted(wanted), didYouMean(wanted, names)));
    return std::nullopt;
}

}  // namespace

Exit runSimCheck(const SimCheckOptions& options, Console& console) {
    InternalErrors internalErrors(console);
    console.progress().start();
    console.progress().say("reading " + options.library);
    Workspaces workspaces(options.language, internalErrors.windows());
    Workspace& workspace = workspaces.open(resolveLibrary(options.library));
    CheckedLibrary checked{workspace, nullptr, {}, {}, nullptr, nullptr};
    const auto write = options.json ? writeJson : writeText;
    if (!workspace.hasLibrary()) {
        write(console, checked);
        return Exit::BadInput;
    }

    SimLibrary library(workspace);
    checked.library = &library;
    checked.definitionErrors = library.allErrors();
    const auto option = chooseOption(options.option, library.mapping(), console);
    if (!option) return Exit::WrongUse;

    SimModels models(workspace);
    models.read(options.files);
    checked.models = &models;
    checked.modelErrors = models.diagnostics();
    QorSimReadiness readiness;
    checked.readiness = &readiness;
    console.progress().say("looking what is missing");
    if (!readiness.check(workspace.library(), library.mapping(), library.results(), *option, models.models()))
        internalErrors.add("the check broke off");
    write(console, checked);

    if (internalErrors.count() != 0) return Exit::Internal;
    if (hasErrors(checked.modelErrors)) return Exit::BadInput;
    const auto isToComplete = [](const QorSimReadinessFinding& finding) { return !finding.isRemark(); };
    const bool isComplete = std::none_of(readiness.findings().begin(), readiness.findings().end(), isToComplete);
    return hasErrors(checked.definitionErrors) || !isComplete ? Exit::Findings : Exit::Clean;
}

}  // namespace qor::cli
