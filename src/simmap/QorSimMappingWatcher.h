// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorEventListener.h"
#include "platform/QorExport.h"
#include "platform/QorLibraryHandlers.h"

/// Gives each loaded library its simulation mapping handler, and takes it away with the library. One exists from before
/// `main` to the end of the process.
class QOR_API QorSimMappingWatcher final : public QorEventListener {
public:
    QorSimMappingWatcher();
    ~QorSimMappingWatcher() override;

private:
    void onLibraryLoaded(const QorLibraryEvent& event);
    void onLibraryDiscarded(const QorLibraryEvent& event);

    QorLibraryHandlerRegistration _registration;
};
