// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorSourceInterRefContainer.h"
#include "platform/SvString.h"

/// The inter-model references that one attribute of one object (or record row) holds.
struct QOR_API QorInterReferences {
    bool toModels = false;  ///< the attribute refers to whole models, not to objects in them
    std::vector<QorInterModRefTarget> targets;
};

/// What a host offers to code that edits objects: references, expressions, pasting, notebooks, automatic executions.
/// Outputs are set to their "none" value first and stay so after a failure. NotFound: no such object in that model, or
/// no such attribute of the kind asked for. Every default refuses, a question with false.
class QOR_API QorEditingService {
public:
    virtual ~QorEditingService();

    /// Ok with no targets when the attribute holds none; ValueRefused when what it holds is not in the text form.
    virtual QorErrorCode interReferences(long model, long object, long attribute, QorInterReferences& references);
    /// Reads references from the text form that `getAttributeValueAsNewChar` gives for such an attribute. ValueRefused
    /// for any other text. Nobody asks whether the targets exist.
    virtual QorErrorCode parseInterReferences(long attribute, const SV::String& text, QorInterReferences& references);
    /// Puts the references in place of all that the attribute holds. ValueRefused, and no change, when they are of the
    /// other kind (`toModels`) than the attribute's, or one leads nowhere that the model does not name already.
    /// `raiseEvent` announces the change.
    virtual QorErrorCode saveInterReferences(long model, long object, long attribute,
                                             const QorInterReferences& references, bool raiseEvent);

    /// The result of an expression attribute, as text. NoValue when it holds no expression; NotComputable when the one
    /// that it holds cannot be worked out.
    virtual QorErrorCode expressionResult(long model, long object, long attribute, SV::String& result);

    /// Name of the object that a pasted object is a copy of. NotFound when the object was not pasted.
    virtual QorErrorCode sourceNameOfPastedObject(long model, long object, SV::String& name);

    /// Name of the attribute that the notebook of a class shows at a position from 0; false behind the last one.
    virtual bool notebookAttribute(long cls, unsigned long position, SV::String& name);

    /// Holds the platform's automatic executions until as many starts as stops have come. Neither can fail.
    virtual void stopAutomaticExecutions();
    virtual void startAutomaticExecutions();
};
