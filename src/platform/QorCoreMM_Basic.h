// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/ISortedSet.h"
#include "platform/QorCoreAttributeType.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"

/// The repository's basic queries. Outputs are set to their "none" value (-1, null, empty) before anything else, and
/// stay so after a failure. Texts come in new buffers (`new[]`) that the caller deletes. Identifiers beyond 32 bits are
/// unknown identifiers. Every default refuses with NotInstalled, a question with false.
class QOR_API QorCoreMM_Basic {
public:
    virtual ~QorCoreMM_Basic();

    // Names. NotFound when the identifier is of another kind.
    virtual QorErrorCode getAttributeName(long attribute, char*& name);
    virtual QorErrorCode getClassName(long cls, char*& name);
    virtual QorErrorCode getRelationClassName(long relationClass, char*& name);
    /// Name of the record class whose attributes are the columns of a record attribute.
    virtual QorErrorCode getRecordClassName(long attribute, char*& name);

    /// The attribute's type as stored.
    virtual QorErrorCode getAttributeType(long attribute, QorCoreAttributeType& type);
    /// The attribute's type as the user sees it; differs where a type is shown as another.
    virtual QorErrorCode getUIAttributeType(long attribute, QorCoreAttributeType& type);

    /// Objects of the class in the model, with those of its subclasses when asked for. O(result).
    virtual QorErrorCode getAllInstancesOfClassAndSubClassInModel(long model, long cls, ISortedSet<long>& objects,
                                                                  bool withSubclasses);

    // What an identifier stands for.
    virtual bool isClass(long identifier);
    virtual bool isRelationClass(long identifier);
    virtual bool isRelationInstance(long identifier);
};
