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

inline constexpr const char* kConversionSource = "ahaconv";
inline constexpr const char* kTransferSource = "atransf";

enum class ConversionLine : long {
    Library = 61,  ///< the class belongs to neither part of the loaded library
    Attribute = 74,
    Text = 83,
    AttributeType = 142,
    RecordClass = 151,
    ProfileClass = 160,
};

inline void reportInternalError(ConversionLine line) noexcept {
    displayErrorMessage(kConversionSource, static_cast<long>(line));
}

inline void reportInternalError(NamingLine line) noexcept {
    displayErrorMessage(kNamingSource, static_cast<long>(line));
}

}  // namespace qor::modeltools
