// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorSourceInterRefContainer.h"

class QOR_API QorCoreMM_InterRef {
public:
    virtual ~QorCoreMM_InterRef();
    /// All inter-model references that leave the model; an empty container after a failure. The default refuses.
    virtual QorErrorCode getInterRefsOfSourceModel(long model, QorSourceInterRefContainer& references);
};
