// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/QorErrorCode.h"
#include "platform/QorEventType.h"
#include "platform/QorExport.h"

enum class QorLibraryHandlerState : std::int32_t { Missing, Current, InError };

/// A library-wide handler as the host's `initLibraryHandlers` sees it: what state it is in and which event renews it.
struct QorLibraryHandler {
    const char* name = "";
    QorEventType renewedBy = QorEventType::LibraryLoaded;
    std::function<QorLibraryHandlerState()> state;
    QorErrorCode failure =
        QorErrorCode::HandlerInitialisationFailed;  ///< what its error makes the initialisation return
};

/// Registers a handler while it lives. Works before `main`.
class QOR_API QorLibraryHandlerRegistration {
public:
    explicit QorLibraryHandlerRegistration(QorLibraryHandler handler);
    QorLibraryHandlerRegistration(const QorLibraryHandlerRegistration&) = delete;
    QorLibraryHandlerRegistration& operator=(const QorLibraryHandlerRegistration&) = delete;
    ~QorLibraryHandlerRegistration();

private:
    long _key;
};

/// The registered handlers in order of registration. The pointers hold until a registration ends.
QOR_API std::vector<const QorLibraryHandler*> Qor_LibraryHandlers();

/// Renews what is missing or in error (with `all` false: only what is missing) by raising its event again, each event
/// type once. Returns the failure code of the first handler that is in error afterwards, NotAllHandlersSetUp when none
/// is in error but one is missing, else Ok. The host's initLibraryHandlers needs nothing more.
QOR_API QorErrorCode Qor_RenewLibraryHandlers(const std::function<void(QorEventType)>& raise, bool all);
