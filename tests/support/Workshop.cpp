// SPDX-License-Identifier: Apache-2.0
#include "support/Workshop.h"

#include <stdexcept>

#include "embedded/QorShownWindows.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorOwnedText.h"

namespace {

QorIdentifier made(const QorBuildResult& result) {
    if (!result.ok()) throw std::runtime_error(Qor_BuildErrorText(result.error));
    return result.id;
}

QorIdentifier known(QorIdentifier id, std::string_view name) {
    if (id == QorNoIdentifier) throw std::runtime_error("the workshop knows no " + std::string(name));
    return id;
}

}  // namespace

Workshop::Workshop(const QorEmbeddedOptions& options, const std::string& repositoryFile) : platform(options) {
    if (!repositoryFile.empty())
        if (const QorRepositoryResult result = platform.createRepository(repositoryFile); !result.ok())
            throw std::runtime_error(result.text);
    library = made(builder().addApplicationLibrary("Works", {}, {}));
    processes = builder().libraryPart(library, QorLibraryPart::BusinessProcess);
    environment = builder().libraryPart(library, QorLibraryPart::WorkingEnvironment);
    _installations.push_back(std::make_unique<QorHostInstallation>(platform.host()));
}

Workshop::~Workshop() {
    while (!_installations.empty()) _installations.pop_back();
}

QorCoreModelingManager& Workshop::repository() const { return *QorCoreModelingManager::GetGlobal(); }

FailingRepository& Workshop::watched() {
    if (_watched == nullptr) {
        _watched = std::make_unique<FailingRepository>(*platform.host().repository);
        QorHost host = platform.host();
        host.repository = _watched.get();
        _installations.push_back(std::make_unique<QorHostInstallation>(host));
    }
    return *_watched;
}

QorIdentifier Workshop::addClass(QorIdentifier part, std::string_view name, std::string_view superclass,
                                 bool isAbstract) {
    const QorIdentifier above = superclass.empty() ? QorNoIdentifier : idOf(superclass);
    return made(builder().addClass(part, name, above, isAbstract));
}

QorIdentifier Workshop::cls(std::string_view name, std::string_view superclass) {
    return addClass(processes, name, superclass, false);
}

QorIdentifier Workshop::abstractClass(std::string_view name, std::string_view superclass) {
    return addClass(processes, name, superclass, true);
}

QorIdentifier Workshop::environmentClass(std::string_view name, std::string_view superclass) {
    return addClass(environment, name, superclass, false);
}

QorIdentifier Workshop::recordClass(std::string_view name) { return made(builder().addRecordClass(processes, name)); }

QorIdentifier Workshop::relationClass(std::string_view name, std::string_view from, std::string_view to) {
    return made(builder().addRelationClass(processes, name, idOf(from), idOf(to)));
}

QorIdentifier Workshop::attribute(std::string_view owner, QorAttributeSpec spec) {
    return made(builder().addAttribute(idOf(owner), spec));
}

QorIdentifier Workshop::attribute(std::string_view owner, std::string_view name, QorCoreAttributeType type,
                                  std::string_view defaultText) {
    QorAttributeSpec spec;
    spec.name = name;
    spec.type = type;
    spec.defaultText = defaultText;
    return attribute(owner, spec);
}

void Workshop::classText(std::string_view cls, std::string_view text) {
    const QorIdentifier id = idOf(cls);
    made(builder().setClassValue(id,
                                 reader().classInfo(id).part == processes
                                     ? QorAttributeId::Cardinality
                                     : QorAttributeId::WorkingEnvironmentCardinality,
                                 text));
}

void Workshop::libraryText(QorIdentifier of, QorIdentifier attribute, std::string_view text) {
    made(builder().setLibraryValue(of, attribute, text));
}

QorIdentifier Workshop::modelType(std::string_view name, std::initializer_list<std::string_view> classes) {
    std::vector<QorIdentifier> ids;
    for (const std::string_view cls : classes) ids.push_back(idOf(cls));
    return made(builder().addModelType(processes, name, ids));
}

QorIdentifier Workshop::model(std::string_view modelType, std::string_view name, std::string_view version) {
    const QorIdentifier type = known(reader().findModelType(library, modelType), modelType);
    return _model = made(builder().addModel(type, name, version));
}

QorIdentifier Workshop::object(std::string_view cls, std::string_view name) {
    return made(builder().addObject(_model, idOf(cls), name));
}

std::vector<QorIdentifier> Workshop::objects(std::string_view cls, std::initializer_list<std::string_view> names) {
    std::vector<QorIdentifier> ids;
    for (const std::string_view name : names) ids.push_back(object(cls, name));
    return ids;
}

QorIdentifier Workshop::connect(QorIdentifier from, std::string_view relationClass, QorIdentifier to) {
    return made(
        builder().addRelation(known(reader().findRelationClass(library, relationClass), relationClass), from, to));
}

void Workshop::value(QorIdentifier instance, std::string_view attribute, std::string_view text) {
    made(builder().setValue(instance, attributeOf(instance, attribute), text));
}

QorErrorCode Workshop::load(bool initialiseHandlers) {
    const QorErrorCode code = repository().LoadApplicationLibrary(library, false);
    return code == QorErrorCode::Ok && initialiseHandlers ? repository().initLibraryHandlers(true) : code;
}

QorErrorCode Workshop::discard() { return repository().discardCompleteLibrary(library); }

QorIdentifier Workshop::idOf(std::string_view cls) const {
    const QorIdentifier id = reader().findClass(library, cls);
    return id != QorNoIdentifier ? id : known(reader().findRelationClass(library, cls), cls);
}

QorIdentifier Workshop::attributeOf(QorIdentifier clsOrInstance, std::string_view name) const {
    QorIdentifier owner = reader().classOfObject(clsOrInstance);
    if (owner == QorNoIdentifier) owner = reader().relationInfo(clsOrInstance).relationClass;
    if (owner == QorNoIdentifier) owner = clsOrInstance;
    return known(reader().findAttribute(owner, name), name);
}

QorIdentifier Workshop::references(std::string_view owner, std::string_view name, bool toModels) {
    QorAttributeSpec spec;
    spec.name = name;
    spec.type = QorCoreAttributeType::InterReference;
    spec.refersToModels = toModels;
    return attribute(owner, spec);
}

std::string Workshop::textAt(long identifier, long attribute) const {
    QorOwnedText text;
    (void)repository().getAttributeValueAsNewChar(identifier, attribute, text.out());
    return std::string(text.view());
}

std::string Workshop::shown() {
    std::string all;
    for (; _seen < platform.shown().size(); ++_seen) {
        const auto& window = platform.shown()[_seen];
        if (window.kind == QorShownKind::Box) all += window.text + "; ";
        if (window.kind == QorShownKind::InternalError)
            all += window.text.substr(0, window.text.find(':', window.text.find(':') + 1)) + "; ";
    }
    return all;
}
