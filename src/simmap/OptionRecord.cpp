// SPDX-License-Identifier: Apache-2.0
#include "simmap/OptionRecord.h"

#include <optional>
#include <string>
#include <utility>

#include "frame/RepositoryLookup.h"
#include "platform/QorCoreVar.h"
#include "platform/QorInternational.h"
#include "platform/QorMessage.h"
#include "simmap/KexValues.h"
#include "simmap/NumberedKey.h"
#include "simmap/StandardAttributes.h"
#include "simmap/messages.h"

namespace qor::simmap {

namespace {

/// The value in the current language, else the one without a language; nothing when there is neither.
std::optional<SV::String> translatedValue(const QorKexParser& parser, std::string_view key) {
    const auto translated = std::string(key) + "_" + QorInternational::GetCurrentISOID().str();
    if (auto value = valueOf(parser, translated)) return value;
    return valueOf(parser, key);
}

}  // namespace

bool OptionRecord::isSwitchedOff() const { return _parser.IsContained("invalid") || _parser.IsContained("undefined"); }

int OptionRecord::read(QorSimulationOption& option) {
    if (const int code = readName(option); _tolerance.isStoppedBy(code)) return code;
    readHelpText(option);
    // Everything else belongs to the activity, so without it there is nothing to go on with.
    if (const int code = readActivity(option); code != QorSimCode::Ok) return code;
    if (const int code = readStandardAttributes(option); _tolerance.isStoppedBy(code)) return code;
    if (const int code = readProcessCall(option); _tolerance.isStoppedBy(code)) return code;
    if (const int code = readUserAttributes(option); _tolerance.isStoppedBy(code)) return code;
    option.complete = 1;
    return _tolerance.result();
}

int OptionRecord::readName(QorSimulationOption& option) {
    if (auto name = translatedValue(_parser, "name")) {
        option.name = std::move(*name);
        return QorSimCode::Ok;
    }
    return _errors.missing(_parser.GetCurElemPosition(), "name");
}

void OptionRecord::readHelpText(QorSimulationOption& option) {
    auto helpText = translatedValue(_parser, "helptext");
    option.helpText = helpText ? std::move(*helpText) : Qor_Message(message::defaultHelpText);
}

int OptionRecord::readActivity(QorSimulationOption& option) {
    auto name = valueOf(_parser, "activity");
    if (!name) return _errors.missing(_parser.GetCurElemPosition(), "activity");
    const auto activity = frame::findClass(_library, *name);
    if (!activity) return unknown("activity", *name);
    _activity = *activity;
    option.activityClassName = std::move(*name);
    return QorSimCode::Ok;
}

int OptionRecord::readStandardAttributes(QorSimulationOption& option) {
    auto waitingTime = valueOf(_parser, kWaitingTimeKey);
    option.waitingTimeName = waitingTime ? std::move(*waitingTime) : Qor_Message(message::defaultWaitingTimeName);
    for (unsigned long place = 0; place < kStandardAttributeKeys.size(); ++place) {
        const auto key = kStandardAttributeKeys[place];
        if (!_parser.IsContained(key)) continue;
        const long attribute = attributeOf(_activity, key);
        option.standardAttributes.elementAtIndex(place) = attribute;
        if (attribute == 0 && _tolerance.isStoppedBy(QorSimCode::Failed)) return QorSimCode::Failed;
    }
    return QorSimCode::Ok;
}

int OptionRecord::readProcessCall(QorSimulationOption& option) {
    const auto name = valueOf(_parser, "processcall");
    if (!name) return QorSimCode::Ok;
    const auto cls = frame::findClass(Qor_GetCoreVarConst(QorCoreVarType::BusinessProcessLibrary), *name);
    if (!cls) return unknown("processcall", *name);
    option.processCallClass = *cls;
    if (!_parser.IsContained("subperformerattr")) return QorSimCode::Ok;
    option.subPerformerAttribute = attributeOf(*cls, "subperformerattr");
    return option.subPerformerAttribute == 0 ? QorSimCode::Failed : QorSimCode::Ok;
}

int OptionRecord::readUserAttributes(QorSimulationOption& option) {
    for (NumberedKey key(kUserAttributeKey); _parser.IsContained(key.view()); key.next()) {
        const long attribute = attributeOf(_activity, key.view());
        if (attribute == 0 && _tolerance.isStoppedBy(QorSimCode::Failed)) return QorSimCode::Failed;
        option.userAttributes.add(attribute);
    }
    return QorSimCode::Ok;
}

long OptionRecord::attributeOf(long cls, std::string_view key) {
    const auto name = valueOrEmpty(_parser, key);
    if (const auto attribute = frame::findAttribute(cls, name)) return *attribute;
    unknown(key, name);
    return 0;
}

}  // namespace qor::simmap
