// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <functional>
#include <type_traits>

#include "platform/QorEvent.h"
#include "platform/QorExport.h"

/// Base of everybody who listens to events. A listener's destructor ends its subscriptions, also while an event is
/// being delivered. Listening works from before `main` until after it; events are delivered only while a host is
/// installed.
class QOR_API QorEventListener {
public:
    QorEventListener() = default;
    QorEventListener(const QorEventListener&) = delete;
    QorEventListener& operator=(const QorEventListener&) = delete;
    virtual ~QorEventListener();

    /// Calls a member function of the listener for each event of that type that has the handler's event class.
    template <class Listener, class Event>
    void setEventHandler(QorEventType type, void (Listener::*handler)(const Event&), QorEventPriority priority) {
        static_assert(std::is_base_of_v<QorEventListener, Listener>);
        static_assert(std::is_base_of_v<QorEvent, Event>);
        subscribe(type, priority, [this, handler](const QorEvent& event) {
            if (const auto* own = dynamic_cast<const Event*>(&event)) (static_cast<Listener*>(this)->*handler)(*own);
        });
    }

private:
    void subscribe(QorEventType type, QorEventPriority priority, std::function<void(const QorEvent&)> call);
};

/// Delivers the event to its listeners, as subscribed when the delivery begins, less those that end meanwhile. What a
/// handler throws is caught, reported to the host's error display, and the next handler runs. Does nothing without an
/// installed host.
QOR_API void Qor_RaiseEvent(const QorEvent& event) noexcept;
