// SPDX-License-Identifier: Apache-2.0
#include "interchange/BpmnDesk.h"

#include <algorithm>
#include <stdexcept>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/QorCardinalityHandler.h"
#include "platform/QorCoreModelingManager.h"

namespace {

QorCardinalityHandler& rules() { return QorCardinalityHandler::Instance(); }

}  // namespace

std::string bpmnFile(std::string_view contents) {
    return "<definitions xmlns=\"http://www.omg.org/spec/BPMN/20100524/MODEL\" xmlns:v=\"urn:vendor\">" +
           std::string(contents) + "</definitions>";
}

std::string textOfFile(const std::string& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string shippedLibrary() { return textOfFile(QOR_SOURCE_DIR "/libraries/bpmn.yaml"); }

BpmnDesk::BpmnDesk() : BpmnDesk(shippedLibrary()) {}

BpmnDesk::BpmnDesk(std::string_view library)
    : importer(platform.builder(), platform.reader()), _installation(platform.host()) {
    const QorImportResult result = importer.readText("bpmn.yaml", library, QorNoIdentifier);
    if (result.hasErrors()) throw std::runtime_error("bpmn.yaml: " + result.diagnostics.front().text);
    _library = result.library;
}

BpmnDesk::~BpmnDesk() {
    if (_isLoaded) (void)QorCoreModelingManager::GetGlobal()->discardCompleteLibrary(_library);
}

BpmnDesk& BpmnDesk::read(std::string_view text) {
    _result = importer.readText("test.bpmn", text, _library);
    return *this;
}

BpmnDesk& BpmnDesk::readDefinitions(std::string_view contents) { return read(bpmnFile(contents)); }

BpmnDesk& BpmnDesk::readProcess(std::string_view contents) {
    return readDefinitions("<process id=\"p\">" + std::string(contents) + "</process>");
}

std::string BpmnDesk::wordsFor(QorIdentifier object) const {
    return nameOf(platform.reader().classOfObject(object)) + " \"" + nameOf(object) + "\"";
}

std::vector<std::string> BpmnDesk::objects(std::string_view without) const {
    std::vector<std::string> words;
    for (const QorIdentifier model : _result.models)
        for (const QorIdentifier object : platform.reader().objectsOf(model))
            if (nameOf(platform.reader().classOfObject(object)) != without) words.push_back(wordsFor(object));
    std::sort(words.begin(), words.end());
    return words;
}

std::vector<std::string> BpmnDesk::relations(std::string_view relationClass) const {
    std::vector<std::string> words;
    for (const QorIdentifier model : _result.models)
        for (const QorRelationInfo& relation : platform.reader().relationsOf(model))
            if (nameOf(relation.relationClass) == relationClass)
                words.push_back(nameOf(relation.from) + " -> " + nameOf(relation.to));
    std::sort(words.begin(), words.end());
    return words;
}

std::vector<std::string> BpmnDesk::modelNames() const {
    std::vector<std::string> names;
    for (const QorIdentifier model : _result.models) names.push_back(nameOf(model));
    return names;
}

QorIdentifier BpmnDesk::made(std::string_view sourceId) const {
    for (const QorIdentifier model : _result.models) {
        for (const QorIdentifier object : platform.reader().objectsOf(model))
            if (importer.sourceIdOf(object) == sourceId) return object;
        for (const QorRelationInfo& relation : platform.reader().relationsOf(model))
            if (importer.sourceIdOf(relation.id) == sourceId) return relation.id;
    }
    throw std::runtime_error("nothing was made of " + std::string(sourceId));
}

std::string BpmnDesk::value(std::string_view sourceId, std::string_view attribute) const {
    const QorIdentifier thing = made(sourceId);
    const QorRepositoryReader& reader = platform.reader();
    const QorIdentifier cls = reader.kindOf(thing) == QorThingKind::Relation ? reader.relationInfo(thing).relationClass
                                                                             : reader.classOfObject(thing);
    const QorIdentifier id = reader.findAttribute(cls, attribute);
    if (id < 1) throw std::runtime_error("there is no attribute " + std::string(attribute));
    return std::string(reader.valueOf(thing, id));
}

std::vector<std::string> BpmnDesk::diagnostics() const {
    std::vector<std::string> words;
    for (const QorDiagnostic& diagnostic : _result.diagnostics)
        words.push_back(std::to_string(diagnostic.place.line) + ":" + std::to_string(diagnostic.place.column) + " " +
                        diagnostic.text);
    return words;
}

void BpmnDesk::load() {
    if (_isLoaded) return;
    QorCoreModelingManager& manager = *QorCoreModelingManager::GetGlobal();
    if (manager.LoadApplicationLibrary(_library, false) != QorErrorCode::Ok)
        throw std::runtime_error("the library cannot be loaded");
    _isLoaded = true;
    (void)manager.initLibraryHandlers(true);  // what matters here is what the rules' own handler says
    if (rules().isError()) throw std::runtime_error("the rules: " + rules().getErrorText().str());
}

std::vector<std::string> BpmnDesk::breaches() {
    load();
    std::set<std::string> found;
    for (const QorIdentifier model : _result.models) {
        const bool complete =
            QorCardinalityCompleteCheck(rules()).checkModel(model, [&](const QorCardinalityBreach& breach) {
                std::string words = wordsFor(static_cast<QorIdentifier>(breach.subject)) + ": " +
                                    std::string(breach.rule.key) + " " + std::to_string(breach.rule.limit);
                for (const long part : {breach.rule.relationClass, breach.rule.otherClass})
                    if (part > 0) words += ", " + nameOf(static_cast<QorIdentifier>(part));
                found.insert(words);
                return true;
            });
        if (!complete) throw std::runtime_error("the check did not come to its end");
    }
    return {found.begin(), found.end()};
}

std::string BpmnDesk::everything() const {
    const QorRepositoryReader& reader = platform.reader();
    std::string all;
    const auto addValues = [&](QorIdentifier thing, QorIdentifier cls) {
        for (; cls > 0; cls = reader.classInfo(cls).superclass)
            for (const QorAttributeInfo& attribute : reader.attributesOf(cls))
                all.append(reader.valueOf(thing, attribute.id)).append("\n");
    };
    for (const QorIdentifier model : _result.models) {
        for (const QorIdentifier object : reader.objectsOf(model)) {
            all.append(wordsFor(object)).append("\n");
            addValues(object, reader.classOfObject(object));
        }
        for (const QorRelationInfo& relation : reader.relationsOf(model))
            addValues(relation.id, relation.relationClass);
    }
    for (const std::string& diagnostic : diagnostics()) all.append(diagnostic).append("\n");
    return all;
}
