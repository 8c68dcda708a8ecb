// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorCoreBulkView.h"
#include "platform/QorCoreMM_Basic.h"
#include "platform/QorCoreMM_Enhanced.h"
#include "platform/QorCoreMM_InterRef.h"
#include "platform/QorCoreMM_LoadSave.h"
#include "platform/QorExport.h"

class QorCoreUnitsOfWork;
class QorModelTypeAttrHandler;

/// The host's repository. All answers come from memory and are O(1) or O(result) unless said otherwise.
class QOR_API QorCoreModelingManager : public QorCoreMM_Basic,
                                       public QorCoreMM_Enhanced,
                                       public QorCoreMM_LoadSave,
                                       public QorCoreMM_InterRef {
public:
    ~QorCoreModelingManager() override;

    /// The installed host's repository; without one an object whose operations all refuse. Never null.
    static QorCoreModelingManager* GetGlobal() noexcept;

    /// Null unless the host offers one. A wrapper around a repository offers none, so that all calls pass through it.
    virtual QorCoreBulkView* bulkView();
    /// Null unless the host offers units of work (also by default).
    virtual QorCoreUnitsOfWork* unitsOfWork();
    /// The model-type attribute handler of the loaded library; null (also by default) while there is none.
    virtual QorModelTypeAttrHandler* modelTypeHandler();
};
