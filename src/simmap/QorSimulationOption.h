// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/ISequence.h"
#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"
#include "simmap/QorSimOptionActionEvent.h"

/// An attribute of a class that the simulation evaluates on an event.
struct QorSimOptionAction {
    long cls = 0;
    QorSimOptionActionEvent event = QorSimOptionActionEvent::Any;
    long attribute = 0;

    friend bool operator<(const QorSimOptionAction& a, const QorSimOptionAction& b) {
        if (a.cls != b.cls) return a.cls < b.cls;
        if (a.event != b.event) return a.event < b.event;
        return a.attribute < b.attribute;
    }
};

/// One simulation option: which class acts as the activity, and which attributes hold what the simulation needs.
class QOR_API QorSimulationOption {
public:
    /// `number` counts the option records of the text from 1, those included that are skipped.
    explicit QorSimulationOption(std::int32_t number);
    QorSimulationOption(const QorSimulationOption&) = delete;
    QorSimulationOption& operator=(const QorSimulationOption&) = delete;
    virtual ~QorSimulationOption();

    std::int32_t number;
    std::int32_t complete = 0;  ///< 1: taken over in full; 0: the built-in default option, or an option with errors
    SV::String name;
    SV::String helpText;
    SV::String activityClassName;  ///< as written in the text
    SV::String waitingTimeName;
    /// Execution, waiting, resting and transport time, always these four; 0 where the record names none.
    ISequence<long> standardAttributes{0, 0, 0, 0};
    ISequence<long> userAttributes;  ///< in the order of their numbers
    long processCallClass = 0;       ///< 0 when there is none
    long subPerformerAttribute = 0;  ///< of the process-call class; 0 when there is none
    ISortedSet<QorSimOptionAction> actions;

    /// The attribute of an action of the class on the event; on `Any` of whichever action of the class comes first.
    /// 0 when there is none. O(log n). An action for any event answers to `Any` only: it is deliberately not found by
    /// the single events.
    [[nodiscard]] long actionAttribute(long cls, QorSimOptionActionEvent event) const;
};
