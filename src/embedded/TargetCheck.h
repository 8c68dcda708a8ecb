// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorRepositoryReader.h"
#include "embedded/Repository.h"

namespace qor::embedded {

// A profile is an object of the profile class or of one below it: of the object's own model, else of the first model
// that has one.
[[nodiscard]] QorIdentifier findProfile(const Repository& repository, QorIdentifier object, QorIdentifier profileClass,
                                        std::string_view name);

// What the references or the profile reference of a value name and what does not exist, in words.
[[nodiscard]] std::vector<std::string> missingTargets(const Repository& repository, QorIdentifier instance,
                                                      const AttributeRow& attribute, std::string_view text);
// Of everything in a model.
[[nodiscard]] std::vector<QorMissingTarget> missingTargetsIn(const Repository& repository, QorIdentifier model);

// Refuses values that name what does not exist. What the same model names already passes all the same: deleting a
// target leaves a broken reference, and that must not hinder editing and copying what holds it.
class TargetCheck {
public:
    explicit TargetCheck(const Repository& repository) : _repository(repository) {}
    // O(text); where something is missing that was not missing when this was last asked, O(model).
    [[nodiscard]] bool mayBeSet(QorIdentifier instance, const AttributeRow& attribute, std::string_view text);

private:
    const Repository& _repository;
    QorIdentifier _model = QorNoIdentifier;
    std::set<std::string> _missing;  // that the model is known to name
};

}  // namespace qor::embedded
