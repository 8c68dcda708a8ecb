// SPDX-License-Identifier: Apache-2.0
#include "embedded/InterReferenceText.h"

#include "platform/QorKexParser.h"

namespace qor::embedded {

namespace {

constexpr std::string_view kModel = "MODEL";
constexpr std::string_view kObject = "OBJECT";
constexpr std::string_view kType = "type";
constexpr std::string_view kClass = "class";
constexpr std::string_view kModelKey = "model";

std::optional<QorInterModRefTarget> currentReference(const QorKexParser& parser, bool toModels) {
    if (parser.GetCurElemNameView() != (toModels ? kModel : kObject)) return std::nullopt;
    QorInterModRefTarget target;
    target.modelTypeName = parser.GetStrValue(kType);
    if (toModels) {
        target.modelName = parser.GetStrValue();
    } else {
        target.objectName = parser.GetStrValue();
        target.className = parser.GetStrValue(kClass);
        target.modelName = parser.GetStrValue(kModelKey);
        if (target.objectName.IsEmpty() || target.className.IsEmpty()) return std::nullopt;
    }
    if (target.modelName.IsEmpty() || target.modelTypeName.IsEmpty()) return std::nullopt;
    return target;
}

void appendKey(std::string& text, std::string_view key, const SV::String& value) {
    text += ' ';
    text += key;
    text += ": ";
    text += QorKexParser::GetKexTextOfStrValue(value.view()).view();
}

}  // namespace

std::optional<std::vector<QorInterModRefTarget>> parseReferences(std::string_view text, bool toModels) {
    QorKexParser parser{SV::String(text), SV::String()};
    if (parser.Parse() != 0) return std::nullopt;
    std::vector<QorInterModRefTarget> targets;
    targets.reserve(parser.GetElemCount());
    for (unsigned long element = 0; parser.SetCurElemIndex(element); ++element) {
        auto target = currentReference(parser, toModels);
        if (!target) return std::nullopt;
        targets.push_back(std::move(*target));
    }
    return targets;
}

std::string textOfReferences(const std::vector<QorInterModRefTarget>& targets, bool toModels) {
    std::string text;
    for (const QorInterModRefTarget& target : targets) {
        if (!text.empty()) text += '\n';
        text += toModels ? kModel : kObject;
        text += ' ';
        text +=
            QorKexParser::GetKexTextOfStrValue(toModels ? target.modelName.view() : target.objectName.view()).view();
        if (!toModels) {
            appendKey(text, kClass, target.className);
            appendKey(text, kModelKey, target.modelName);
        }
        appendKey(text, kType, target.modelTypeName);
    }
    return text;
}

}  // namespace qor::embedded
