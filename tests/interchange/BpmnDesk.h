// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorEmbeddedPlatform.h"
#include "interchange/QorImport.h"
#include "platform/QorHost.h"

/// Reads BPMN into a repository in memory that holds the shipped BPMN library, and tells what came of it in words.
class BpmnDesk {
public:
    BpmnDesk();
    /// With another library instead of the shipped one.
    explicit BpmnDesk(std::string_view library);
    BpmnDesk(const BpmnDesk&) = delete;
    BpmnDesk& operator=(const BpmnDesk&) = delete;
    ~BpmnDesk();

    /// Reads a text as the file "test.bpmn".
    BpmnDesk& read(std::string_view text);
    /// Reads what stands inside <definitions>, in line 1.
    BpmnDesk& readDefinitions(std::string_view contents);
    /// Reads what stands inside one process "p", in line 1.
    BpmnDesk& readProcess(std::string_view contents);

    /// `User task "Check"`, of all models, sorted; without the objects of the class that is not of interest.
    [[nodiscard]] std::vector<std::string> objects(std::string_view without = "Process") const;
    /// `Sequence flow: a -> b`, by the objects' names, sorted; of one relation class.
    [[nodiscard]] std::vector<std::string> relations(std::string_view relationClass) const;
    [[nodiscard]] std::vector<std::string> modelNames() const;
    /// The object made of the element with that identifier.
    [[nodiscard]] QorIdentifier made(std::string_view sourceId) const;
    /// An attribute's value of what was made of the element with that identifier.
    [[nodiscard]] std::string value(std::string_view sourceId, std::string_view attribute) const;
    /// `1:5 text`, without the severity.
    [[nodiscard]] std::vector<std::string> diagnostics() const;
    [[nodiscard]] const QorImportResult& result() const { return _result; }
    /// Names and values of everything that was made, and the diagnostics' texts, one after the other.
    [[nodiscard]] std::string everything() const;
    [[nodiscard]] bool hasErrors() const { return _result.hasErrors(); }
    /// `User task "Check": min-incoming 1, Sequence flow`, sorted, each once.
    [[nodiscard]] std::vector<std::string> breaches();

    QorEmbeddedPlatform platform;
    QorImporter importer;

private:
    [[nodiscard]] std::string nameOf(QorIdentifier id) const { return std::string(platform.reader().nameOf(id)); }
    [[nodiscard]] std::string wordsFor(QorIdentifier object) const;
    void load();

    QorIdentifier _library = QorNoIdentifier;
    QorImportResult _result;
    QorHostInstallation _installation;
    bool _isLoaded = false;
};

[[nodiscard]] std::string textOfFile(const std::string& path);
/// The text of libraries/bpmn.yaml.
[[nodiscard]] std::string shippedLibrary();
/// A BPMN file around these contents of <definitions>.
[[nodiscard]] std::string bpmnFile(std::string_view contents);
