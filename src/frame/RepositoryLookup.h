// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <vector>

#include "platform/QorErrorCode.h"
#include "platform/QorIdentifier.h"
#include "platform/SvString.h"

/// What readers of keyword texts ask the repository for.
namespace qor::frame {

// By name. Nothing for a name that is not known, whatever the repository's reason; a name with a zero byte is none.
[[nodiscard]] std::optional<QorIdentifier> findClass(long library, const SV::String& name);
[[nodiscard]] std::optional<QorIdentifier> findAttribute(long cls, const SV::String& name);

/// The text in an attribute of an object, class or library; empty when there is none, nothing when the repository
/// fails.
[[nodiscard]] std::optional<SV::String> readText(long owner, long attribute);

/// Nothing when the repository fails.
[[nodiscard]] std::optional<SV::String> nameOfAttribute(long attribute);

/// An attribute that the notebook of a class or record class shows.
struct ShownAttribute {
    SV::String name;
    long id = QorNoIdentifier;
};
/// All of a notebook, in its order. The first code but Ok is returned.
[[nodiscard]] QorErrorCode readNotebook(long cls, std::vector<ShownAttribute>& attributes);

}  // namespace qor::frame
