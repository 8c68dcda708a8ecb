// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/displayErrorMessage.h"

/// Reports of internal errors carry a source name and a line number that stay what they are, wherever the code moves.
namespace qor::simmap {

inline constexpr const char* kMappingSource = "asimmap";
inline constexpr const char* kTextSource = "asimtext";
inline constexpr const char* kResultSource = "asimresm";

enum class MappingLine : long {
    AttributeName = 609,
    LibraryName = 618,
    ActionType = 1091,
    BusinessProcessClasses = 1149,
    BusinessProcessSubclasses = 1202,
    WorkingEnvironmentClasses = 1230,
    WorkingEnvironmentSubclasses = 1282,
};

enum class TextLine : long { NoLibrary = 322, Text = 335, AttributeName = 439, LibraryName = 444 };

inline void reportInternalError(MappingLine line) noexcept {
    displayErrorMessage(kMappingSource, static_cast<long>(line));
}
inline void reportInternalError(TextLine line) noexcept { displayErrorMessage(kTextSource, static_cast<long>(line)); }

}  // namespace qor::simmap
