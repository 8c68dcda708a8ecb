// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/QorEventListener.h"
#include "platform/QorExport.h"
#include "platform/QorLibraryHandlers.h"

/// Keeps the cardinality rules in step with the loaded method library. One exists from before `main` to the end of the
/// process.
class QOR_API QorCardinalityWatcher final : public QorEventListener {
public:
    QorCardinalityWatcher();
    ~QorCardinalityWatcher() override;

private:
    void onLibraryLoaded(const QorLibraryEvent& event);
    void onLibraryDiscarded(const QorLibraryEvent& event);

    QorLibraryHandlerRegistration _registration;
};
