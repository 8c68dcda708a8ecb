// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorEditing.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"

using QorCoreInterModelReference = QorInterModRefTarget;

/// Works on the inter-model references of one attribute of one object.
class QOR_API QorCoreInterReferenceHandler {
public:
    QorCoreInterReferenceHandler(long model, long object, long attribute);
    ~QorCoreInterReferenceHandler();

    /// Reads the references that the attribute holds.
    QorErrorCode initHandler() noexcept;
    /// Reads the references from their text form; false, with the reason in `code`, when that fails.
    bool initHandler(const SV::String& text, QorErrorCode& code) noexcept;

    /// True when the attribute refers to whole models.
    [[nodiscard]] bool isModelReferenceMode() const { return _references.toModels; }
    [[nodiscard]] unsigned long getInterReferenceCount() const { return _references.targets.size(); }
    /// The index must lie below getInterReferenceCount().
    [[nodiscard]] const QorCoreInterModelReference& getInterReference(unsigned long index) const {
        return _references.targets[index];
    }

    /// Counts every reference as one to be written by `_Save`, also those read from a text.
    void MarkAllAdded() { _changed = true; }
    [[nodiscard]] bool isChanged() const { return _changed; }
    /// Writes the references into the attribute of that object when they were marked; Ok without doing anything when
    /// not.
    QorErrorCode _Save(long model, long object, bool raiseEvent) noexcept;

private:
    long _model;
    long _object;
    long _attribute;
    QorInterReferences _references;
    bool _changed = false;
};
