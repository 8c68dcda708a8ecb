// SPDX-License-Identifier: Apache-2.0
#include "modeltools/PlannedGround.h"

#include <algorithm>

#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"

namespace qor::modeltools {

PlannedGround::~PlannedGround() = default;

const std::string* PlannedGround::planned(long object, long attribute) const {
    const auto found = _texts.find({object, attribute});
    return found != _texts.end() ? &found->second : nullptr;
}

std::optional<SV::String> PlannedGround::textOf(long object, long attribute) {
    const std::string* const text = planned(object, attribute);
    return text != nullptr ? SV::String(*text) : _repository.textOf(object, attribute);
}

std::optional<SV::String> PlannedGround::valueOf(long object, long attribute) {
    const std::string* const text = planned(object, attribute);
    return text != nullptr ? SV::String(*text) : _repository.valueOf(object, attribute);
}

QorErrorCode PlannedGround::holderOf(const ISortedSet<long>& classes, const std::string& name, QorIdentifier& holder) {
    holder = QorNoIdentifier;
    const auto take = [&holder](QorIdentifier its) {
        holder = holder == QorNoIdentifier ? its : std::min(holder, its);
    };
    // One class after the other: behind a holder that is renamed there may be one of another class.
    for (const long cls : classes) {
        QorIdentifier present = QorNoIdentifier;
        const QorErrorCode code = _repository.holderOf({cls}, name, present);
        if (code != QorErrorCode::Ok && code != QorErrorCode::NotFound) return code;
        if (code == QorErrorCode::Ok && planned(present, QorAttributeId::Name) == nullptr) take(present);
    }
    if (const auto renamed = _holders.find(name); renamed != _holders.end()) {
        for (const QorIdentifier object : renamed->second) {
            long cls = QorNoIdentifier;
            const auto code = QorCoreModelingManager::GetGlobal()->GetClassOfInstance(object, cls);
            if (code == QorErrorCode::Ok && classes.contains(cls)) take(object);
        }
    }
    return holder == QorNoIdentifier ? QorErrorCode::NotFound : QorErrorCode::Ok;
}

QorErrorCode PlannedGround::rename(long object, const std::string& name, NumberSearch&) {
    const auto id = static_cast<QorIdentifier>(object);
    std::string& its = _texts[{object, QorAttributeId::Name}];
    if (const auto earlier = _holders.find(its); earlier != _holders.end()) std::erase(earlier->second, id);
    its = name;
    _holders[name].push_back(id);
    return QorErrorCode::Ok;
}

QorErrorCode PlannedGround::setText(long object, long attribute, const std::string& text) {
    _texts[{object, attribute}] = text;
    return QorErrorCode::Ok;
}

}  // namespace qor::modeltools
