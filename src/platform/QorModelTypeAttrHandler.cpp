// SPDX-License-Identifier: Apache-2.0
#include "platform/QorModelTypeAttrHandler.h"

#include <array>
#include <cstddef>
#include <new>

#include "platform/QorCoreModelingManager.h"
#include "platform/QorGuard.h"

QorModelTypeAttrHandler::~QorModelTypeAttrHandler() = default;

QorErrorCode QorModelTypeAttrHandler::GetModelTypeIndexOfModel(long, unsigned long& modelType) {
    modelType = ~0ul;
    return Qor_NotInstalled("QorModelTypeAttrHandler::GetModelTypeIndexOfModel");
}

QorErrorCode QorModelTypeAttrHandler::GetModelTypeIndex(const SV::String&, unsigned long& modelType) {
    modelType = ~0ul;
    return Qor_NotInstalled("QorModelTypeAttrHandler::GetModelTypeIndex");
}

QorErrorCode QorModelTypeAttrHandler::GetModelTypeVisibleClasses(unsigned long, ISortedSet<long>& classes) {
    classes.removeAll();
    return Qor_NotInstalled("QorModelTypeAttrHandler::GetModelTypeVisibleClasses");
}

namespace {

QorModelTypeAttrHandler* ofLoadedLibrary() noexcept {
    return Qor_Guarded<QorModelTypeAttrHandler*>(
        "modeltype", nullptr, [] { return QorCoreModelingManager::GetGlobal()->modelTypeHandler(); });
}

}  // namespace

bool QorModelTypeAttrHandler::isError() const { return false; }
SV::String QorModelTypeAttrHandler::getErrorText() const { return {}; }

bool QorModelTypeAttrHandler::ExistsGlobal() noexcept { return ofLoadedLibrary() != nullptr; }

QorModelTypeAttrHandler* QorModelTypeAttrHandler::GetGlobal() noexcept {
    // Takes no memory, and is never destroyed: somebody may still ask while the process ends.
    alignas(QorModelTypeAttrHandler) static std::array<std::byte, sizeof(QorModelTypeAttrHandler)> room;
    static auto* const refusing = new (room.data()) QorModelTypeAttrHandler;
    auto* own = ofLoadedLibrary();
    return own != nullptr ? own : refusing;
}
