// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string_view>

#include "platform/QorCoreVar.h"
#include "platform/SvString.h"

/// Result texts as libraries before version 4.00.00 have them.
///
/// The text is a row of entries, with ";" between them and optional white space around them:
///
///     text    =  record { ";" record } [ ";" ]
///     record  =  "@" holder-class ";" attribute ... ";" attribute        a holder with its fixed attributes
///             |                                                         an empty entry: this holder is left out
///             |  source-class ";" from-attribute ";" result-attribute    belongs to the holder before it
///
/// Holders stand in the order of their kinds: process start and activity in the business-process part, person in the
/// working-environment part. A holder names all its fixed attributes in the order of their keys (docs/simulation.md);
/// an empty entry names none. So a text begins with "@", which opens the first holder, or with ";", which leaves the
/// first holder out. Anything else, such as a source class before any holder, too many holders or too few entries, is
/// not in this form.
namespace qor::simmap {

/// The text begins as one in the old form.
[[nodiscard]] bool isOldResultText(std::string_view text);

/// The text in the current form; nothing when it is not in the old form.
[[nodiscard]] std::optional<SV::String> rewriteOldResultText(std::string_view text, QorCoreVarType part);

/// Versions compare by their numbers: "10.00.00" is above "4.00.00". Missing numbers count as 0.
[[nodiscard]] bool isVersionBelow(std::string_view version, std::string_view bound);

}  // namespace qor::simmap
