// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>

#include "platform/QorCoreAttributeType.h"
#include "platform/QorIdentifier.h"
#include "platform/QorKexParser.h"
#include "platform/SvString.h"

namespace qor::modeltools {

inline constexpr std::string_view kSourceKey = "srcattr";  ///< of the attribute that names come from

/// How the objects of a class get their names.
struct NamingRule {
    long cls = QorNoIdentifier;
    SV::String className;
    SV::String sourceName;
    long source = QorNoIdentifier;  ///< the attribute of that name
    SV::String format;
    SV::String profileAttribute;
};

enum class NamingRuleFault { None, Syntax, ElementCount, NoSource, UnknownSource };

/// Reads the text that the parser holds into the rule, whose class must be set. After a fault the rule holds what was
/// read before it, and the parser stands at the element.
[[nodiscard]] NamingRuleFault readNamingRule(QorKexParser& parser, NamingRule& rule);

/// The fault in words, as somebody who edits the text is to see it.
[[nodiscard]] SV::String textOf(NamingRuleFault fault, const QorKexParser& parser, const NamingRule& rule);

}  // namespace qor::modeltools
