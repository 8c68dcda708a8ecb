// SPDX-License-Identifier: Apache-2.0
#include "cardinality/QorCardinalityWatcher.h"

#include "cardinality/QorCardinalityHandler.h"

namespace {

constexpr QorEventPriority kPriority = 600;

/// A message of a check counts too: after a check that found a breach, the next initialisation of the library handlers
/// reads the rules again.
QorLibraryHandlerState handlerState() {
    return QorCardinalityHandler::Instance().isError() ? QorLibraryHandlerState::InError
                                                       : QorLibraryHandlerState::Current;
}

const QorCardinalityWatcher g_watcher;

}  // namespace

QorCardinalityWatcher::QorCardinalityWatcher()
    : _registration({"cardinality", QorEventType::LibraryLoadedCardinality, handlerState,
                     QorErrorCode::HandlerInitialisationFailed}) {
    // Made before the watcher, the handler also outlives it: a host may go, and discard its library, after `main`.
    (void)QorCardinalityHandler::Instance();
    setEventHandler(QorEventType::LibraryLoadedCardinality, &QorCardinalityWatcher::onLibraryLoaded, kPriority);
    setEventHandler(QorEventType::LibraryDiscarded, &QorCardinalityWatcher::onLibraryDiscarded, kPriority);
}

QorCardinalityWatcher::~QorCardinalityWatcher() = default;

void QorCardinalityWatcher::onLibraryLoaded(const QorLibraryEvent& event) {
    auto& handler = QorCardinalityHandler::Instance();
    handler.Reset();
    handler.init(event.first(), event.second());
}

void QorCardinalityWatcher::onLibraryDiscarded(const QorLibraryEvent&) { QorCardinalityHandler::Instance().Reset(); }
