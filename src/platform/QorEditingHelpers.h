// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"

class QOR_API QorCoreCopyManager {
public:
    static QorCoreCopyManager& Instance() noexcept;
    /// Name of the object that a pasted object is a copy of.
    QorErrorCode getSourceInstNameOfPastedInst(long model, long object, SV::String& name) const noexcept;
};

/// Computes an expression attribute of an object.
class QOR_API QorCoreExpressionManager {
public:
    class QOR_API ExprHandler {
    public:
        ExprHandler(long model, long object, long attribute);
        /// The result as text; empty after a failure.
        QorErrorCode GetResultText(SV::String& result) const noexcept;

    private:
        long _model;
        long _object;
        long _attribute;
    };
    static ExprHandler GetExprHandler(long model, long object, long attribute);
};

/// Holds the platform's automatic executions while it lives.
class QOR_API QorCoreAutoExManStopStart {
public:
    QorCoreAutoExManStopStart() noexcept;
    QorCoreAutoExManStopStart(const QorCoreAutoExManStopStart&) = delete;
    QorCoreAutoExManStopStart& operator=(const QorCoreAutoExManStopStart&) = delete;
    ~QorCoreAutoExManStopStart();
};

/// The attributes that the notebook (property sheet) of a class shows.
class QOR_API QorBasicNotebookAttrHandler {
public:
    explicit QorBasicNotebookAttrHandler(long cls);
    /// The name of the attribute at a position from 0; false behind the last one.
    bool GetAttr(unsigned long index, SV::String& name) const noexcept;

private:
    long _cls;
};
