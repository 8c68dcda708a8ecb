// SPDX-License-Identifier: Apache-2.0
#include "cli/CheckSettings.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <system_error>

#include "cli/DocumentFields.h"
#include "cli/InputFiles.h"
#include "cli/Text.h"

namespace qor::cli {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFormat = "qor.check-settings/1";

template <class Value>
struct Word {
    std::string_view text;
    Value value;
};
constexpr std::array kSeverities = {Word<Severity>{"error", Severity::Error},
                                    Word<Severity>{"warning", Severity::Warning}, Word<Severity>{"off", Severity::Off}};
constexpr std::array kFailOn = {Word<FailOn>{"error", FailOn::Error}, Word<FailOn>{"warning", FailOn::Warning},
                                Word<FailOn>{"never", FailOn::Never}};

template <class Value, std::size_t count>
const Value* valueOf(std::string_view text, const std::array<Word<Value>, count>& words) {
    for (const auto& word : words)
        if (word.text == text) return &word.value;
    return nullptr;
}

bool isEmptyOr(const std::string& wanted, std::string_view text) { return wanted.empty() || wanted == text; }

}  // namespace

const FailOn* failOnOf(std::string_view word) { return valueOf(word, kFailOn); }

CheckSettings::CheckSettings(const std::string& path, std::vector<QorDiagnostic>& diagnostics) {
    const auto before = diagnostics.size();
    const QorDocument document(path, diagnostics);
    if (!document.root()) return;
    DocumentFaults faults(path, diagnostics);
    read(document.root(), faults);
    if (diagnostics.size() != before) *this = CheckSettings();
}

void CheckSettings::read(const QorDocumentNode& root, DocumentFaults& faults) {
    const DocumentFields fields(root, "a settings file", {"format", "fail_on", "rules", "objects"}, faults);
    if (fields.text("format") != kFormat)
        faults.add(root, fmt::format("this is no settings file: such files say \"format: {}\"", kFormat));
    if (const auto failOn = fields.text("fail_on"); !failOn.empty()) {
        if (const auto* value = failOnOf(failOn))
            _failOn = *value;
        else
            faults.add(fields["fail_on"], "the value of \"fail_on\" is error, warning or never");
    }
    for (const auto& node : fields.list("rules")) {
        const DocumentFields rule(node, "a rule",
                                  {"model", "class", "relation", "other_class", "key", "severity", "reason"}, faults);
        (void)rule.requiredText("severity");
        _ofRules.push_back(entryOf(rule, Severity::Error, faults));
    }
    for (const auto& node : fields.list("objects")) {
        const DocumentFields object(
            node, "an object", {"model", "class", "object", "relation", "other_class", "key", "severity", "reason"},
            faults);
        (void)object.requiredText("reason");
        _ofObjects[object.requiredText("object")].push_back(entryOf(object, Severity::Off, faults));
    }
}

CheckSettings::Entry CheckSettings::entryOf(const DocumentFields& fields, Severity without, DocumentFaults& faults) {
    Entry entry{fields.text("model"),       fields.text("class"), fields.text("relation"),
                fields.text("other_class"), fields.text("key"),   without,
                fields.text("reason")};
    const auto severity = fields.text("severity");
    if (const auto* value = valueOf(severity, kSeverities))
        entry.severity = *value;
    else if (!severity.empty())
        faults.add(fields["severity"], "the value of \"severity\" is error, warning or off");
    return entry;
}

bool CheckSettings::fits(const Entry& entry, const BreachName& breach) {
    return isEmptyOr(entry.model, breach.model) && isEmptyOr(entry.cls, breach.cls) &&
           isEmptyOr(entry.relation, breach.relation) && isEmptyOr(entry.otherClass, breach.otherClass) &&
           isEmptyOr(entry.key, breach.key);
}

const CheckSettings::Entry* CheckSettings::entryForObject(const BreachName& breach) const {
    if (breach.object.empty() || _ofObjects.empty()) return nullptr;
    const Entry* found = nullptr;
    for (const auto called : {breach.object, breach.sourceId}) {
        const auto entries = _ofObjects.find(std::string(called));
        if (entries == _ofObjects.end()) continue;
        for (const auto& entry : entries->second)
            if (fits(entry, breach)) found = &entry;
    }
    return found;
}

CheckSettings::Decision CheckSettings::decide(const BreachName& breach) const {
    const auto* entry = entryForObject(breach);
    if (entry == nullptr) {
        const auto last = std::find_if(_ofRules.rbegin(), _ofRules.rend(),
                                       [&breach](const Entry& candidate) { return fits(candidate, breach); });
        if (last != _ofRules.rend()) entry = &*last;
    }
    return entry == nullptr ? Decision() : Decision{entry->severity, entry->reason};
}

// ---- Which settings ----

bool SettingsFiles::isOne(const std::string& file) { return fs::path(file).filename() == kName; }

const CheckSettings& SettingsFiles::forFile(const std::string& file, std::vector<QorDiagnostic>& diagnostics) {
    const auto path = _path.empty() ? settingsBeside(file) : _path;
    if (path.empty()) return _none;
    const auto known = _byPath.find(path);
    if (known != _byPath.end()) return known->second;
    return _byPath.emplace(path, CheckSettings(path, diagnostics)).first->second;
}

std::string SettingsFiles::settingsBeside(const std::string& file) const {
    std::error_code error;
    const auto start = fs::absolute(file == kStandardInput ? fs::path("x") : fs::path(file), error);
    if (error) return {};
    const auto current = fs::current_path(error);
    for (auto folder = start.lexically_normal().parent_path();; folder = folder.parent_path()) {
        const auto candidate = folder / kName;
        if (fs::is_regular_file(candidate, error)) {
            // As short as a person would write it.
            const auto near = candidate.lexically_proximate(current);
            return near.string().size() < candidate.string().size() ? near.string() : candidate.string();
        }
        if (folder == folder.parent_path()) return {};
    }
}

}  // namespace qor::cli
