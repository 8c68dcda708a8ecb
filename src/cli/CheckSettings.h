// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "cli/BreachName.h"
#include "interchange/QorDocument.h"

namespace qor::cli {

class DocumentFields;
class DocumentFaults;

/// How much a breach weighs.
enum class Severity : std::uint8_t { Off, Warning, Error };

/// From which severity on a breach is a finding, for the exit code.
enum class FailOn : std::uint8_t { Error, Warning, Never };

/// What people have decided about rules and about single objects.
class CheckSettings {
public:
    struct Decision {
        Severity severity = Severity::Error;
        std::string_view reason;  ///< holds as long as the settings
    };

    /// Every breach is an error.
    CheckSettings() = default;
    /// Reads a settings file; of one with faults nothing is taken.
    CheckSettings(const std::string& path, std::vector<QorDiagnostic>& diagnostics);

    /// What the last entry says that fits; entries of objects go before those of rules.
    [[nodiscard]] Decision decide(const BreachName& breach) const;
    [[nodiscard]] FailOn failOn() const { return _failOn; }

private:
    /// Fits a breach when each text that is not empty does.
    struct Entry {
        std::string model;
        std::string cls;
        std::string relation;
        std::string otherClass;
        std::string key;
        Severity severity = Severity::Error;
        std::string reason;
    };

    static bool fits(const Entry& entry, const BreachName& breach);
    static Entry entryOf(const DocumentFields& fields, Severity without, DocumentFaults& faults);
    void read(const QorDocumentNode& root, DocumentFaults& faults);
    const Entry* entryForObject(const BreachName& breach) const;

    FailOn _failOn = FailOn::Error;
    std::vector<Entry> _ofRules;
    std::unordered_map<std::string, std::vector<Entry>> _ofObjects;  ///< by name or identifier in the file
};

/// Null for a word that is none.
[[nodiscard]] const FailOn* failOnOf(std::string_view word);

/// The settings that go with each model file: those in its folder or in the nearest folder above it.
class SettingsFiles {
public:
    static constexpr std::string_view kName = "qor-check.yaml";

    /// With a path, the settings of all files come from there.
    explicit SettingsFiles(std::string path) : _path(std::move(path)) {}

    [[nodiscard]] static bool isOne(const std::string& file);

    /// Faults of a settings file are told once.
    [[nodiscard]] const CheckSettings& forFile(const std::string& file, std::vector<QorDiagnostic>& diagnostics);

private:
    [[nodiscard]] std::string settingsBeside(const std::string& file) const;

    std::string _path;
    CheckSettings _none;
    std::map<std::string, CheckSettings> _byPath;
};

}  // namespace qor::cli
