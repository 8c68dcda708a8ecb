// SPDX-License-Identifier: Apache-2.0
#include "frame/QorLibLoadManWatcher.h"

#include "platform/QorGrObjAttrHandler.h"

namespace {
constexpr QorEventPriority kPriority = 600;
QorLibLoadManWatcher g_watcher;
}  // namespace

QorLibLoadManWatcher::QorLibLoadManWatcher() {
    setEventHandler(QorEventType::LibraryLoaded, &QorLibLoadManWatcher::onLibraryLoaded, kPriority);
    setEventHandler(QorEventType::LibraryDiscarded, &QorLibLoadManWatcher::onLibraryDiscarded, kPriority);
}

// The handler is left alone on purpose: when the process ends, the platform that uses it may be gone already.
QorLibLoadManWatcher::~QorLibLoadManWatcher() = default;

void QorLibLoadManWatcher::onLibraryLoaded(const QorLibraryEvent&) {
    if (_isOwner) return;
    if (QorGrObjAttrHandler::IsToolkitMode() || QorGrObjAttrHandler::GetGlobal() != nullptr) return;
    _handler = new QorGrObjAttrHandler(true, false);
    _isOwner = true;
    QorGrObjAttrHandler::SetGlobal(_handler);
}

void QorLibLoadManWatcher::onLibraryDiscarded(const QorLibraryEvent&) {
    if (!_isOwner) return;
    QorGrObjAttrHandler::SetGlobal(nullptr);
    delete _handler;
    _handler = nullptr;
    _isOwner = false;
}
