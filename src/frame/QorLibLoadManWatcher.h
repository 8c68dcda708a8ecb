// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/QorEventListener.h"
#include "platform/QorExport.h"

class QorGrObjAttrHandler;

/// Gives each loaded library a graphic-object attribute handler, and takes it away with the library. One exists from
/// before `main` to the end of the process.
class QOR_API QorLibLoadManWatcher final : public QorEventListener {
public:
    QorLibLoadManWatcher();
    ~QorLibLoadManWatcher() override;

private:
    void onLibraryLoaded(const QorLibraryEvent& event);
    void onLibraryDiscarded(const QorLibraryEvent& event);

    QorGrObjAttrHandler* _handler = nullptr;
    bool _isOwner = false;
};
