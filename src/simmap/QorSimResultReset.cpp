// SPDX-License-Identifier: Apache-2.0
#include "simmap/QorSimResultReset.h"

#include <optional>
#include <string>

#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "platform/QorGuard.h"
#include "platform/QorOwnedText.h"
#include "simmap/internalErrors.h"
#include "simmap/resetValue.h"

using namespace qor::simmap;

namespace {

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

bool isFailure(QorErrorCode code) { return code != QorErrorCode::Ok && code != QorErrorCode::NoValue; }

template <class Number>
std::optional<bool> isNumberZero(long object, long attribute) {
    Number number{};
    const auto code = repository().getAttributeValue(object, attribute, number, true);
    if (isFailure(code)) return std::nullopt;
    return code == QorErrorCode::Ok && !(number < 0) && !(number > 0);
}

/// Whether the attribute holds what a reset leaves; nothing when the repository fails. An absent number is no 0.
std::optional<bool> isReset(const QorSimResultChange& value) {
    switch (value.type) {
        case QorCoreAttributeType::Integer:
            return isNumberZero<long>(value.object, value.attribute);
        case QorCoreAttributeType::Floating:
            return isNumberZero<double>(value.object, value.attribute);
        default: {
            QorOwnedText text;
            const auto code = repository().getAttributeValue(value.object, value.attribute, text.out(), true);
            if (isFailure(code)) return std::nullopt;
            return text.view() == resetText(value.type);
        }
    }
}

}  // namespace

QorSimResultReset::QorSimResultReset() noexcept = default;
QorSimResultReset::~QorSimResultReset() = default;

bool QorSimResultReset::plan(const QorSimResultDefinitions& definitions, const ISortedSet<long>& models) noexcept {
    _changes.clear();
    if (!definitions.isUsable()) return false;
    const bool planned = Qor_Guarded(kResultSource, false, [&] {
        for (const long model : models)
            for (const auto& holder : definitions.holders())
                if (holder.cls != 0 && !planModel(model, holder)) return false;
        return true;
    });
    if (!planned) _changes.clear();
    return planned;
}

bool QorSimResultReset::planModel(long model, const QorSimResultHolder& holder) {
    ISortedSet<long> objects;
    if (repository().getAllInstancesOfClassAndSubClassInModel(model, holder.cls, objects, true) != QorErrorCode::Ok)
        return false;
    ISortedSet<long> attributes;
    for (const auto& [source, attribute] : holder.mapping) attributes.add(attribute);
    for (const long attribute : attributes)
        if (!planAttribute(model, holder, attribute, objects)) return false;
    return true;
}

bool QorSimResultReset::planAttribute(long model, const QorSimResultHolder& holder, long attribute,
                                      const ISortedSet<long>& objects) {
    auto type = QorCoreAttributeType::None;
    if (repository().getUIAttributeType(attribute, type) != QorErrorCode::Ok) return false;
    for (const long object : objects) {
        QorSimResultChange change{model, object, attribute, holder.kind, type, {}};
        const auto reset = isReset(change);
        if (!reset) return false;
        if (*reset) continue;
        QorOwnedText before;
        if (isFailure(repository().getAttributeValueAsNewChar(object, attribute, before.out()))) return false;
        change.before = before.view();
        _changes.push_back(std::move(change));
    }
    return true;
}

const char* QorSimResultReset::textAfter(const QorSimResultChange& change) { return resetText(change.type); }

bool QorSimResultReset::apply() noexcept {
    return Qor_Guarded(kResultSource, false, [this] {
        QorUnitOfWork unit;
        for (std::size_t done = 0; done < _changes.size(); ++done) {
            const auto& change = _changes[done];
            if (writeReset(change.model, change.object, change.attribute, change.type) == QorErrorCode::Ok) continue;
            if (!unit.isOpen()) writeBack(done);
            return false;
        }
        return unit.commit() == QorErrorCode::Ok;
    });
}

void QorSimResultReset::writeBack(std::size_t count) noexcept {
    Qor_Guarded(kResultSource, [&] {
        for (std::size_t place = count; place-- > 0;) {
            const auto& change = _changes[place];
            const auto code = repository().setAttributeValueAsString(change.model, change.object, change.attribute,
                                                                     change.before.c_str(), false);
            if (code != QorErrorCode::Ok)
                displayErrorMessage(kResultSource, 0, "a value could not be written back after a failed reset");
        }
    });
}
