// SPDX-License-Identifier: Apache-2.0
#include "platform/QorLibraryHandlers.h"

#include <algorithm>
#include <map>
#include <utility>

namespace {

struct Registry {
    long lastKey = 0;
    std::map<long, QorLibraryHandler> handlers;
};

// Never destroyed: registrations of static lifetime end after main, in any order.
Registry& registry() {
    static auto* const theRegistry = new Registry;
    return *theRegistry;
}

bool isToBeRenewed(QorLibraryHandlerState state, bool all) {
    return state == QorLibraryHandlerState::Missing || (all && state == QorLibraryHandlerState::InError);
}

}  // namespace

QorLibraryHandlerRegistration::QorLibraryHandlerRegistration(QorLibraryHandler handler) : _key(++registry().lastKey) {
    registry().handlers.emplace(_key, std::move(handler));
}

QorLibraryHandlerRegistration::~QorLibraryHandlerRegistration() { registry().handlers.erase(_key); }

std::vector<const QorLibraryHandler*> Qor_LibraryHandlers() {
    std::vector<const QorLibraryHandler*> handlers;
    for (const auto& [key, handler] : registry().handlers) handlers.push_back(&handler);
    return handlers;
}

QorErrorCode Qor_RenewLibraryHandlers(const std::function<void(QorEventType)>& raise, bool all) {
    std::vector<QorEventType> raised;
    for (const auto* handler : Qor_LibraryHandlers()) {
        if (!isToBeRenewed(handler->state(), all)) continue;
        if (std::find(raised.begin(), raised.end(), handler->renewedBy) != raised.end()) continue;
        raised.push_back(handler->renewedBy);
        raise(handler->renewedBy);
    }
    auto result = QorErrorCode::Ok;
    for (const auto* handler : Qor_LibraryHandlers()) {
        const auto state = handler->state();
        if (state == QorLibraryHandlerState::InError) return handler->failure;
        if (state == QorLibraryHandlerState::Missing) result = QorErrorCode::NotAllHandlersSetUp;
    }
    return result;
}
