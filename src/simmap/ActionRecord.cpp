// SPDX-License-Identifier: Apache-2.0
#include "simmap/ActionRecord.h"

#include <optional>
#include <string>

#include "frame/RepositoryLookup.h"
#include "platform/QorCoreModelingManager.h"
#include "simmap/KexValues.h"
#include "simmap/internalErrors.h"

namespace qor::simmap {

namespace {

struct EventWord {
    std::string_view word;
    QorSimOptionActionEvent event;
};
constexpr EventWord kEventWords[] = {
    {"start", QorSimOptionActionEvent::Start},
    {"interrupt", QorSimOptionActionEvent::Interrupt},
    {"continue", QorSimOptionActionEvent::Continue},
    {"finish", QorSimOptionActionEvent::Finish},
};

std::optional<QorSimOptionActionEvent> eventOf(std::string_view word) {
    for (const auto& row : kEventWords)
        if (row.word == word) return row.event;
    return std::nullopt;
}

std::string named(std::string_view key, const SV::String& name) { return std::string(key) + ":\"" + name.str() + "\""; }

/// An attribute whose type cannot be asked for is taken as it is.
bool isEvaluated(long attribute) {
    auto type = QorCoreAttributeType::None;
    if (QorCoreModelingManager::GetGlobal()->getUIAttributeType(attribute, type) == QorErrorCode::Ok)
        return type == QorCoreAttributeType::SimulationAction;
    reportInternalError(MappingLine::ActionType);
    return true;
}

}  // namespace

int readAction(const QorKexParser& parser, long library, MappingErrors errors, bool continueOnError,
               QorSimulationOption& option) {
    std::optional<QorSimOptionActionEvent> event = QorSimOptionActionEvent::Any;
    if (parser.IsContained("event")) {
        const auto word = parser.GetModifier("event");
        event = eventOf(word.view());
        if (!event) {
            errors.add(QorSimCode::BadText, parser.GetKeyPosition("event"), unknownName("event:" + word.str()));
            if (!continueOnError) return QorSimCode::BadText;
        }
    }

    const auto className = valueOf(parser, "class");
    if (!className) return errors.missing(parser.GetCurElemPosition(), "class");
    const auto cls = frame::findClass(library, *className);
    if (!cls) return errors.unknown(parser.GetKeyPosition("class"), named("class", *className));

    const auto name = valueOf(parser, "attribute");
    if (!name) return errors.missing(parser.GetCurElemPosition(), "attribute");
    const auto attribute = frame::findAttribute(*cls, *name);
    if (!attribute || !isEvaluated(*attribute))
        return errors.unknown(parser.GetKeyPosition("attribute"), named("attribute", *name));

    if (!event) return QorSimCode::FinishedWithErrors;
    option.actions.add({*cls, *event, *attribute});
    return QorSimCode::Ok;
}

}  // namespace qor::simmap
