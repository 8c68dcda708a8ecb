// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"

/// What a host offers for attribute profiles. Every default refuses, with -1.
class QOR_API QorAttributeProfileService {
public:
    virtual ~QorAttributeProfileService();
    /// The profile class that an attribute-profile reference attribute may refer to.
    virtual QorErrorCode allowedProfileClass(long attribute, long& profileClass);
};

class QOR_API QorCoreMM_AttributeProfiles {
public:
    static QorCoreMM_AttributeProfiles& Instance() noexcept;
    QorErrorCode getAllowedAttrProfClassOfAttribute(long attribute, long& profileClass) const noexcept;
};

class QOR_API QorAttrProfRefDomainContainer {
public:
    /// The class that an attribute-profile attribute refers to.
    static QorErrorCode GetReferencedClassOfAttribute(long attribute, long& cls) noexcept;
};
