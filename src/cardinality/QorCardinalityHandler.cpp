// SPDX-License-Identifier: Apache-2.0
// The handler's lifetime, its rules and its names; the checks are in handlerChecks.cpp.
#include "cardinality/QorCardinalityHandler.h"

#include <utility>

#include "cardinality/ClassPlans.h"
#include "cardinality/IdentifierMarks.h"
#include "cardinality/RuleReader.h"
#include "cardinality/names.h"
#include "cardinality/repository.h"
#include "platform/QorGuard.h"
#include "platform/SvWindow.h"

using namespace qor::cardinality;

QorCardinalityHandler& QorCardinalityHandler::Instance() noexcept {
    static QorCardinalityHandler handler;
    return handler;
}

QorCardinalityHandler::QorCardinalityHandler() noexcept = default;
QorCardinalityHandler::~QorCardinalityHandler() = default;

QorCardinalityHandler::QorCardinalityHandler(const QorCardinalityHandler& other) noexcept {
    Qor_Guarded(kSource, [&] { takeCopy(other); });
}

QorCardinalityHandler& QorCardinalityHandler::operator=(const QorCardinalityHandler& other) noexcept {
    if (this != &other) Qor_Guarded(kSource, [&] { takeCopy(other); });
    return *this;
}

/// Changes nothing when it throws.
void QorCardinalityHandler::takeCopy(const QorCardinalityHandler& other) {
    auto errorText = other._errorText;
    auto marks = other._checked ? std::make_unique<CheckedMarks>(*other._checked) : nullptr;
    auto badObjects = other._badObjects;
    auto badRelations = other._badRelations;
    auto classes = other._classes;
    auto definitionErrors = other._definitionErrors;

    _errorText = std::move(errorText);
    _isActive = other._isActive;
    _checked = std::move(marks);
    _badObjects = std::move(badObjects);
    _badRelations = std::move(badRelations);
    _checkBeforeSave = other._checkBeforeSave;
    _checkAfterModelingAction = other._checkAfterModelingAction;
    _plans.reset();
    _classes = std::move(classes);
    _definitionErrors = std::move(definitionErrors);
}

// ---- Rules ----

int QorCardinalityHandler::init(long firstLibrary, long secondLibrary) noexcept {
    const QorWaitCursor wait;
    resetCheck();
    initAutoChecks(firstLibrary);
    return initFromLibrary(firstLibrary) == 1 && initFromLibrary(secondLibrary) == 1 ? 1 : 0;
}

int QorCardinalityHandler::readFurtherLibrary(long library) noexcept {
    const QorWaitCursor wait;
    return initFromLibrary(library);
}

void QorCardinalityHandler::Reset() noexcept {
    resetCheck();
    _isActive = true;
    _plans.reset();
    _classes.removeAll();
}

void QorCardinalityHandler::resetCheck() noexcept {
    _checked.reset();
    _badObjects.removeAll();
    _badRelations.removeAll();
    _errorText.Clear();
    _definitionErrors.clear();
}

int QorCardinalityHandler::checkCardinalityDefinition(long library, long cls, const char* text) noexcept {
    resetCheck();
    return decryptKex(library, cls, text);
}

void QorCardinalityHandler::initAutoChecks(long library) noexcept {
    const auto checks = Qor_Guarded(kSource, AutomaticChecks(), [&] { return readAutomaticChecks(library); });
    _checkBeforeSave = checks.beforeSave;
    _checkAfterModelingAction = checks.afterModelingAction;
}

int QorCardinalityHandler::initFromLibrary(long library) noexcept {
    _plans.reset();
    return Qor_Guarded(kSource, 0, [&] {
        return RuleReader(_classes, {_errorText, _definitionErrors}).readLibrary(library) ? 1 : 0;
    });
}

int QorCardinalityHandler::decryptKex(long library, long cls, const char* text) noexcept {
    _plans.reset();
    return Qor_Guarded(kSource, 0, [&] {
        return RuleReader(_classes, {_errorText, _definitionErrors}).readClass(library, cls, text) ? 1 : 0;
    });
}

QorClassCardinality* QorCardinalityHandler::createClassItem(long cls) noexcept {
    const auto key = Qor_NarrowIdentifier(cls);
    if (!key) return nullptr;
    _plans.reset();
    QorClassCardinality* const none = nullptr;
    return Qor_Guarded(kSource, none, [&] { return &_classes.findOrCreate(*key); });
}

bool QorCardinalityHandler::isError() const noexcept { return !_errorText.IsEmpty(); }
const SV::String& QorCardinalityHandler::getErrorText() const noexcept { return _errorText; }
const std::vector<QorCardinalityDefinitionError>& QorCardinalityHandler::getDefinitionErrors() const noexcept {
    return _definitionErrors;
}

void QorCardinalityHandler::setActivation(int on) noexcept { _isActive = on != 0; }
int QorCardinalityHandler::getActivation() const noexcept { return _isActive ? 1 : 0; }
bool QorCardinalityHandler::isCheckCardinalitiesBeforeSave() const noexcept { return _checkBeforeSave; }
bool QorCardinalityHandler::isCheckCardinalitiesAfterModelingAction() const noexcept {
    return _checkAfterModelingAction;
}

const QorClassCardinality* QorCardinalityHandler::getClassCardinality(long cls) const noexcept {
    const auto key = Qor_NarrowIdentifier(cls);
    return key ? _classes.find(*key) : nullptr;
}

const QorCardinalityMap<QorClassCardinality>& QorCardinalityHandler::getClassCardinalities() const noexcept {
    return _classes;
}

ClassPlans& QorCardinalityHandler::plans() const {
    if (!_plans) _plans = std::make_unique<ClassPlans>(_classes);
    return *_plans;
}

// ---- Names ----

SV::String QorCardinalityHandler::getClassName(long cls) const noexcept {
    return Qor_Guarded(kSource, SV::String(), [&] { return nameOfClass(cls).value_or(SV::String()); });
}

SV::String QorCardinalityHandler::getAttributeName(long attribute) const noexcept {
    return Qor_Guarded(kSource, SV::String(), [&] { return nameOfAttribute(attribute).value_or(SV::String()); });
}

SV::String QorCardinalityHandler::getRelationClassName(long relationClass) const noexcept {
    return Qor_Guarded(kSource, SV::String(),
                       [&] { return nameOfRelationClass(relationClass).value_or(SV::String()); });
}

SV::String QorCardinalityHandler::getInstanceName(long object) const noexcept {
    return Qor_Guarded(kSource, SV::String(), [&] { return nameOfObject(object).value_or(SV::String()); });
}
