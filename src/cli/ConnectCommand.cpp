// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>

#include "cardinality/QorCardinalityConnection.h"
#include "cardinality/QorCardinalityHandler.h"
#include "cli/BreachText.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/InternalErrors.h"
#include "cli/JsonWriter.h"
#include "cli/ModelFiles.h"
#include "cli/Nearest.h"
#include "cli/ShippedLibraries.h"
#include "cli/Workspace.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;
constexpr std::string_view kPlaceNames[] = {"source", "target", "model"};

/// One end of the relation in question.
struct End {
    QorIdentifier cls = QorNoIdentifier;
    QorIdentifier object = QorNoIdentifier;  ///< none: a class, or a new object of it
};

/// Names that are nothing end the command with their exit code.
struct Refusal {
    Exit exit = Exit::WrongUse;
    std::string text;
};

class Question {
public:
    Question(const ConnectOptions& options, Workspace& workspace)
        : _options(options),
          _workspace(workspace),
          _reader(workspace.reader()),
          _models(workspace),
          _places(workspace.reader(), workspace.libraryImporter()) {}

    /// Finds what the names stand for.
    void resolve() {
        if (!_options.file.empty()) readModel();
        _relation = relationNamed(_options.relation);
        _source = endNamed(_options.source);
        _target = endNamed(_options.target);
    }

    void ask() {
        const QorCardinalityConnection connection(QorCardinalityHandler::Instance());
        _fits = isOrDerivesFrom(_source.cls, _reader.relationClassInfo(_relation).fromClass) &&
                isOrDerivesFrom(_target.cls, _reader.relationClassInfo(_relation).toClass);
        const bool isOld = _source.object > 0 && _target.object > 0;
        const bool isNew = !isOld && (_source.object > 0 || _target.object > 0);
        _advice = isOld   ? connection.betweenObjects(_relation, _source.object, _target.object)
                  : isNew ? connection.withNewObject(_model, _source.object > 0 ? _target.cls : _source.cls, _relation,
                                                     std::max(_source.object, _target.object), _source.object > 0)
                          : connection.betweenClasses(_relation, _source.cls, _target.cls);
    }

    [[nodiscard]] bool isAllowed() const { return _fits && _advice.allowed; }
    [[nodiscard]] const std::vector<QorDiagnostic>& diagnostics() const { return _models.diagnostics(); }

    void writeText(Console& console) {
        const Colours colours = console.outColours();
        console.out(fmt::format("{} from {} to {}: {}\n", quoted(_reader.nameOf(_relation)), endText(_source),
                                endText(_target), isAllowed() ? allowedText() : colours.error("not allowed")));
        if (!_fits)
            console.out(fmt::format("    the library has {} run from class {} to class {}\n",
                                    quoted(_reader.nameOf(_relation)),
                                    quoted(_reader.nameOf(_reader.relationClassInfo(_relation).fromClass)),
                                    quoted(_reader.nameOf(_reader.relationClassInfo(_relation).toClass))));
        std::set<std::string> told;
        for (const auto& limit : _advice.limits) {
            const auto text = limitText(limit);
            if (told.insert(text).second) console.out(text);
        }
    }

    void writeJson(Console& console) {
        console.setMode(OutputMode::Document);
        JsonWriter json([&console](std::string_view text) { console.out(text); });
        json.beginObject().field("schema", "qor.may-connect/1").field("relation", _reader.nameOf(_relation));
        writeEnd(json, "source", _source);
        writeEnd(json, "target", _target);
        json.field("fits", _fits).field("allowed", isAllowed());
        writeSlots(json, _advice.slots);
        json.key("limits").beginList();
        for (const auto& limit : _advice.limits) {
            const auto& rule = limit.rule;
            const QorFilePlace& place = _places.placeOf(WrittenRule(rule));
            json.beginObject(kLine)
                .field("place", kPlaceNames[static_cast<std::size_t>(limit.place)])
                .field("class", _reader.nameOf(static_cast<QorIdentifier>(rule.cls)))
                .field("key", rule.key)
                .field("relation_class", optionalName(rule.relationClass))
                .field("other_class", optionalName(rule.otherClass))
                .field("limit", std::int64_t{rule.limit})
                .field("present", std::int64_t{limit.present})
                .field("added", std::int64_t{limit.added});
            writeSlots(json, limit.slots());
            json.field("line", std::int64_t{place.line}).field("column", std::int64_t{place.column}).endObject();
        }
        json.endList().endObject();
    }

private:
    // ---- Names ----

    void readModel() {
        const auto models = _models.read(_options.file);
        if (hasErrors(_models.diagnostics())) throw Refusal{Exit::BadInput, {}};
        std::vector<std::string> names;
        for (const auto model : models) {
            names.emplace_back(_reader.nameOf(model));
            if (_options.model.empty() || names.back() == _options.model) _model = model;
        }
        if (_options.model.empty() && models.size() != 1)
            throw Refusal{Exit::WrongUse, fmt::format("{} holds {}; say which one with --model",
                                                      printable(_options.file), counted(models.size(), "model"))};
        if (_model == QorNoIdentifier)
            throw Refusal{Exit::WrongUse, fmt::format("no model is named {}{}", quoted(_options.model),
                                                      didYouMean(_options.model, names))};
    }

    [[nodiscard]] QorIdentifier relationNamed(const std::string& name) {
        const auto found = _reader.findRelationClass(_workspace.library(), name);
        if (found > 0) return found;
        std::vector<std::string> names;
        for (const auto part : {QorLibraryPart::BusinessProcess, QorLibraryPart::WorkingEnvironment})
            for (const auto& info : _reader.relationClassesOf(_workspace.part(part))) names.emplace_back(info.name);
        throw Refusal{Exit::WrongUse,
                      fmt::format("no relation class is named {}{}", quoted(name), didYouMean(name, names))};
    }

    [[nodiscard]] End endNamed(const std::string& name) {
        std::vector<std::string> names;
        if (_model != QorNoIdentifier) {
            const auto objects = objectsNamed(name, names);
            if (objects.size() > 1)
                throw Refusal{Exit::WrongUse,
                              fmt::format("{} are named {}; say CLASS/NAME or the identifier in the file",
                                          counted(objects.size(), "object"), quoted(name))};
            if (objects.size() == 1) return {_reader.classOfObject(objects.front()), objects.front()};
        }
        const auto cls = _reader.findClass(_workspace.library(), name);
        if (cls > 0) return {cls, QorNoIdentifier};
        for (const auto part : {QorLibraryPart::BusinessProcess, QorLibraryPart::WorkingEnvironment})
            for (const auto& info : _reader.classesOf(_workspace.part(part))) names.emplace_back(info.name);
        throw Refusal{Exit::WrongUse,
                      fmt::format("no {}class is named {}{}", _model == QorNoIdentifier ? "" : "object and no ",
                                  quoted(name), didYouMean(name, names))};
    }

    /// An identifier in the file goes before a name. Collects all names there are.
    [[nodiscard]] std::vector<QorIdentifier> objectsNamed(const std::string& name, std::vector<std::string>& names) {
        std::vector<QorIdentifier> found;
        for (const auto object : _reader.objectsOf(_model)) {
            const std::string own(_reader.nameOf(object));
            if (_models.importer().sourceIdOf(object) == name) return {object};
            const auto full = std::string(_reader.nameOf(_reader.classOfObject(object))) + "/" + own;
            if (own == name || full == name) found.push_back(object);
            names.push_back(own);
        }
        return found;
    }

    [[nodiscard]] bool isOrDerivesFrom(QorIdentifier cls, QorIdentifier ancestor) const {
        while (cls > 0 && cls != ancestor) cls = _reader.classInfo(cls).superclass;
        return cls == ancestor;
    }

    // ---- Answers ----

    [[nodiscard]] std::string endText(const End& end) const {
        if (end.object > 0)
            return fmt::format("{} {}", printable(_reader.nameOf(end.cls)), quoted(_reader.nameOf(end.object)));
        return (_model == QorNoIdentifier ? "class " : "a new object of class ") + quoted(_reader.nameOf(end.cls));
    }

    [[nodiscard]] std::string allowedText() const {
        return _advice.slots >= QorNoCardinalityLimit ? std::string("allowed, without limit")
                                                      : fmt::format("allowed, {} left", _advice.slots);
    }

    [[nodiscard]] std::string limitText(const QorConnectionLimit& limit) {
        const auto rule = ruleText(_reader, _places, limit.rule);
        const auto where = limit.place == QorConnectionPlace::Model
                               ? std::string("the model has")
                               : fmt::format("the {} has", kPlaceNames[static_cast<std::size_t>(limit.place)]);
        if (limit.slots() > 0)
            return fmt::format("    leaves {}: {}; {} {}\n", limit.slots(), rule, where, limit.present);
        const auto needed = std::uint64_t{limit.present} + limit.added;
        auto text = fmt::format("    refuses: {}; {} {}\n        allowed with a maximum of {}", rule, where,
                                limit.present, needed);
        if (limit.rule.limit >= limit.added) text += fmt::format(", or with {} fewer", needed - limit.rule.limit);
        return text + "\n";
    }

    [[nodiscard]] std::optional<std::string> optionalName(long id) const {
        if (id < 1) return std::nullopt;
        return std::string(_reader.nameOf(static_cast<QorIdentifier>(id)));
    }

    static void writeSlots(JsonWriter& json, std::uint32_t slots) {
        json.key("slots");
        (void)(slots >= QorNoCardinalityLimit ? json.null() : json.value(std::int64_t{slots}));
    }

    void writeEnd(JsonWriter& json, std::string_view key, const End& end) const {
        json.key(key).beginObject(kLine).field("class", _reader.nameOf(end.cls));
        json.field("name", optionalName(end.object)).endObject();
    }

    const ConnectOptions& _options;
    Workspace& _workspace;
    const QorRepositoryReader& _reader;
    ModelFiles _models;
    RulePlaces _places;
    QorIdentifier _model = QorNoIdentifier;
    QorIdentifier _relation = QorNoIdentifier;
    End _source;
    End _target;
    bool _fits = false;
    QorConnectionAdvice _advice;
};

void tell(Console& console, const std::vector<QorDiagnostic>& diagnostics) {
    for (const auto& diagnostic : diagnostics) console.err(diagnosticLine(diagnostic, console.errColours()));
}

}  // namespace

Exit runMayConnect(const ConnectOptions& options, Console& console) {
    InternalErrors internalErrors(console);
    Workspaces workspaces(options.language, internalErrors.windows());
    Workspace& workspace = workspaces.open(resolveLibrary(options.library));
    tell(console, workspace.fileDiagnostics());
    for (const auto& error : workspace.ruleErrors()) tell(console, {{QorSeverity::Error, error.place, error.text}});
    if (!workspace.hasLibrary()) return Exit::BadInput;

    Question question(options, workspace);
    try {
        question.resolve();
    } catch (const Refusal& refusal) {
        tell(console, question.diagnostics());
        if (!refusal.text.empty())
            console.err(fmt::format("qor: {} {}\n", console.errColours().error("error:"), refusal.text));
        return refusal.exit;
    }
    tell(console, question.diagnostics());
    question.ask();
    if (options.json)
        question.writeJson(console);
    else
        question.writeText(console);
    if (internalErrors.count() != 0) return Exit::Internal;
    if (!workspace.ruleErrors().empty()) return Exit::BadInput;
    return question.isAllowed() ? Exit::Clean : Exit::Findings;
}

}  // namespace qor::cli
