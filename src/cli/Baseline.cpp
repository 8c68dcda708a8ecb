// SPDX-License-Identifier: Apache-2.0
#include "cli/Baseline.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>

#include "cli/DocumentFields.h"
#include "cli/InputFiles.h"
#include "cli/JsonWriter.h"
#include "cli/OutputFile.h"
#include "cli/Text.h"

namespace qor::cli {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFormat = "qor.check-baseline/1";

bool isMinimum(std::string_view key) { return key.find("min-") != std::string_view::npos; }

std::uint32_t worseCount(std::string_view key, std::uint32_t a, std::uint32_t b) {
    return isMinimum(key) ? std::min(a, b) : std::max(a, b);
}

fs::path folderOf(const std::string& path) {
    std::error_code error;
    return fs::absolute(path, error).lexically_normal().parent_path();
}

std::string modelKey(const std::string& file, std::string_view model, std::string_view version) {
    return fmt::format("{}:{}{}:{}{}", file.size(), file, model.size(), model, version);
}

std::optional<std::string> orNull(const std::string& text) {
    return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

}  // namespace

BreachName Baseline::Entry::name() const {
    return {model, version, cls, object, sourceId, ruleClass, key, relation, otherClass};
}

Baseline::Baseline(const std::string& path) : _path(path) {}

Baseline::Baseline(const std::string& path, std::vector<QorDiagnostic>& diagnostics) : _path(path) {
    const QorDocument document(path, diagnostics);
    if (!document.root()) return;
    DocumentFaults faults(path, diagnostics);
    read(document.root(), faults);
}

void Baseline::read(const QorDocumentNode& root, DocumentFaults& faults) {
    const DocumentFields fields(root, "a baseline", {"format", "entries"}, faults);
    if (fields.text("format") != kFormat)
        faults.add(root, fmt::format("this is no baseline: such files say \"format\": \"{}\"", kFormat));
    for (const auto& node : fields.list("entries")) {
        const DocumentFields entry(
            node, "an entry", {"file", "model", "version", "class", "object", "source_id", "rule", "count", "found"},
            faults);
        const DocumentFields rule(entry["rule"], "a rule", {"class", "key", "relation_class", "other_class"}, faults);
        Entry known{entry.requiredText("file"),  entry.requiredText("model"), entry.text("version"),
                    entry.requiredText("class"), entry.text("object"),        entry.text("source_id"),
                    rule.requiredText("class"),  rule.requiredText("key"),    rule.text("relation_class"),
                    rule.text("other_class"),    entry.number("count"),       entry.number("found")};
        _file = known.file;
        _places.emplace(keyOf(known.name()), _entries.size());
        _entries.push_back(std::move(known));
    }
}

std::string Baseline::keyOf(const BreachName& name) const {
    return fmt::format("{}:{}{}", _file.size(), _file, name.joined());
}

std::string Baseline::pathFromHere(const std::string& file) const {
    if (file == kStandardInput) return file;
    std::error_code error;
    const auto absolute = fs::absolute(file, error).lexically_normal();
    return absolute.lexically_proximate(folderOf(_path)).generic_string();
}

bool Baseline::isGone(const std::string& file) const {
    std::error_code error;
    return file != kStandardInput && !fs::exists(folderOf(_path) / file, error) && !error;
}

void Baseline::beginFile(const std::string& file) {
    _file = pathFromHere(file);
    _files.insert(_file);
}

void Baseline::beginModel(std::string_view model, std::string_view version) {
    _models.insert(modelKey(_file, model, version));
}

bool Baseline::knows(const BreachName& name, std::uint32_t found) {
    const auto place = _places.find(keyOf(name));
    if (place == _places.end()) return false;
    auto& entry = _entries[place->second];
    ++entry.met;
    return entry.met <= entry.count && worseCount(entry.key, found, entry.found) == entry.found;
}

void Baseline::add(const BreachName& name, std::uint32_t found) {
    const auto [place, isNew] = _places.try_emplace(keyOf(name), _entries.size());
    if (isNew)
        _entries.push_back({_file, std::string(name.model), std::string(name.version), std::string(name.cls),
                            std::string(name.object), std::string(name.sourceId), std::string(name.ruleClass),
                            std::string(name.key), std::string(name.relation), std::string(name.otherClass), 0, found});
    auto& entry = _entries[place->second];
    ++entry.count;
    entry.found = worseCount(entry.key, entry.found, found);
}

std::vector<std::string> Baseline::stale(bool everyModel) const {
    std::vector<std::string> lines;
    for (const auto& entry : _entries) {
        if (entry.met >= entry.count) continue;
        const bool isLookedAt = everyModel ? _files.contains(entry.file)
                                           : _models.contains(modelKey(entry.file, entry.model, entry.version));
        if (!isLookedAt && !isGone(entry.file)) continue;
        const auto object = entry.object.empty() ? std::string() : " " + qor::cli::quoted(entry.object);
        const auto relation =
            entry.relation.empty() ? std::string() : " for relation " + qor::cli::quoted(entry.relation);
        lines.push_back(fmt::format("{}: model {}: {}{}: {}{}, known {}, found {}", printable(entry.file),
                                    qor::cli::quoted(entry.model), printable(entry.cls), object, printable(entry.key),
                                    relation, counted(entry.count, "time"), counted(entry.met, "time")));
    }
    return lines;
}

std::string Baseline::write() const {
    OutputFile file(_path);
    JsonWriter json([&file](std::string_view text) { file.add(text); });
    json.beginObject().field("format", kFormat).key("entries").beginList();
    for (const auto& entry : _entries) {
        json.beginObject(JsonWriter::Layout::Line)
            .field("file", std::string_view(entry.file))
            .field("model", std::string_view(entry.model));
        if (!entry.version.empty()) json.field("version", std::string_view(entry.version));
        json.field("class", std::string_view(entry.cls))
            .field("object", orNull(entry.object))
            .field("source_id", orNull(entry.sourceId));
        json.key("rule")
            .beginObject(JsonWriter::Layout::Line)
            .field("class", std::string_view(entry.ruleClass))
            .field("key", std::string_view(entry.key))
            .field("relation_class", orNull(entry.relation))
            .field("other_class", orNull(entry.otherClass))
            .endObject();
        json.field("count", std::int64_t{entry.count}).field("found", std::int64_t{entry.found}).endObject();
    }
    json.endList().endObject();
    return file.commit();
}

}  // namespace qor::cli
