// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"

/// What a host offers for attribute profiles. The output is -1 after a failure. Every default refuses.
class QOR_API QorAttributeProfileService {
public:
    virtual ~QorAttributeProfileService();
    /// The profile class that an attribute-profile reference attribute may refer to. NotFound when the identifier is
    /// no such attribute.
    virtual QorErrorCode allowedProfileClass(long attribute, long& profileClass);
};

/// The repository's queries about attribute profiles: sets of values that several objects refer to.
class QOR_API QorCoreMM_AttributeProfiles {
public:
    static QorCoreMM_AttributeProfiles& Instance() noexcept;
    /// As QorAttributeProfileService::allowedProfileClass.
    QorErrorCode getAllowedAttrProfClassOfAttribute(long attribute, long& profileClass) const noexcept;
};

/// The domain of an attribute-profile reference attribute.
class QOR_API QorAttrProfRefDomainContainer {
public:
    /// The class that the attribute refers to: the same answer as getAllowedAttrProfClassOfAttribute.
    static QorErrorCode GetReferencedClassOfAttribute(long attribute, long& cls) noexcept;
};
