// SPDX-License-Identifier: Apache-2.0
#include "cli/BreachText.h"

#include <fmt/format.h>

#include "cli/Console.h"
#include "cli/Diagnostics.h"

namespace qor::cli {

CheckReport::~CheckReport() = default;
void CheckReport::leaveOut(const ReportedBreach&, LeftOut, std::string_view) {}

QorFilePlace placeOf(const CheckedModel& model, const std::string& file, QorIdentifier subject) {
    QorFilePlace place = model.importer.placeOf(subject);
    place.file = file;
    return place;
}

std::string subjectText(const CheckedModel& model, QorIdentifier subject, bool isClass, const Colours& colours) {
    const QorRepositoryReader& reader = model.reader;
    if (isClass) return "class " + quoted(reader.nameOf(subject));
    const std::string_view id = model.importer.sourceIdOf(subject);
    return fmt::format("{} {}{}", printable(reader.nameOf(reader.classOfObject(subject))),
                       colours.bold(quoted(reader.nameOf(subject))), id.empty() ? "" : " (id " + printable(id) + ")");
}

std::string ruleText(const CheckedModel& model, const QorCardinalityRule& rule) {
    return ruleText(model.reader, model.rulePlaces, rule);
}

std::string ruleText(const QorRepositoryReader& reader, RulePlaces& places, const QorCardinalityRule& rule) {
    const auto name = [&](long id) { return quoted(reader.nameOf(static_cast<QorIdentifier>(id))); };
    std::string text = fmt::format("{}: {}", rule.key, rule.limit);
    if (rule.relationClass > 0) text += " for relation " + name(rule.relationClass);
    const bool isIncoming = rule.key.find("incoming") != std::string_view::npos;
    if (rule.otherClass > 0) text += (isIncoming ? " from class " : " to class ") + name(rule.otherClass);
    text += ", in the text of class " + name(rule.cls);
    const QorFilePlace& place = places.placeOf(WrittenRule(rule));
    if (!place.file.empty()) text += fmt::format(" ({})", placeText(place));
    return text;
}

void showDiagnostics(Console& console, const std::vector<QorDiagnostic>& diagnostics, bool onlyErrors) {
    for (const QorDiagnostic& diagnostic : diagnostics) {
        const bool isShown = !onlyErrors || diagnostic.severity == QorSeverity::Error;
        if (isShown) console.err(diagnosticLine(diagnostic, console.errColours()));
    }
}

void showStale(Console& console, const CheckSummary& summary) {
    for (const std::string& line : summary.stale)
        console.err(fmt::format("qor: {} the baseline knows what is no longer there: {}\n",
                                console.errColours().warning("warning:"), line));
}

std::string summaryLine(const CheckSummary& summary, std::optional<std::uint64_t> shownAs, const Colours& colours) {
    std::string line = fmt::format("{}, {}, {}, {}: {}", counted(summary.files, "file"),
                                   counted(summary.models, "model"), counted(summary.objects, "object"),
                                   counted(summary.relations, "relation"), counted(summary.breaches, "breach"));
    if (shownAs) line += fmt::format(" (shown as {})", *shownAs);
    const auto add = [&line](std::uint64_t count, std::string_view what) {
        if (count != 0) line += fmt::format(", {}{}", count, what);
    };
    add(summary.breachWarnings, " of them only warned of");
    add(summary.notShown, " of them not shown");
    add(summary.known, " more known");
    add(summary.accepted, " more accepted");
    if (summary.errors != 0) line += ", " + counted(summary.errors, "error");
    if (summary.warnings != 0) line += ", " + counted(summary.warnings, "warning");
    return colours.bold(line) + fmt::format(" in {:.2f} s\n", summary.seconds);
}

}  // namespace qor::cli
