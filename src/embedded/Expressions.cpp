// SPDX-License-Identifier: Apache-2.0
#include "embedded/Expressions.h"

#include <algorithm>
#include <map>

#include "embedded/ValueCheck.h"
#include "embedded/expressions/ExpressionParser.h"

namespace qor::embedded {

namespace {

using Outcome = std::variant<ExpressionValue, ExpressionFault>;

Outcome fault(std::string text) { return ExpressionFault{0, std::move(text)}; }

// The attributes of one instance. What an expression among them came to is kept, so that two that name each next one
// twice are not worked out 2^n times.
class InstanceAttributes final : public ExpressionContext {
public:
    InstanceAttributes(const Repository& repository, QorIdentifier instance)
        : _repository(repository), _instance(instance) {}

    Outcome attribute(std::string_view name) override {
        const QorIdentifier cls = _repository.models().classOfInstance(_instance);
        const AttributeRow* const row = _repository.attributeOf(_instance, _repository.meta().findAttribute(cls, name));
        if (row == nullptr) return fault("there is no attribute " + quoted(name));
        if (row->type == QorCoreAttributeType::Record)
            return fault("the attribute " + quoted(name) + " holds rows and no value");
        if (row->type == QorCoreAttributeType::Expression) return expression(*row);
        const auto text = _repository.value(_instance, *row, true);
        if (!text) return ExpressionValue();
        const bool isNumber = row->type == QorCoreAttributeType::Integer || row->type == QorCoreAttributeType::Floating;
        // What is stored is well formed.
        return isNumber ? ExpressionValue(floatingFrom(*text).value_or(0)) : ExpressionValue::borrowed(*text);
    }

    Outcome expression(const AttributeRow& row) {
        if (const auto known = _results.find(row.id); known != _results.end())
            return known->second.isNumber() ? ExpressionValue(known->second.number())
                                            : ExpressionValue::borrowed(known->second.text());
        if (std::find(_open.begin(), _open.end(), row.id) != _open.end())
            return fault("the attribute " + quoted(_repository.text(row.name)) + " needs its own result");
        if (_open.size() == kDeepestExpressionChain)
            return fault("more than " + std::to_string(kDeepestExpressionChain) +
                         " expressions stand behind one another");
        const auto text = _repository.value(_instance, row, true);
        if (!text || text->empty()) return ExpressionValue();

        auto parsed = parseExpression(*text);
        if (auto* wrong = std::get_if<ExpressionFault>(&parsed)) return std::move(*wrong);
        _open.push_back(row.id);
        Outcome outcome = runExpression(std::get<ExpressionCode>(parsed), *this);
        _open.pop_back();
        if (auto* value = std::get_if<ExpressionValue>(&outcome)) return keep(row.id, std::move(*value));
        if (!_open.empty()) {
            std::string& why = std::get<ExpressionFault>(outcome).text;
            why = "in the attribute " + quoted(_repository.text(row.name)) + ": " + why;
        }
        return outcome;
    }

private:
    static std::string quoted(std::string_view name) { return "\"" + std::string(name) + "\""; }

    // A text of the expression itself goes with the expression, so it is copied.
    Outcome keep(QorIdentifier attribute, ExpressionValue value) {
        ExpressionValue& kept = _results[attribute];
        kept = value.isNumber() ? std::move(value) : ExpressionValue(std::move(value).intoText());
        return kept.isNumber() ? ExpressionValue(kept.number()) : ExpressionValue::borrowed(kept.text());
    }

    const Repository& _repository;
    QorIdentifier _instance;
    std::map<QorIdentifier, ExpressionValue> _results;
    std::vector<QorIdentifier> _open;
};

}  // namespace

std::variant<std::string, ExpressionFault> expressionResult(const Repository& repository, QorIdentifier instance,
                                                            const AttributeRow& attribute) {
    InstanceAttributes attributes(repository, instance);
    auto outcome = attributes.expression(attribute);
    if (auto* wrong = std::get_if<ExpressionFault>(&outcome)) return std::move(*wrong);
    return std::get<ExpressionValue>(std::move(outcome)).intoText();
}

}  // namespace qor::embedded
