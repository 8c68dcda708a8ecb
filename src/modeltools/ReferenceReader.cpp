// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ReferenceReader.h"

#include "frame/RepositoryLookup.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"

namespace qor::modeltools {

namespace {

QorReferenceState stateOf(ModelSearch search) {
    switch (search) {
        case ModelSearch::Found:
            return QorReferenceState::Good;
        case ModelSearch::UnknownType:
            return QorReferenceState::UnknownModelType;
        case ModelSearch::UnknownModel:
            return QorReferenceState::UnknownModel;
        case ModelSearch::NoVersion:
            return QorReferenceState::NoVersion;
    }
    return QorReferenceState::UnknownModel;
}

}  // namespace

ReferenceReader::ReferenceReader(std::size_t models, std::vector<QorModelReference>& references,
                                 std::vector<QorBadReference>& bad)
    : _references(references), _bad(bad), _hierarchy(readHierarchyAttributes()), _models(models) {}

bool ReferenceReader::read(long model) {
    const auto source = Qor_NarrowIdentifier(model);
    QorSourceInterRefContainer targets;
    if (!source || QorCoreModelingManager::GetGlobal()->getInterRefsOfSourceModel(model, targets) != QorErrorCode::Ok)
        return false;
    for (unsigned long index = 0; index < targets.numberOfElements(); ++index) {
        const QorInterModRefTarget& target = targets.elementAtIndex(index);
        const QorModelReference& reference = _references.emplace_back(follow(*source, target));
        if (reference.state != QorReferenceState::Good) _bad.push_back({reference, target});
    }
    return true;
}

QorModelReference ReferenceReader::follow(QorIdentifier source, const QorInterModRefTarget& target) {
    QorModelReference reference;
    reference.source = source;
    reference.attribute = Qor_NarrowIdentifier(target.attribute).value_or(QorNoIdentifier);
    reference.hierarchy = _hierarchy.contains(reference.attribute);
    long model = QorNoIdentifier;
    reference.state = stateOf(_models.find(target.modelTypeName, target.modelName, model));
    reference.model = Qor_NarrowIdentifier(model).value_or(QorNoIdentifier);
    if (reference.state == QorReferenceState::Good && !target.objectName.IsEmpty()) findObject(target, reference);
    return reference;
}

void ReferenceReader::findObject(const QorInterModRefTarget& target, QorModelReference& reference) {
    const std::vector<long>& classes = classesNamed(target.className);
    reference.state = classes.empty() ? QorReferenceState::UnknownClass : QorReferenceState::UnknownObject;
    for (const long cls : classes) {
        long object = QorNoIdentifier;
        const auto code = QorCoreModelingManager::GetGlobal()->getInstanceIDFromInstanceName(
            reference.model, cls, target.objectName.c_str(), object);
        if (code != QorErrorCode::Ok) continue;
        const bool isFirst = reference.object == QorNoIdentifier;
        reference.state = isFirst ? QorReferenceState::Good : QorReferenceState::SeveralObjects;
        if (isFirst) reference.object = Qor_NarrowIdentifier(object).value_or(QorNoIdentifier);
    }
}

const std::vector<long>& ReferenceReader::classesNamed(const SV::String& name) {
    const auto [known, isNew] = _classes.try_emplace(name);
    if (!isNew) return known->second;
    for (const auto part : {QorCoreVarType::BusinessProcessLibrary, QorCoreVarType::WorkingEnvironmentLibrary}) {
        const auto cls = frame::findClass(Qor_GetCoreVarConst(part), name);
        if (cls) known->second.push_back(*cls);
    }
    return known->second;
}

}  // namespace qor::modeltools
