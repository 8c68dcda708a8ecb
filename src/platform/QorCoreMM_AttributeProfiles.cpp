// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreMM_AttributeProfiles.h"

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"

QorAttributeProfileService::~QorAttributeProfileService() = default;

QorErrorCode QorAttributeProfileService::allowedProfileClass(long, long& profileClass) {
    profileClass = -1;
    return Qor_NotInstalled("QorAttributeProfileService::allowedProfileClass");
}

using qor::platform::installed;

namespace {

QorErrorCode allowedProfileClass(long attribute, long& profileClass) noexcept {
    return Qor_Guarded("attrprof", QorErrorCode::Broken, [&] {
        return installed(&QorHost::attributeProfiles).allowedProfileClass(attribute, profileClass);
    });
}

}  // namespace

QorCoreMM_AttributeProfiles& QorCoreMM_AttributeProfiles::Instance() noexcept {
    static QorCoreMM_AttributeProfiles instance;
    return instance;
}

QorErrorCode QorCoreMM_AttributeProfiles::getAllowedAttrProfClassOfAttribute(long attribute,
                                                                             long& profileClass) const noexcept {
    return allowedProfileClass(attribute, profileClass);
}

QorErrorCode QorAttrProfRefDomainContainer::GetReferencedClassOfAttribute(long attribute, long& cls) noexcept {
    return allowedProfileClass(attribute, cls);
}
