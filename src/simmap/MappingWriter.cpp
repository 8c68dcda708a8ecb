// SPDX-License-Identifier: Apache-2.0
#include "simmap/MappingWriter.h"

#include <string_view>

#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorOwnedText.h"
#include "simmap/NumberedKey.h"
#include "simmap/StandardAttributes.h"

namespace qor::simmap {

namespace {

void writeValue(std::string_view key, std::string_view value, std::string& text) {
    text.append("\n").append(key).append(": \"").append(value).append("\"");
}

bool writeAttribute(std::string_view key, long attribute, std::string& text) {
    QorOwnedText name;
    if (QorCoreModelingManager::GetGlobal()->getAttributeName(attribute, name.out()) != QorErrorCode::Ok) return false;
    writeValue(key, name.view(), text);
    return true;
}

bool writeClass(std::string_view key, long cls, std::string& text) {
    QorOwnedText name;
    const auto code =
        QorCoreModelingManager::GetGlobal()->getAttributeValue(cls, QorAttributeId::ClassName, name.out(), false);
    if (code != QorErrorCode::Ok) return false;
    writeValue(key, name.view(), text);
    return true;
}

bool writeClassSet(std::string_view prefix, const ISortedSet<long>& classes, std::string& text) {
    NumberedKey key(prefix);
    for (const long cls : classes) {
        if (!writeClass(key.view(), cls, text)) return false;
        key.next();
    }
    return true;
}

}  // namespace

bool writeOption(const QorSimulationOption& option, std::string& text) {
    text += "SIMOPTION";
    if (option.complete == 0) text += "\nundefined";
    writeValue("name", option.name.view(), text);
    writeValue("activity", option.activityClassName.view(), text);
    writeValue("helptext", option.helpText.view(), text);
    for (unsigned long place = 0; place < kStandardAttributeKeys.size(); ++place) {
        const long attribute = option.standardAttributes.elementAtIndex(place);
        if (attribute > 0 && !writeAttribute(kStandardAttributeKeys[place], attribute, text)) return false;
    }
    NumberedKey key(kUserAttributeKey);
    for (const long attribute : option.userAttributes) {
        if (attribute <= 0) continue;
        if (!writeAttribute(key.view(), attribute, text)) return false;
        key.next();
    }
    text += "\n\n";
    return true;
}

bool writeClasses(const ISortedSet<long>& businessProcessClasses, const ISortedSet<long>& workingEnvironmentClasses,
                  std::string& text) {
    if (businessProcessClasses.isEmpty() && workingEnvironmentClasses.isEmpty()) return true;
    text += "SIMCLASSES";
    return writeClassSet("bp-", businessProcessClasses, text) && writeClassSet("we-", workingEnvironmentClasses, text);
}

}  // namespace qor::simmap
