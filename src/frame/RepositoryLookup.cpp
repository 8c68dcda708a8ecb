// SPDX-License-Identifier: Apache-2.0
#include "frame/RepositoryLookup.h"

#include <string_view>

#include "platform/QorCoreModelingManager.h"
#include "platform/QorEditingHelpers.h"
#include "platform/QorOwnedText.h"

namespace qor::frame {

namespace {

using NameLookup = QorErrorCode (QorCoreMM_Enhanced::*)(long scope, const char* name, long& identifier);

std::optional<QorIdentifier> findByName(NameLookup lookup, long scope, const SV::String& name) {
    if (name.view().find('\0') != std::string_view::npos) return std::nullopt;
    long found = QorNoIdentifier;
    const auto code = (QorCoreModelingManager::GetGlobal()->*lookup)(scope, name.c_str(), found);
    if (code != QorErrorCode::Ok || found < 1) return std::nullopt;
    return Qor_NarrowIdentifier(found);
}

}  // namespace

std::optional<QorIdentifier> findClass(long library, const SV::String& name) {
    return findByName(&QorCoreMM_Enhanced::getClassIDFromClassName, library, name);
}

std::optional<QorIdentifier> findAttribute(long cls, const SV::String& name) {
    return findByName(&QorCoreMM_Enhanced::getAttributeIDFromAttributeName, cls, name);
}

std::optional<SV::String> readText(long owner, long attribute) {
    QorOwnedText text;
    const auto code = QorCoreModelingManager::GetGlobal()->getAttributeValue(owner, attribute, text.out(), false);
    if (code != QorErrorCode::Ok && code != QorErrorCode::NoValue) return std::nullopt;
    return SV::String(text.view());
}

std::optional<SV::String> nameOfAttribute(long attribute) {
    QorOwnedText name;
    if (QorCoreModelingManager::GetGlobal()->getAttributeName(attribute, name.out()) != QorErrorCode::Ok)
        return std::nullopt;
    return SV::String(name.view());
}

QorErrorCode readNotebook(long cls, std::vector<ShownAttribute>& attributes) {
    const QorBasicNotebookAttrHandler notebook(cls);
    ShownAttribute its;
    // Asked twice, for without memory it answers as behind the end, and attributes would be lost.
    const auto isShown = [&](unsigned long index) {
        return notebook.GetAttr(index, its.name) || notebook.GetAttr(index, its.name);
    };
    for (unsigned long index = 0; isShown(index); ++index) {
        const auto code =
            QorCoreModelingManager::GetGlobal()->getAttributeIDFromAttributeName(cls, its.name.c_str(), its.id);
        if (code != QorErrorCode::Ok) return code;
        attributes.push_back(its);
    }
    return QorErrorCode::Ok;
}

}  // namespace qor::frame
