// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/CheckReport.h"
#include "cli/Text.h"

/// What the reports for people, and the texts in those for programs, say about a breach.
namespace qor::cli {

/// The place of an object in the file, or the file alone.
[[nodiscard]] QorFilePlace placeOf(const CheckedModel& model, const std::string& file, QorIdentifier subject);

/// "Task "Check" (id t1)", "class "Task"".
[[nodiscard]] std::string subjectText(const CheckedModel& model, QorIdentifier subject, bool isClass,
                                      const Colours& colours);

/// "max-outgoing: 1 for relation "then", in the text of class "Task" (workshop.yaml:9:9)".
[[nodiscard]] std::string ruleText(const QorRepositoryReader& reader, RulePlaces& places,
                                   const QorCardinalityRule& rule);
[[nodiscard]] std::string ruleText(const CheckedModel& model, const QorCardinalityRule& rule);

void showDiagnostics(Console& console, const std::vector<QorDiagnostic>& diagnostics, bool onlyErrors);
void showStale(Console& console, const CheckSummary& summary);

/// `shownAs`: the number of findings on display when it is not the number of breaches.
[[nodiscard]] std::string summaryLine(const CheckSummary& summary, std::optional<std::uint64_t> shownAs,
                                      const Colours& colours);

}  // namespace qor::cli
