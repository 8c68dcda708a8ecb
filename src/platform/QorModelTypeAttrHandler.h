// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/ISortedSet.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"

/// The model types of the loaded library. The host creates one when it initialises the library handlers.
class QOR_API QorModelTypeAttrHandler {
public:
    virtual ~QorModelTypeAttrHandler();

    [[nodiscard]] static bool ExistsGlobal() noexcept;
    /// The loaded library's handler; an object whose operations all refuse while there is none. Never null.
    static QorModelTypeAttrHandler* GetGlobal() noexcept;

    /// Whether making the handler met an error, and its text for the user; false and empty by default.
    [[nodiscard]] virtual bool isError() const;
    [[nodiscard]] virtual SV::String getErrorText() const;

    // Model types are numbered from 0 within the loaded library. After a failure the number is ~0ul, the set empty.
    /// NotFound when the identifier is no model of the loaded library.
    virtual QorErrorCode GetModelTypeIndexOfModel(long model, unsigned long& modelType);
    /// By name; NotFound when there is none of that name.
    virtual QorErrorCode GetModelTypeIndex(const SV::String& name, unsigned long& modelType);
    /// Classes that models of the type may hold.
    virtual QorErrorCode GetModelTypeVisibleClasses(unsigned long modelType, ISortedSet<long>& classes);
};
