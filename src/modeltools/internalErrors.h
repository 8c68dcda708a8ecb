// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/displayErrorMessage.h"

/// Reports of internal errors carry a source name and a line number that stay what they are, wherever the code moves.
namespace qor::modeltools {

inline constexpr const char* kNamingSource = "anamegen";
inline constexpr const char* kHierarchySource = "ahierman";

enum class NamingLine : long {
    ClassText = 104,  ///< the name of a class or its text cannot be read
    ElementCount = 116,
    NoSource = 125,
    SourceType = 145,
    InstanceName = 158,
    References = 176,
    ProfileAttribute = 227,
    ProfileClass = 243,
    SourceValue = 251,
    LookUp = 281,
    Rename = 298,
    Remember = 306,
    PastedText = 352,
};

inline void reportInternalError(NamingLine line) noexcept {
    displayErrorMessage(kNamingSource, static_cast<long>(line));
}

}  // namespace qor::modeltools
