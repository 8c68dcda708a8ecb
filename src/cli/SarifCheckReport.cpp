// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <map>
#include <optional>
#include <set>

#include "cli/BreachName.h"
#include "cli/BreachText.h"
#include "cli/CheckReport.h"
#include "cli/CheckSettings.h"
#include "cli/JsonWriter.h"
#include "cli/OutputFile.h"
#include "cli/SourceColumns.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;
constexpr std::string_view kSchema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

/// A path as a URI reference: a relative one stays relative.
std::string uriOf(std::string_view path) {
    std::string uri = path.starts_with('/') ? "file://" : "";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isPlain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                             (byte >= 'a' && byte <= 'z') ||
                             std::string_view("-._~/").find(c) != std::string_view::npos;
        uri += isPlain ? std::string(1, c) : fmt::format("%{:02X}", byte);
    }
    return uri;
}

/// A message text in which brackets are no links.
std::string messageText(std::string_view text) {
    if (text.find("](") == std::string_view::npos) return std::string(text);
    std::string escaped;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

/// The same for the same breach in every run, on every machine.
std::string fingerprintOf(const BreachName& name) {
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (const char c : name.joined()) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
    return fmt::format("{:016x}", hash);
}

std::string ruleIdOf(const BreachName& name) {
    std::string id(name.ruleClass);
    for (const auto part : {name.relation, name.otherClass, name.key})
        if (!part.empty()) (id += '/') += part;
    return id;
}

/// SARIF 2.1.0, for tools that show findings in code.
class SarifReport final : public CheckReport {
public:
    explicit SarifReport(OutputFile& file) : _json([&file](std::string_view text) { file.add(text); }) {
        _json.beginObject().field("$schema", kSchema).field("version", "2.1.0").key("runs").beginList();
        _json.beginObject().field("columnKind", "unicodeCodePoints").key("results").beginList();
    }
    ~SarifReport() override;

    void beginFile(const CheckedFile& file, const std::vector<QorDiagnostic>& diagnostics) override {
        _file = file.name;
        _columns = SourceColumns(file.path);
        _diagnostics.insert(_diagnostics.end(), diagnostics.begin(), diagnostics.end());
    }
    void beginModel(const CheckedModel& model) override { _model.emplace(model); }
    void endModel() override {
        _model.reset();
        _subject = -1;
    }
    void endFile() override {}

    void breach(const ReportedBreach& breach) override {
        if (!isNew(breach)) return;
        beginResult(breach, breach.severity == Severity::Warning ? "warning" : "error");
        _json.endObject();
    }

    void leaveOut(const ReportedBreach& breach, LeftOut why, std::string_view reason) override {
        if (why != LeftOut::Accepted || !isNew(breach)) return;
        beginResult(breach, "note");
        _json.key("suppressions").beginList(kLine).beginObject().field("kind", "external");
        if (!reason.empty()) _json.field("justification", reason);
        _json.endObject().endList().endObject();
    }

    void end(const CheckSummary& summary) override {
        _json.endList();
        writeTool();
        const bool isComplete = summary.errors == 0 && summary.internalErrors == 0;
        _json.key("invocations").beginList().beginObject().field("executionSuccessful", isComplete);
        _json.key("toolExecutionNotifications").beginList();
        for (const auto& diagnostic : _diagnostics) writeNotification(diagnostic);
        _json.endList().endObject().endList();
        _json.endObject().endList().endObject();
    }

private:
    struct Rule {
        std::string id;
        std::string text;
        QorFilePlace place;
    };

    /// A limit of a class that stands in for those of its relations is broken in several counts at once; one result
    /// tells them all.
    bool isNew(const ReportedBreach& breach) {
        if (breach.record.subject != _subject) _told.clear();
        _subject = breach.record.subject;
        return _told.insert(ruleNumber(breach)).second;
    }

    void beginResult(const ReportedBreach& breach, std::string_view level) {
        const auto rule = ruleNumber(breach);
        const auto subject = static_cast<QorIdentifier>(breach.record.subject);
        _json.beginObject()
            .field("ruleId", std::string_view(_rules[rule].id))
            .field("ruleIndex", static_cast<std::int64_t>(rule))
            .field("level", level);
        writeMessage("message", fmt::format("{} (found {})", breach.record.text.view(), breach.record.found));
        _json.key("locations").beginList().beginObject();
        auto place = placeOf(*_model, _file, subject);
        place.column = _columns.characters(place.line, place.column);
        writePhysicalLocation(place);
        writeLogicalLocations(breach);
        _json.endObject().endList();
        if (const auto& written = _rules[rule].place; !written.file.empty()) {
            _json.key("relatedLocations").beginList().beginObject().field("id", std::int64_t{0});
            writePhysicalLocation(written);
            writeMessage("message", "the rule");
            _json.endObject().endList();
        }
        _json.key("partialFingerprints")
            .beginObject(kLine)
            .field("qorBreach/v1", std::string_view(fingerprintOf(breach.name)))
            .endObject();
    }

    std::size_t ruleNumber(const ReportedBreach& breach) {
        auto text = ruleText(*_model, breach.record.rule);
        const auto [known, isNew] = _ruleNumbers.try_emplace(std::move(text), _rules.size());
        if (isNew)
            _rules.push_back(
                {ruleIdOf(breach.name), known->first, _model->rulePlaces.placeOf(WrittenRule(breach.record.rule))});
        return known->second;
    }

    void writeLogicalLocations(const ReportedBreach& breach) {
        const auto& name = breach.name;
        _json.key("logicalLocations").beginList().beginObject(kLine);
        _json.field("name", name.object.empty() ? name.cls : name.object);
        _json.field("fullyQualifiedName", std::string_view(fmt::format("{}/{}{}{}", name.model, name.cls,
                                                                       name.object.empty() ? "" : "/", name.object)));
        _json.field("kind", name.object.empty() ? "type" : "object").endObject().endList();
    }

    void writePhysicalLocation(const QorFilePlace& place) {
        _json.key("physicalLocation").beginObject(kLine).key("artifactLocation").beginObject();
        _json.field("uri", std::string_view(uriOf(place.file))).endObject();
        if (place.line != 0) {
            _json.key("region").beginObject().field("startLine", std::int64_t{place.line});
            if (place.column != 0) _json.field("startColumn", std::int64_t{place.column});
            _json.endObject();
        }
        _json.endObject();
    }

    void writeMessage(std::string_view key, std::string_view text) {
        _json.key(key).beginObject(kLine).field("text", std::string_view(messageText(text))).endObject();
    }

    void writeNotification(const QorDiagnostic& diagnostic) {
        _json.beginObject().field("level", diagnostic.severity == QorSeverity::Error ? "error" : "warning");
        writeMessage("message", diagnostic.text);
        _json.key("locations").beginList().beginObject();
        writePhysicalLocation(diagnostic.place);
        _json.endObject().endList().endObject();
    }

    void writeTool() {
        _json.key("tool").beginObject().key("driver").beginObject();
        _json.field("name", "qor").field("semanticVersion", QOR_VERSION).key("rules").beginList();
        for (const auto& rule : _rules) {
            _json.beginObject().field("id", std::string_view(rule.id));
            writeMessage("shortDescription", rule.text);
            _json.endObject();
        }
        _json.endList().endObject().endObject();
    }

    JsonWriter _json;
    std::string _file;
    SourceColumns _columns;
    std::optional<CheckedModel> _model;
    std::map<std::string, std::size_t> _ruleNumbers;  ///< by their text
    std::vector<Rule> _rules;
    long _subject = -1;
    std::set<std::size_t> _told;  ///< numbers of the subject's rules
    std::vector<QorDiagnostic> _diagnostics;
};

SarifReport::~SarifReport() = default;

}  // namespace

std::unique_ptr<CheckReport> makeSarifReport(OutputFile& file) { return std::make_unique<SarifReport>(file); }

}  // namespace qor::cli
