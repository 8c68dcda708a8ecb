// SPDX-License-Identifier: Apache-2.0
#include "embedded/Editing.h"

#include "embedded/Answers.h"
#include "embedded/Expressions.h"
#include "embedded/InterReferenceText.h"

namespace qor::embedded {

namespace {

constexpr std::string_view kHiddenPrefix = "__";

}  // namespace

Editing::~Editing() = default;

const AttributeRow* Editing::referenceAttribute(long attribute) const {
    const AttributeRow* const row = _repository.meta().attribute(narrow(attribute));
    return row != nullptr && row->type == QorCoreAttributeType::InterReference ? row : nullptr;
}

QorErrorCode Editing::read(const AttributeRow& attribute, std::string_view text, QorInterReferences& references) const {
    auto targets = parseReferences(text, attribute.refersToModels);
    if (!targets) return QorErrorCode::ValueRefused;
    for (QorInterModRefTarget& target : *targets) target.attribute = attribute.id;
    references.targets = std::move(*targets);
    references.toModels = attribute.refersToModels;
    return QorErrorCode::Ok;
}

QorErrorCode Editing::interReferences(long model, long object, long attribute, QorInterReferences& references) {
    references = {};
    return answered([&] {
        const QorIdentifier instance = narrow(object);
        const AttributeRow* const row = referenceAttribute(attribute);
        if (row == nullptr || _repository.attributeOf(instance, row->id) == nullptr ||
            _repository.models().modelOf(instance) != narrow(model))
            return QorErrorCode::NotFound;
        return read(*row, _repository.value(instance, *row, true).value_or(std::string_view()), references);
    });
}

QorErrorCode Editing::parseInterReferences(long attribute, const SV::String& text, QorInterReferences& references) {
    references = {};
    return answered([&] {
        const AttributeRow* const row = referenceAttribute(attribute);
        return row == nullptr ? QorErrorCode::NotFound : read(*row, text.view(), references);
    });
}

QorErrorCode Editing::saveInterReferences(long model, long object, long attribute, const QorInterReferences& references,
                                          bool raiseEvent) {
    return answered([&] {
        const AttributeRow* const row = referenceAttribute(attribute);
        if (row == nullptr) return QorErrorCode::NotFound;
        if (references.toModels != row->refersToModels && !references.targets.empty())
            return QorErrorCode::ValueRefused;
        const std::string text = textOfReferences(references.targets, row->refersToModels);
        return _manager.setAttributeValueAsString(model, object, attribute, text.c_str(), raiseEvent);
    });
}

QorErrorCode Editing::expressionResult(long model, long object, long attribute, SV::String& result) {
    result.Clear();
    return answered([&] {
        const QorIdentifier instance = narrow(object);
        const AttributeRow* const row = _repository.attributeOf(instance, narrow(attribute));
        if (row == nullptr || row->type != QorCoreAttributeType::Expression ||
            _repository.models().modelOf(instance) != narrow(model))
            return QorErrorCode::NotFound;
        const auto text = _repository.value(instance, *row, true);
        if (!text || text->empty()) return QorErrorCode::NoValue;
        auto outcome = embedded::expressionResult(_repository, instance, *row);
        if (std::holds_alternative<ExpressionFault>(outcome)) return QorErrorCode::NotComputable;
        result = SV::String(std::get<std::string>(std::move(outcome)));
        return QorErrorCode::Ok;
    });
}

QorErrorCode Editing::sourceNameOfPastedObject(long model, long object, SV::String& name) {
    name.Clear();
    return answered([&] {
        const QorIdentifier id = narrow(object);
        if (_repository.models().object(id) == nullptr || _repository.models().modelOf(id) != narrow(model))
            return QorErrorCode::NotFound;
        const auto source = _repository.ownValue(id, *_repository.meta().attribute(kPastedFrom));
        if (!source) return QorErrorCode::NotFound;
        name = SV::String(*source);
        return QorErrorCode::Ok;
    });
}

bool Editing::notebookAttribute(long cls, unsigned long position, SV::String& name) {
    name.Clear();
    return Qor_Guarded("embedded", false, [&] {
        for (const QorIdentifier id : _repository.meta().attributesInLine(narrow(cls))) {
            const AttributeRow& row = *_repository.meta().attribute(id);
            const std::string_view its = _repository.text(row.name);
            if (row.level == QorAttributeLevel::Class || its.substr(0, kHiddenPrefix.size()) == kHiddenPrefix) continue;
            if (position-- > 0) continue;
            name = SV::String(its);
            return true;
        }
        return false;
    });
}

}  // namespace qor::embedded
