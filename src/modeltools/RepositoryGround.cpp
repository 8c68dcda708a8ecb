// SPDX-License-Identifier: Apache-2.0
#include "modeltools/RepositoryGround.h"

#include <algorithm>
#include <utility>

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorOwnedText.h"

namespace qor::modeltools {

namespace {

constexpr QorEventPriority kPriority = 800;

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

}  // namespace

NamingGround::~NamingGround() = default;

ISortedSet<long> withSubclasses(long cls) {
    ISortedSet<long> classes;
    if (repository().getAllSubClasses(cls, classes) != QorErrorCode::Ok) classes.removeAll();
    classes.add(cls);
    return classes;
}

RepositoryGround::RepositoryGround(long model) : _model(model) {
    setEventHandler(QorEventType::AttributeValueChanged, &RepositoryGround::onValueChanged, kPriority);
    setEventHandler(QorEventType::ModelReferencesChanged, &RepositoryGround::onReferencesChanged, kPriority);
}

RepositoryGround::~RepositoryGround() = default;

std::optional<SV::String> RepositoryGround::textOf(long object, long attribute) {
    return frame::readText(object, attribute);
}

std::optional<SV::String> RepositoryGround::valueOf(long object, long attribute) {
    QorOwnedText text;
    const QorErrorCode code = repository().getAttributeValueAsNewChar(object, attribute, text.out());
    if (code != QorErrorCode::Ok && code != QorErrorCode::NoValue) return std::nullopt;
    return SV::String(text.view());
}

// A repository looks a name up within one class; the numbers are shared with the subclasses.
QorErrorCode RepositoryGround::holderOf(const ISortedSet<long>& classes, const std::string& name,
                                        QorIdentifier& holder) {
    holder = QorNoIdentifier;
    for (const long cls : classes) {
        long found = QorNoIdentifier;
        const QorErrorCode code = repository().getInstanceIDFromInstanceName(_model, cls, name.c_str(), found);
        if (code == QorErrorCode::NotFound) continue;
        if (code != QorErrorCode::Ok) return code;
        const QorIdentifier its = Qor_NarrowIdentifier(found).value_or(QorNoIdentifier);
        holder = holder == QorNoIdentifier ? its : std::min(holder, its);
    }
    return holder == QorNoIdentifier ? QorErrorCode::NotFound : QorErrorCode::Ok;
}

QorErrorCode RepositoryGround::rename(long object, const std::string& name, NumberSearch& numbers) {
    _numbers = &numbers;
    _renamed = object;
    const QorErrorCode code = repository().RenameInstance(_model, object, name.c_str(), true);
    _numbers = nullptr;
    return code;
}

QorErrorCode RepositoryGround::setText(long object, long attribute, const std::string& text) {
    return repository().setAttributeValue(_model, object, attribute, text.c_str(), false);
}

void RepositoryGround::onValueChanged(const QorAttributeEvent& event) {
    if (_numbers == nullptr || event.model() != _model || event.attribute() != QorAttributeId::Name) return;
    const auto object = Qor_NarrowIdentifier(event.object());
    if (!object || std::exchange(_renamed, QorNoIdentifier) == *object) return;
    _numbers->nameLost(*object);
    if (const auto name = textOf(*object, QorAttributeId::Name)) _numbers->nameSeen(name->view());
}

// Objects may be gone, and with them any of the names.
void RepositoryGround::onReferencesChanged(const QorModelEvent& event) {
    if (_numbers != nullptr && event.model() == _model) _numbers->forgetAll();
}

}  // namespace qor::modeltools
