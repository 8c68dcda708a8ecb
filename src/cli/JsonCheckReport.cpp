// SPDX-License-Identifier: Apache-2.0
#include <optional>

#include "cli/CheckReport.h"
#include "cli/CheckSettings.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/JsonWriter.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

class JsonReport final : public CheckReport {
public:
    explicit JsonReport(Console& console) : _json([&console](std::string_view text) { console.out(text); }) {
        console.setMode(OutputMode::Document);
        _json.beginObject().field("schema", "qor.check/1").key("files").beginList();
    }
    ~JsonReport() override;

    void beginFile(const CheckedFile& file, const std::vector<QorDiagnostic>& diagnostics) override {
        _json.beginObject().field("file", std::string_view(file.name));
        writeDiagnostics(_json, diagnostics);
        _json.key("models").beginList();
    }

    void beginModel(const CheckedModel& model) override {
        _model.emplace(model);
        _json.beginObject()
            .field("name", model.info.name)
            .field("type", model.reader.nameOf(model.info.modelType))
            .field("objects", static_cast<std::int64_t>(model.objects))
            .field("relations", static_cast<std::int64_t>(model.relations))
            .key("breaches")
            .beginList();
    }

    void breach(const ReportedBreach& reported) override {
        const QorCardinalityBreach& breach = reported.record;
        _json.beginObject().field("message", std::int64_t{breach.message}).field("text", breach.text.view());
        _json.key("subject");
        writeSubject(breach);
        _json.key("rule");
        writeRule(breach.rule);
        _json.field("found", std::int64_t{breach.found});
        _json.key("objects").beginList();
        for (const long object : breach.objects) writeObject(static_cast<QorIdentifier>(object));
        _json.endList().key("relations").beginList();
        for (const long relation : breach.relations) writeRelation(static_cast<QorIdentifier>(relation));
        _json.endList();
        if (reported.severity == Severity::Warning) _json.field("severity", "warning");
        _json.endObject();
    }

    void endModel() override {
        _json.endList().endObject();
        _model.reset();
    }

    void endFile() override { _json.endList().endObject(); }

    void end(const CheckSummary& summary) override {
        const auto number = [this](std::string_view name, std::uint64_t count) {
            _json.field(name, static_cast<std::int64_t>(count));
        };
        _json.endList().key("summary").beginObject();
        number("files", summary.files);
        number("models", summary.models);
        number("objects", summary.objects);
        number("relations", summary.relations);
        number("breaches", summary.breaches);
        number("errors", summary.errors);
        number("warnings", summary.warnings);
        number("internal_errors", summary.internalErrors);
        _json.key("seconds").seconds(summary.seconds);
        number("breach_warnings", summary.breachWarnings);
        number("known", summary.known);
        number("accepted", summary.accepted);
        number("not_shown", summary.notShown);
        _json.key("stale").beginList();
        for (const std::string& line : summary.stale) _json.value(std::string_view(line));
        _json.endList().endObject().endObject();
    }

private:
    [[nodiscard]] std::string_view nameOf(long id) const {
        return _model->reader.nameOf(static_cast<QorIdentifier>(id));
    }
    [[nodiscard]] std::optional<std::string> optionalName(long id) const {
        if (id <= 0) return std::nullopt;
        return std::string(nameOf(id));
    }
    [[nodiscard]] std::optional<std::string> sourceId(QorIdentifier thing) const {
        const std::string_view id = _model->importer.sourceIdOf(thing);
        if (id.empty()) return std::nullopt;
        return std::string(id);
    }

    void writeSubject(const QorCardinalityBreach& breach) {
        const auto id = static_cast<QorIdentifier>(breach.subject);
        if (!breach.subjectIsClass) {
            beginObjectFields(id);
            _json.endObject();
            return;
        }
        _json.beginObject(kLine).field("id", std::int64_t{id}).field("class", nameOf(id));
        _json.key("name").null().key("source_id").null().endObject();
    }

    void beginObjectFields(QorIdentifier object) {
        _json.beginObject(kLine)
            .field("id", std::int64_t{object})
            .field("class", nameOf(_model->reader.classOfObject(object)))
            .field("name", nameOf(object))
            .field("source_id", sourceId(object));
    }

    void writeObject(QorIdentifier object) {
        beginObjectFields(object);
        writePlaceFields(object);
    }

    void writeRelation(QorIdentifier relation) {
        const QorRelationInfo info = _model->reader.relationInfo(relation);
        _json.beginObject(kLine)
            .field("id", std::int64_t{relation})
            .field("class", nameOf(info.relationClass))
            .field("from", std::int64_t{info.from})
            .field("to", std::int64_t{info.to})
            .field("source_id", sourceId(relation));
        writePlaceFields(relation);
    }

    void writePlaceFields(QorIdentifier thing) {
        const QorFilePlace place = _model->importer.placeOf(thing);
        _json.field("line", std::int64_t{place.line}).field("column", std::int64_t{place.column}).endObject();
    }

    void writeRule(const QorCardinalityRule& rule) {
        _json.beginObject(kLine)
            .field("class", nameOf(rule.cls))
            .field("key", rule.key)
            .field("relation_class", optionalName(rule.relationClass))
            .field("other_class", optionalName(rule.otherClass))
            .field("limit", std::int64_t{rule.limit})
            .endObject();
    }

    JsonWriter _json;
    std::optional<CheckedModel> _model;
};

JsonReport::~JsonReport() = default;

}  // namespace

std::unique_ptr<CheckReport> makeJsonReport(Console& console) { return std::make_unique<JsonReport>(console); }

}  // namespace qor::cli
