// SPDX-License-Identifier: Apache-2.0
#include "simmap/QorSimMappingWatcher.h"

#include "simmap/QorSimMappingHandler.h"

namespace {

constexpr QorEventPriority kPriority = 600;
const QorSimMappingWatcher g_watcher;

// A library without options has an error text and is in order: the code decides.
QorLibraryHandlerState state() {
    const auto* const handler = QorSimMappingHandler::GetGlobal();
    if (handler == nullptr) return QorLibraryHandlerState::Missing;
    return handler->readingCode() == QorSimCode::Ok ? QorLibraryHandlerState::Current : QorLibraryHandlerState::InError;
}

}  // namespace

QorSimMappingWatcher::QorSimMappingWatcher()
    : _registration(
          {"simulation mapping", QorEventType::LibraryLoadedSimMapping, state, QorErrorCode::SimMappingError}) {
    setEventHandler(QorEventType::LibraryLoadedSimMapping, &QorSimMappingWatcher::onLibraryLoaded, kPriority);
    setEventHandler(QorEventType::LibraryDiscarded, &QorSimMappingWatcher::onLibraryDiscarded, kPriority);
}

// The handler is left alone on purpose: when the process ends, somebody may still ask it.
QorSimMappingWatcher::~QorSimMappingWatcher() = default;

void QorSimMappingWatcher::onLibraryLoaded(const QorLibraryEvent& event) {
    QorSimMappingHandler::FreeGlobal();
    QorSimMappingHandler::CreateGlobal(event.first());
}

void QorSimMappingWatcher::onLibraryDiscarded(const QorLibraryEvent&) { QorSimMappingHandler::FreeGlobal(); }
