// SPDX-License-Identifier: Apache-2.0
#include "simmap/QorSimulationOption.h"

#include <algorithm>

QorSimulationOption::QorSimulationOption(std::int32_t ordinal) : number(ordinal) {}
QorSimulationOption::~QorSimulationOption() = default;

long QorSimulationOption::actionAttribute(long cls, QorSimOptionActionEvent event) const {
    const bool anyEvent = event == QorSimOptionActionEvent::Any;
    const auto before = [&](const QorSimOptionAction& action, long wanted) {
        return action.cls != wanted ? action.cls < wanted : !anyEvent && action.event < event;
    };
    const auto found = std::lower_bound(actions.begin(), actions.end(), cls, before);
    const bool fits = found != actions.end() && found->cls == cls && (anyEvent || found->event == event);
    return fits ? found->attribute : 0;
}
