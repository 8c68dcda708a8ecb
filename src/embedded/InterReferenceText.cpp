// SPDX-License-Identifier: Apache-2.0
#include "embedded/InterReferenceText.h"

#include <new>

#include "embedded/KeywordText.h"

namespace qor::embedded {

namespace {

constexpr std::string_view kModel = "MODEL";
constexpr std::string_view kObject = "OBJECT";
constexpr std::string_view kType = "type";
constexpr std::string_view kClass = "class";
constexpr std::string_view kModelKey = "model";

std::string_view textOf(std::optional<std::string_view> text) { return text.value_or(std::string_view()); }

std::optional<QorInterModRefTarget> currentReference(const QorKexParser& parser, bool toModels) {
    if (parser.GetCurElemNameView() != (toModels ? kModel : kObject)) return std::nullopt;
    const std::string_view own = textOf(parser.GetStrView());
    const std::string_view model = toModels ? own : textOf(parser.GetStrView(kModelKey));
    const std::string_view type = textOf(parser.GetStrView(kType));
    const std::string_view cls = textOf(parser.GetStrView(kClass));
    if (own.empty() || model.empty() || type.empty() || (!toModels && cls.empty())) return std::nullopt;
    QorInterModRefTarget target;
    target.modelTypeName = SV::String(type);
    target.modelName = SV::String(model);
    if (toModels) return target;
    target.objectName = SV::String(own);
    target.className = SV::String(cls);
    return target;
}

// Only a lack of memory makes a text without quotes.
std::string quoted(const SV::String& value) {
    const SV::String text = QorKexParser::GetKexTextOfStrValue(value.view());
    if (text.IsEmpty()) throw std::bad_alloc();
    return std::string(text.view());
}

void appendKey(std::string& text, std::string_view key, const SV::String& value) {
    text += ' ';
    text += key;
    text += ": ";
    text += quoted(value);
}

}  // namespace

std::optional<std::vector<QorInterModRefTarget>> parseReferences(std::string_view text, bool toModels) {
    QorKexParser parser{SV::String(text), SV::String()};
    if (!parsed(parser)) return std::nullopt;
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
        text += quoted(toModels ? target.modelName : target.objectName);
        if (!toModels) {
            appendKey(text, kClass, target.className);
            appendKey(text, kModelKey, target.modelName);
        }
        appendKey(text, kType, target.modelTypeName);
    }
    return text;
}

}  // namespace qor::embedded
