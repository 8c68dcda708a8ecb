// SPDX-License-Identifier: Apache-2.0
#include "interchange/QorCalledProcesses.h"

#include "interchange/Wording.h"
#include "platform/QorKexParser.h"

using qor::interchange::concat;
using qor::interchange::inQuotes;

namespace {

// As the BPMN method library names them.
constexpr std::string_view kCalledElement = "Called element";
constexpr std::string_view kCalledProcess = "Called process";

}  // namespace

QorCalledProcesses::QorCalledProcesses(QorRepositoryBuilder& builder, const QorRepositoryReader& reader)
    : _builder(builder), _reader(reader) {}

QorCalledProcesses::~QorCalledProcesses() = default;

void QorCalledProcesses::add(const std::string& file, const QorImporter& importer, const QorImportResult& imported) {
    if (imported.kind != QorFileKind::Bpmn || imported.models.empty()) return;
    for (const QorImportedProcess& process : imported.processes)
        _processes[process.id].push_back({process.model, _files.size()});
    _files.push_back({file, &importer, imported.models});
}

std::vector<QorDiagnostic> QorCalledProcesses::link() {
    std::vector<QorDiagnostic> warnings;
    _unknown.clear();
    for (const File& file : _files)
        for (const QorIdentifier model : file.models)
            for (const QorIdentifier object : _reader.objectsOf(model)) linkObject(file, model, object, warnings);
    return warnings;
}

void QorCalledProcesses::linkObject(const File& file, QorIdentifier model, QorIdentifier object,
                                    std::vector<QorDiagnostic>& warnings) {
    const Attributes& attributes = attributesOf(_reader.classOfObject(object));
    if (attributes.calledElement == QorNoIdentifier || attributes.calledProcess == QorNoIdentifier) return;
    const std::string_view called = _reader.valueOf(object, attributes.calledElement);
    if (called.empty() || !_reader.valueOf(object, attributes.calledProcess).empty()) return;
    const std::vector<Process>* const processes = find(called);
    if (processes == nullptr) {
        _unknown.push_back({model, object, std::string(called)});
        return;
    }
    if (processes->size() > 1) warnings.push_back(severalHave(file, object, called, *processes));
    const QorModelInfo target = _reader.modelInfo(processes->back().model);
    const std::string value =
        concat({"MODEL ", QorKexParser::GetKexTextOfStrValue(target.name).view(),
                " type: ", QorKexParser::GetKexTextOfStrValue(_reader.nameOf(target.modelType)).view()});
    if (const auto set = _builder.setValue(object, attributes.calledProcess, value); !set.ok())
        warnings.push_back({QorSeverity::Warning, file.importer->placeOf(object), Qor_BuildErrorText(set.error)});
}

const QorCalledProcesses::Attributes& QorCalledProcesses::attributesOf(QorIdentifier cls) {
    const auto known = _attributes.find(cls);
    if (known != _attributes.end()) return known->second;
    const Attributes found{_reader.findAttribute(cls, kCalledElement), _reader.findAttribute(cls, kCalledProcess)};
    return _attributes.emplace(cls, found).first->second;
}

/// A prefix of a qualified name is passed over, as within one file.
const std::vector<QorCalledProcesses::Process>* QorCalledProcesses::find(std::string_view called) const {
    auto found = _processes.find(called);
    if (const std::size_t colon = called.find(':'); found == _processes.end() && colon != std::string_view::npos)
        found = _processes.find(called.substr(colon + 1));
    return found != _processes.end() ? &found->second : nullptr;
}

QorDiagnostic QorCalledProcesses::severalHave(const File& file, QorIdentifier object, std::string_view called,
                                              const std::vector<Process>& processes) const {
    return {QorSeverity::Warning, file.importer->placeOf(object),
            concat({"calls ", inQuotes(called), ", which ", std::to_string(processes.size()),
                    " processes are called; the one in ", _files[processes.back().file].name,
                    " was read last and is taken for the newest"})};
}
