// SPDX-License-Identifier: Apache-2.0
#include "cli/RenameCommand.h"

#include <fmt/format.h>

#include <map>
#include <set>

#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/InternalErrors.h"
#include "cli/JsonWriter.h"
#include "cli/ModelSet.h"
#include "modeltools/QorNameGenerator.h"
#include "modeltools/QorNamePlan.h"
#include "modeltools/QorReferenceIndex.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

/// A reference to an object that gets another name.
struct LostReference {
    QorModelReference reference;
    std::string newName;
};

/// What naming would do to the models of a set.
class RenameView {
public:
    explicit RenameView(const ModelSet& set) : _set(set) {}

    /// False when memory ran out.
    bool make() {
        for (const long model : _set.models()) {
            QorNamePlan plan(model);
            if (!plan.make()) return false;
            for (const QorNameChange& change : plan.changes()) _newNames[change.object] = change.newName.str();
            addErrors(plan, model);
            _plans.emplace_back(model, plan);
        }
        return findLost();
    }

    [[nodiscard]] const ModelSet& set() const { return _set; }
    [[nodiscard]] const std::vector<std::pair<long, QorNamePlan>>& plans() const { return _plans; }
    /// Of rules, each once, and of values that cannot be read.
    [[nodiscard]] const std::vector<QorDiagnostic>& errors() const { return _errors; }
    [[nodiscard]] const std::vector<LostReference>& lost() const { return _lost; }
    [[nodiscard]] std::string nameOf(long id) const {
        return std::string(_set.workspace()->reader().nameOf(static_cast<QorIdentifier>(id)));
    }

private:
    void addErrors(const QorNamePlan& plan, long model) {
        Workspace& workspace = *_set.workspace();
        for (const QorNameProblem& problem : plan.problems()) {
            const auto cls = static_cast<QorIdentifier>(problem.cls);
            if (problem.object > 0) {
                _errors.push_back({QorSeverity::Error, _set.placeOf(model, problem.object),
                                   fmt::format("object {}: no name can be made (anamegen, line {})",
                                               quoted(nameOf(problem.object)), problem.line)});
            } else if (_toldClasses.insert(cls).second) {
                const QorIdentifier attribute =
                    workspace.reader().findAttribute(cls, QorNameGenerator::GetNameGenAttrName());
                _errors.push_back(
                    {QorSeverity::Error, workspace.libraryImporter().placeInText(cls, attribute, problem.position),
                     fmt::format("class {}: its objects are not named: {}", quoted(nameOf(cls)), problem.text.view())});
            }
        }
    }

    /// References carry names, so that those to a renamed object lead nowhere.
    bool findLost() {
        if (_newNames.empty()) return true;
        QorReferenceIndex index;
        if (!index.build(_set.models())) return false;
        for (const long model : _set.models())
            for (const QorModelReference& reference : index.referencesOf(model))
                if (const auto renamed = _newNames.find(reference.object); renamed != _newNames.end())
                    _lost.push_back({reference, renamed->second});
        return true;
    }

    const ModelSet& _set;
    std::vector<std::pair<long, QorNamePlan>> _plans;
    std::map<long, std::string> _newNames;
    std::set<QorIdentifier> _toldClasses;
    std::vector<QorDiagnostic> _errors;
    std::vector<LostReference> _lost;
};

std::string_view wordOf(QorNameReason reason) {
    return reason == QorNameReason::DefaultName ? "default_name" : "source_changed";
}

void writeChange(const RenameView& view, long model, const QorNameChange& change, Console& console) {
    const std::string place = placeText(view.set().placeOf(model, change.object));
    const bool isDefault = change.reason == QorNameReason::DefaultName;
    console.out(
        fmt::format("{}{}{} -> {}  {}\n", printable(place), place.empty() ? "" : ": ", quoted(change.oldName),
                    quoted(change.newName),
                    console.outColours().dim(isDefault ? "was never named" : "what it is named after has changed")));
    if (change.takenNumbers > 0)
        console.out(fmt::format(
            "    {} taken, the first by {}\n",
            change.takenNumbers == 1 ? "1 lower number is" : fmt::format("{} lower numbers are", change.takenNumbers),
            quoted(view.nameOf(change.takenBy))));
    if (change.cut) console.out("    cut to 240 bytes before the number\n");
}

void writeText(const RenameView& view, Console& console) {
    for (const QorDiagnostic& error : view.errors()) console.out(diagnosticLine(error, console.outColours()));
    std::size_t changes = 0;
    std::size_t byHand = 0;
    std::size_t upToDate = 0;
    for (const auto& [model, plan] : view.plans()) {
        for (const QorNameChange& change : plan.changes()) writeChange(view, model, change, console);
        changes += plan.changes().size();
        byHand += plan.keptCount(QorNameKept::GivenByHand);
        upToDate += plan.keptCount(QorNameKept::UpToDate);
    }
    for (const LostReference& lost : view.lost()) {
        const std::string text =
            fmt::format("model {}: {}: refers to {}, which becomes {}", quoted(view.nameOf(lost.reference.source)),
                        printable(view.nameOf(lost.reference.attribute)), quoted(view.nameOf(lost.reference.object)),
                        quoted(lost.newName));
        console.out(diagnosticLine({QorSeverity::Warning, view.set().placeOf(lost.reference.source), text},
                                   console.outColours()));
    }
    console.out(fmt::format("{} in {}; {} up to date, {} named by hand\n", counted(changes, "new name"),
                            counted(view.plans().size(), "model"), upToDate, byHand));
}

void writeJson(const RenameView& view, Console& console) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject().field("schema", "qor.rename/1");
    std::vector<QorDiagnostic> diagnostics = view.set().diagnostics();
    diagnostics.insert(diagnostics.end(), view.errors().begin(), view.errors().end());
    writeDiagnostics(json, diagnostics);
    json.key("changes").beginList();
    for (const auto& [model, plan] : view.plans()) {
        for (const QorNameChange& change : plan.changes()) {
            const QorFilePlace place = view.set().placeOf(model, change.object);
            json.beginObject(kLine)
                .field("model", std::string_view(view.nameOf(model)))
                .field("class", std::string_view(view.nameOf(change.cls)))
                .field("old", change.oldName.view())
                .field("new", change.newName.view())
                .field("reason", wordOf(change.reason))
                .field("taken", std::int64_t{change.takenNumbers})
                .field("taken_by", std::string_view(change.takenBy > 0 ? view.nameOf(change.takenBy) : std::string()))
                .field("cut", change.cut)
                .field("file", std::string_view(place.file))
                .field("line", std::int64_t{place.line})
                .field("column", std::int64_t{place.column})
                .endObject();
        }
    }
    json.endList().key("broken_references").beginList();
    for (const LostReference& lost : view.lost())
        json.beginObject(kLine)
            .field("model", std::string_view(view.nameOf(lost.reference.source)))
            .field("attribute", std::string_view(view.nameOf(lost.reference.attribute)))
            .field("old", std::string_view(view.nameOf(lost.reference.object)))
            .field("new", std::string_view(lost.newName))
            .endObject();
    json.endList().endObject();
}

}  // namespace

Exit runRename(const RenameOptions& options, Console& console) {
    if (!options.dryRun) {
        console.err(fmt::format("qor: {} text files are not rewritten; --dry-run shows the new names\n",
                                console.errColours().error("error:")));
        return Exit::WrongUse;
    }
    InternalErrors internalErrors(console);
    console.progress().start();
    console.progress().say("reading models");
    Workspaces workspaces(options.language, internalErrors.windows());
    ModelSet set(workspaces, options.library);
    set.read(options.files);
    if (!options.json || set.workspace() == nullptr)
        for (const QorDiagnostic& diagnostic : set.diagnostics())
            console.err(diagnosticLine(diagnostic, console.errColours()));
    if (set.workspace() == nullptr) return Exit::BadInput;

    console.progress().say("looking for names");
    RenameView view(set);
    if (!view.make()) internalErrors.add("the names could not be planned");
    const auto write = options.json ? writeJson : writeText;
    write(view, console);
    if (internalErrors.count() != 0) return Exit::Internal;
    if (hasErrors(set.diagnostics())) return Exit::BadInput;
    return view.errors().empty() ? Exit::Clean : Exit::Findings;
}

}  // namespace qor::cli
