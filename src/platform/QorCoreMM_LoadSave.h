// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"

class QOR_API QorCoreMM_LoadSave {
public:
    virtual ~QorCoreMM_LoadSave();
    /// True when that application library, or the application library that the part belongs to, is the loaded one. The
    /// default answers false.
    virtual bool IsLibraryLoaded(long library);
};
