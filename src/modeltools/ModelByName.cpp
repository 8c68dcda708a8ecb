// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ModelByName.h"

#include <cstring>
#include <functional>
#include <limits>
#include <utility>

#include "platform/QorCoreModelingManager.h"
#include "platform/QorModelTypeAttrHandler.h"

namespace qor::modeltools {

namespace {

ModelSearch findNewest(unsigned long type, const SV::String& modelName, long& model) {
    auto& repository = *QorCoreModelingManager::GetGlobal();
    long thread = QorNoIdentifier;
    if (repository.getModelThreadIDFromModelName(modelName.c_str(), type, thread) != QorErrorCode::Ok)
        return ModelSearch::UnknownModel;
    return repository.getLastModelVersionOfModelThread(thread, model) == QorErrorCode::Ok ? ModelSearch::Found
                                                                                          : ModelSearch::NoVersion;
}

}  // namespace

ModelSearch findModel(const SV::String& typeName, const SV::String& modelName, long& model) {
    model = QorNoIdentifier;
    unsigned long type = 0;
    if (QorModelTypeAttrHandler::GetGlobal()->GetModelTypeIndex(typeName, type) != QorErrorCode::Ok)
        return ModelSearch::UnknownType;
    return findNewest(type, modelName, model);
}

ModelSearch KnownModels::find(const SV::String& typeName, const SV::String& modelName, long& model) {
    model = QorNoIdentifier;
    if (!findType(typeName)) return ModelSearch::UnknownType;
    const auto hash = static_cast<std::uint32_t>(std::hash<std::string_view>()(modelName.view()) ^ _type);
    Slot& slot = slotFor(hash, modelName.view());
    if (slot.name != kFree) {
        if (slot.answer < 0) return static_cast<ModelSearch>(-slot.answer);
        model = slot.answer;
        return ModelSearch::Found;
    }
    const ModelSearch result = findNewest(_type, modelName, model);
    const auto found = Qor_NarrowIdentifier(model);
    if (found)
        remember(slot, hash, modelName.view(),
                 result == ModelSearch::Found ? *found : -static_cast<std::int32_t>(result));
    return result;
}

bool KnownModels::findType(const SV::String& typeName) {
    if (_typeKnown && typeName == _typeName) return true;
    unsigned long type = 0;
    const auto code = QorModelTypeAttrHandler::GetGlobal()->GetModelTypeIndex(typeName, type);
    _typeKnown = code == QorErrorCode::Ok && type <= std::numeric_limits<std::uint32_t>::max();
    _type = static_cast<std::uint32_t>(type);
    if (_typeKnown) _typeName = typeName;
    return _typeKnown;
}

KnownModels::Slot& KnownModels::slotFor(std::uint32_t hash, std::string_view name) {
    const std::size_t mask = _slots.size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        Slot& slot = _slots[at];
        if (slot.name == kFree) return slot;
        if (slot.hash != hash || slot.length != name.size()) continue;
        const char* const known = _names.data() + slot.name;
        const bool isIt = std::memcmp(known - sizeof _type, &_type, sizeof _type) == 0 &&
                          std::memcmp(known, name.data(), name.size()) == 0;
        if (isIt) return slot;
    }
}

void KnownModels::remember(Slot& slot, std::uint32_t hash, std::string_view name, QorIdentifier answer) {
    const std::size_t at = _names.size() + sizeof _type;
    if (at + name.size() >= kFree) return;  // asked for again each time
    _names.append(reinterpret_cast<const char*>(&_type), sizeof _type).append(name);
    slot = {hash, static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(name.size()), answer};
    if (2 * ++_used > _slots.size()) makeSlots(2 * _used);
}

void KnownModels::makeSlots(std::size_t names) {
    std::size_t count = 64;
    while (count < 2 * names) count *= 2;
    std::vector<Slot> larger(count);
    for (const Slot& slot : _slots) {
        if (slot.name == kFree) continue;
        std::size_t at = slot.hash & (count - 1);
        while (larger[at].name != kFree) at = (at + 1) & (count - 1);
        larger[at] = slot;
    }
    _slots = std::move(larger);
}

}  // namespace qor::modeltools
