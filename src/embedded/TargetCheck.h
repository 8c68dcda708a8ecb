// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <compare>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorRepositoryReader.h"
#include "embedded/Repository.h"

namespace qor::embedded {

// A profile is an object of the profile class or of one below it: of the object's own model, else of the first model
// that has one. O(models), unless the own model has it.
[[nodiscard]] QorIdentifier findProfile(const Repository& repository, QorIdentifier object, QorIdentifier profileClass,
                                        std::string_view name);

// What a value names: a model, an object in it, or a profile.
struct NamedTarget {
    QorIdentifier profileClass = QorNoIdentifier;  // of a profile, which has no model; its name stands in `object`
    std::string modelType;
    std::string model;
    std::string cls;
    std::string object;  // empty when the model itself is named

    auto operator<=>(const NamedTarget&) const = default;
};

// What the references or the profile reference of a value name and what does not exist.
[[nodiscard]] std::vector<NamedTarget> missingTargets(const Repository& repository, QorIdentifier instance,
                                                      const AttributeRow& attribute, std::string_view text);
// Of everything in a model, in words.
[[nodiscard]] std::vector<QorMissingTarget> missingTargetsIn(const Repository& repository, QorIdentifier model);

// Refuses values that name what does not exist. What the same model names already passes all the same: deleting a
// target leaves a broken reference, and that must not hinder editing and copying what holds it.
class TargetCheck {
public:
    explicit TargetCheck(const Repository& repository) : _repository(repository) {}
    // O(text), with a profile O(models). Where something is missing, also O(values of what names it already); and
    // O(model) where nothing is known to, once after each change of the repository.
    [[nodiscard]] bool mayBeSet(QorIdentifier instance, const AttributeRow& attribute, std::string_view text);

private:
    [[nodiscard]] bool isNamedIn(QorIdentifier model, const NamedTarget& target);
    [[nodiscard]] bool names(QorIdentifier instance, const NamedTarget& target) const;

    const Repository& _repository;
    // Of one model, as of one state of the repository: what it names and is missing, with an object or relation that
    // names it. Later, what that one still names is named still; of anything else nothing is known.
    QorIdentifier _model = QorNoIdentifier;
    std::uint64_t _asOf = 0;
    std::map<NamedTarget, QorIdentifier> _missing;
};

}  // namespace qor::embedded
