// SPDX-License-Identifier: Apache-2.0
#include "cli/DoctorReport.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/JsonWriter.h"
#include "cli/RulePlaces.h"
#include "cli/Workspace.h"

namespace qor::cli {

bool DoctorFindings::hasContradiction() const {
    return std::any_of(diagnoses.begin(), diagnoses.end(),
                       [](const QorCardinalityDiagnosis& diagnosis) { return diagnosis.isContradiction(); });
}

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

constexpr std::string_view kFaultNames[] = {
    "minimum_above_maximum",
    "minima_above_maximum",
    "required_class_has_no_room",
    "required_class_refuses",
    "relation_cannot_touch",
    "class_in_no_model",
    "other_class_is_no_end",
    "other_class_in_no_model",
    "limits_nothing",
    "made_void",
};

/// "1,021"
std::string grouped(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (auto at = static_cast<int>(text.size()) - 3; at > 0; at -= 3)
        text.insert(static_cast<std::size_t>(at), 1, ',');
    return text;
}

std::string groupedCount(std::uint64_t count, std::string_view noun) {
    return fmt::format("{} {}{}", grouped(count), noun, count == 1 ? "" : "s");
}

std::string limitText(const std::optional<std::uint32_t>& limit) { return limit ? std::to_string(*limit) : "none"; }

class DoctorText {
public:
    DoctorText(Workspace& workspace, const DoctorFindings& findings)
        : _workspace(workspace), _findings(findings), _places(workspace.reader(), workspace.libraryImporter()) {}

    void writeText(Console& console) {
        for (const auto* diagnostics :
             {&_workspace.fileDiagnostics(), &_findings.otherDiagnostics, &_findings.modelDiagnostics})
            for (const auto& diagnostic : *diagnostics) console.err(diagnosticLine(diagnostic, console.errColours()));
        const Colours colours = console.outColours();
        for (const auto& error : _workspace.ruleErrors())
            console.out(diagnosticLine({QorSeverity::Error, error.place, error.text}, colours));
        for (const auto& oversight : _findings.oversights) console.out(diagnosticLine(oversight, colours));
        for (const auto& diagnosis : _findings.diagnoses)
            console.out(diagnosticLine({diagnosis.isContradiction() ? QorSeverity::Error : QorSeverity::Warning,
                                        placeOf(diagnosis.rule), textOf(diagnosis)},
                                       colours));
        for (const auto& rule : _findings.unapplied)
            console.out(diagnosticLine(
                {QorSeverity::Warning, placeOf(rule), described(rule) + " never applied to the models"}, colours));
        for (const auto& untouched : _findings.untouched)
            console.out(fmt::format("class {}: no rule for {} in {}\n", nameOf(untouched.cls),
                                    groupedCount(untouched.objects, "object"),
                                    groupedCount(untouched.models, "model")));
        for (const auto& impact : _findings.impacts) console.out(impactText(impact));
        if (_workspace.hasLibrary() && _findings.diagnoses.empty() && _findings.oversights.empty() &&
            _workspace.ruleErrors().empty())
            console.out("The rules contradict neither each other nor the library.\n");
    }

    void writeJson(Console& console) {
        console.setMode(OutputMode::Document);
        JsonWriter json([&console](std::string_view text) { console.out(text); });
        json.beginObject().field("schema", "qor.rules.doctor/1");
        json.field("file", std::string_view(_workspace.libraryPath()));
        auto diagnostics = _workspace.fileDiagnostics();
        for (const auto* more : {&_findings.otherDiagnostics, &_findings.modelDiagnostics, &_findings.oversights})
            diagnostics.insert(diagnostics.end(), more->begin(), more->end());
        writeDiagnostics(json, diagnostics);
        json.key("definition_errors").beginList();
        for (const auto& error : _workspace.ruleErrors()) writePlacedText(json, error.place, error.text);
        json.endList().key("diagnoses").beginList();
        for (const auto& diagnosis : _findings.diagnoses) writeDiagnosis(json, diagnosis);
        json.endList().key("unapplied").beginList();
        for (const auto& rule : _findings.unapplied) writeRule(json, rule);
        json.endList().key("untouched").beginList();
        for (const auto& untouched : _findings.untouched)
            json.beginObject(kLine)
                .field("class", name(untouched.cls))
                .field("objects", static_cast<std::int64_t>(untouched.objects))
                .field("models", static_cast<std::int64_t>(untouched.models))
                .endObject();
        json.endList().key("impact").beginList();
        for (const auto& impact : _findings.impacts) writeImpact(json, impact);
        json.endList().endObject();
    }

private:
    [[nodiscard]] std::string_view name(long id) const {
        return _workspace.reader().nameOf(static_cast<QorIdentifier>(id));
    }
    [[nodiscard]] std::string nameOf(long id) const { return quoted(name(id)); }
    [[nodiscard]] QorFilePlace placeOf(const QorCardinalityRule& rule) {
        const auto& place = _places.placeOf(WrittenRule(rule));
        return place.file.empty() ? QorFilePlace{_workspace.libraryPath(), 0, 0} : place;
    }

    /// "max-outgoing: 3 of relation "then" to class "Task" (class "Start")"
    [[nodiscard]] std::string described(const QorCardinalityRule& rule) const {
        if (rule.key.empty()) return "class " + nameOf(rule.cls);
        auto text = fmt::format("{}: {}", rule.key, rule.limit);
        if (rule.relationClass > 0) text += " of relation " + nameOf(rule.relationClass);
        const bool isIncoming = rule.key.find("incoming") != std::string_view::npos;
        if (rule.otherClass > 0) text += (isIncoming ? " from class " : " to class ") + nameOf(rule.otherClass);
        return text + " in the text of class " + nameOf(rule.cls);
    }

    [[nodiscard]] std::string textOf(const QorCardinalityDiagnosis& diagnosis) const {
        const auto rule = described(diagnosis.rule);
        const auto against = described(diagnosis.against);
        switch (diagnosis.fault) {
            case QorCardinalityFault::MinimumAboveMaximum:
                return fmt::format("{} cannot be kept together with {}", rule, against);
            case QorCardinalityFault::MinimaAboveMaximum:
                return fmt::format("{} and the other minima demand {}, which breaks {}", rule, diagnosis.count,
                                   against);
            case QorCardinalityFault::RequiredClassHasNoRoom:
                return fmt::format("{} demands objects that {} forbids", rule, against);
            case QorCardinalityFault::RequiredClassRefuses:
                return fmt::format("{} demands relations that {} forbids at their other end", rule, against);
            case QorCardinalityFault::RelationCannotTouch:
                return fmt::format("{} never applies: the relation class does not fit the class in this direction",
                                   rule);
            case QorCardinalityFault::ClassInNoModel:
                return fmt::format("{} never applies: no model type shows its class", rule);
            case QorCardinalityFault::OtherClassIsNoEnd:
                return fmt::format("{} never applies: the relation class does not fit the other class", rule);
            case QorCardinalityFault::OtherClassInNoModel:
                return fmt::format("{} never applies: no model type shows both classes", rule);
            case QorCardinalityFault::LimitsNothing:
                return fmt::format("{} limits nothing: 65535 and more mean no limit", rule);
            case QorCardinalityFault::MadeVoid:
                return fmt::format("{} has no effect beside {}", rule, against);
        }
        return rule;
    }

    [[nodiscard]] static std::string impactText(const RuleImpact& impact) {
        const auto& rule = impact.rule;
        auto text = fmt::format("class {}", quoted(rule.cls));
        if (!rule.relation.empty()) text += ", relation " + quoted(rule.relation);
        if (!rule.otherClass.empty()) text += ", other class " + quoted(rule.otherClass);
        text += ": " + printable(rule.key);
        if (impact.from == impact.to)
            text += fmt::format(" {} as before", limitText(impact.to));
        else
            text += fmt::format(" {} to {}", limitText(impact.from), limitText(impact.to));
        const auto count = [](const RuleImpact::Count& of) {
            return groupedCount(of.models, "model") + ", " + groupedCount(of.objects, "object");
        };
        text += ": ";
        if (impact.broken.objects > 0) text += count(impact.broken);
        if (impact.broken.objects > 0 && impact.mended.objects > 0) text += "; ";
        if (impact.mended.objects > 0) text += "no longer " + count(impact.mended);
        if (impact.broken.objects == 0 && impact.mended.objects == 0) text += "nothing changes";
        return text + "\n";
    }

    void writeDiagnosis(JsonWriter& json, const QorCardinalityDiagnosis& diagnosis) {
        json.beginObject()
            .field("fault", kFaultNames[static_cast<std::size_t>(diagnosis.fault)])
            .field("contradiction", diagnosis.isContradiction());
        json.key("rule");
        writeRule(json, diagnosis.rule);
        json.key("against");
        if (diagnosis.against.cls > 0)
            writeRule(json, diagnosis.against);
        else
            json.null();
        json.field("count", std::int64_t{diagnosis.count}).field("text", std::string_view(textOf(diagnosis)));
        json.endObject();
    }

    void writeRule(JsonWriter& json, const QorCardinalityRule& rule) {
        const auto place = placeOf(rule);
        const auto optionalName = [this](long id) {
            return id > 0 ? std::optional<std::string>(name(id)) : std::nullopt;
        };
        json.beginObject(kLine)
            .field("class", name(rule.cls))
            .field("key", rule.key)
            .field("relation_class", optionalName(rule.relationClass))
            .field("other_class", optionalName(rule.otherClass))
            .field("limit", std::int64_t{rule.limit})
            .field("line", std::int64_t{place.line})
            .field("column", std::int64_t{place.column})
            .endObject();
    }

    static void writeImpact(JsonWriter& json, const RuleImpact& impact) {
        const auto orNull = [](const std::string& text) {
            return text.empty() ? std::nullopt : std::optional<std::string>(text);
        };
        const auto limit = [&json](std::string_view key, const std::optional<std::uint32_t>& value) {
            json.key(key);
            (void)(value ? json.value(std::int64_t{*value}) : json.null());
        };
        const auto count = [&json](std::string_view key, const RuleImpact::Count& of) {
            json.key(key)
                .beginObject()
                .field("models", static_cast<std::int64_t>(of.models))
                .field("objects", static_cast<std::int64_t>(of.objects))
                .endObject();
        };
        json.beginObject(kLine)
            .field("class", std::string_view(impact.rule.cls))
            .field("key", std::string_view(impact.rule.key))
            .field("relation_class", orNull(impact.rule.relation))
            .field("other_class", orNull(impact.rule.otherClass));
        limit("from", impact.from);
        limit("to", impact.to);
        count("broken", impact.broken);
        count("mended", impact.mended);
        json.endObject();
    }

    Workspace& _workspace;
    const DoctorFindings& _findings;
    RulePlaces _places;
};

}  // namespace

void reportDoctor(Console& console, Workspace& workspace, const DoctorFindings& findings, const RulesOptions& options) {
    DoctorText text(workspace, findings);
    if (options.json)
        text.writeJson(console);
    else
        text.writeText(console);
}

}  // namespace qor::cli
