// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorEmbeddedPlatform.h"
#include "interchange/QorImport.h"

namespace qor::test {

/// A repository and an importer that reads texts into it.
struct Files {
    QorEmbeddedPlatform platform;
    QorImporter importer{platform.builder(), platform.reader()};

    const QorRepositoryReader& reader() const { return platform.reader(); }
    QorImportResult read(std::string_view text, QorIdentifier library = QorNoIdentifier) {
        return importer.readText("file", text, library);
    }
    /// The library of a text without faults.
    QorIdentifier library(std::string_view text);
    /// The models of a text without faults.
    std::vector<QorIdentifier> models(std::string_view text, QorIdentifier library);
    /// How much the repository holds, to see that nothing was left behind.
    std::string content() const;
    QorIdentifier object(QorIdentifier model, std::string_view name) const;
};

/// Diagnostics as "line:column text" lines.
std::string shown(const std::vector<QorDiagnostic>& diagnostics);

/// A line is expected for each diagnostic: it begins with the place ("3:7 "), and the diagnostic holds the rest of it.
void expectDiagnostics(const std::vector<QorDiagnostic>& found, const std::string& expected);

[[nodiscard]] std::string repeated(std::string_view text, std::size_t times);

/// A faulty text and the diagnostics that are expected.
struct Fault {
    std::string text, expected;
};

/// A library of a few classes that the tests share: Step (abstract) with Task and Event, Note; then and about.
inline constexpr std::string_view kSmallLibrary = R"(format: qor.library/1
name: Small
business_process:
  record_classes:
    - name: Row
      attributes:
        - {name: Cell, type: text}
  classes:
    - name: Step
      abstract: true
      attributes:
        - {name: Kind, type: enumeration, values: [manual, automatic], default: manual}
        - {name: Tags, type: enumeration list, values: [red, green, blue]}
        - {name: Count, type: integer}
        - {name: Shape, type: text, level: class}
        - {name: Rows, type: record, record_class: Row}
        - {name: Sum, type: expression}
    - name: Task
      extends: Step
    - name: Event
      extends: Step
    - name: Note
  relation_classes:
    - name: then
      from: Step
      to: Step
      attributes:
        - {name: Weight, type: floating}
    - {name: about, from: Note, to: Step}
  model_types:
    - {name: Process, classes: [Step, Task, Event, Note]}
    - {name: Notes, classes: [Note]}
)";

}  // namespace qor::test
