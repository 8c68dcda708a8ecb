// SPDX-License-Identifier: Apache-2.0
#include "modeltools/NamingRule.h"

#include "frame/RepositoryLookup.h"
#include "modeltools/messages.h"
#include "platform/QorMessage.h"

namespace qor::modeltools {

namespace {

constexpr std::string_view kFormatKey = "format";
constexpr std::string_view kProfileAttributeKey = "attrprofattr";

}  // namespace

NamingRuleFault readNamingRule(QorKexParser& parser, NamingRule& rule) {
    if (parser.Parse() != 0) return NamingRuleFault::Syntax;
    if (parser.GetElemCount() != 1) return NamingRuleFault::ElementCount;
    rule.sourceName = parser.GetStrValue(kSourceKey);
    if (rule.sourceName.IsEmpty()) return NamingRuleFault::NoSource;
    const auto source = frame::findAttribute(rule.cls, rule.sourceName);
    if (!source) return NamingRuleFault::UnknownSource;
    rule.source = *source;
    rule.format = parser.GetStrValue(kFormatKey);
    rule.profileAttribute = parser.GetStrValue(kProfileAttributeKey);
    return NamingRuleFault::None;
}

SV::String textOf(NamingRuleFault fault, const QorKexParser& parser, const NamingRule& rule) {
    switch (fault) {
        case NamingRuleFault::None:
            return {};
        case NamingRuleFault::Syntax:
            return parser.GetErrorText();
        // Editors of libraries look for these two texts, so they stay what they are in every language.
        case NamingRuleFault::ElementCount:
            return "aParser.GetElemCount() != 1";
        case NamingRuleFault::NoSource:
            return "!aSrcAttrName.Len()";
        case NamingRuleFault::UnknownSource:
            return Qor_Message(message::unknownSourceAttribute,
                               {{"%classname", rule.className.view()}, {"%attrname", rule.sourceName.view()}});
    }
    return {};
}

}  // namespace qor::modeltools
