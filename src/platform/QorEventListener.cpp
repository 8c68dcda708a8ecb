// SPDX-License-Identifier: Apache-2.0
#include "platform/QorEventListener.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "platform/QorHost.h"
#include "platform/displayErrorMessage.h"

namespace {

struct Subscription {
    const QorEventListener* listener;
    QorEventPriority priority;
    std::function<void(const QorEvent&)> call;
    bool ended = false;
};

using Subscriptions = std::vector<std::shared_ptr<Subscription>>;

// Never destroyed: listeners of static lifetime end their subscriptions after main, in any order.
std::map<QorEventType, Subscriptions>& hub() {
    static auto* const theHub = new std::map<QorEventType, Subscriptions>;
    return *theHub;
}

void deliver(const Subscription& subscription, const QorEvent& event) {
    try {
        subscription.call(event);
    } catch (...) {
        displayErrorMessage("event", static_cast<long>(event.type()), "a handler threw an exception");
    }
}

}  // namespace

QorEventListener::~QorEventListener() {
    for (auto& [type, subscriptions] : hub()) {
        std::erase_if(subscriptions, [this](const auto& subscription) {
            if (subscription->listener != this) return false;
            subscription->ended = true;
            return true;
        });
    }
}

void QorEventListener::subscribe(QorEventType type, QorEventPriority priority,
                                 std::function<void(const QorEvent&)> call) {
    auto& subscriptions = hub()[type];
    const auto behind =
        std::upper_bound(subscriptions.begin(), subscriptions.end(), priority,
                         [](QorEventPriority wanted, const auto& other) { return wanted < other->priority; });
    subscriptions.insert(behind, std::make_shared<Subscription>(Subscription{this, priority, std::move(call)}));
}

void Qor_RaiseEvent(const QorEvent& event) noexcept {
    if (Qor_InstalledHost() == nullptr) return;
    try {
        const auto found = hub().find(event.type());
        if (found == hub().end()) return;
        const Subscriptions present = found->second;
        for (const auto& subscription : present)
            if (!subscription->ended) deliver(*subscription, event);
    } catch (...) {
        displayErrorMessage("event", static_cast<long>(event.type()), "the event could not be delivered");
    }
}
