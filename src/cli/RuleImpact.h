// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "embedded/QorRepositoryReader.h"

namespace qor::cli {

/// A rule by names, the same in two libraries.
struct RuleName {
    std::string cls;
    std::string relation;    ///< empty for a limit of the class itself
    std::string otherClass;  ///< empty when the rule names none
    std::string key;

    friend auto operator<=>(const RuleName&, const RuleName&) = default;
};

/// The rules of the current library, and which objects of some models break them.
class RuleBreakers {
public:
    /// The library's rules must be in force.
    explicit RuleBreakers(const QorRepositoryReader& reader);

    /// False when the repository failed.
    [[nodiscard]] bool addModel(const std::string& file, QorIdentifier model);

    /// Model, with its file, and object.
    using Subject = std::pair<std::string, std::string>;
    struct Rule {
        std::optional<std::uint32_t> limit;  ///< none: the library has no such rule
        std::set<Subject> subjects;
    };
    [[nodiscard]] const std::map<RuleName, Rule>& rules() const { return _rules; }

private:
    [[nodiscard]] RuleName nameOf(const QorCardinalityRule& rule) const;
    [[nodiscard]] std::string nameOfSubject(const QorCardinalityBreach& breach) const;

    const QorRepositoryReader& _reader;
    std::map<RuleName, Rule> _rules;
};

/// What becomes of some models when one library takes the place of another, at one rule.
struct RuleImpact {
    struct Count {
        std::uint64_t models = 0;
        std::uint64_t objects = 0;
    };
    RuleName rule;
    std::optional<std::uint32_t> from;
    std::optional<std::uint32_t> to;
    Count broken;  ///< that break the rule now and did not before
    Count mended;  ///< the reverse
};

/// Rules that changed, and rules of which the breaches changed, by name.
[[nodiscard]] std::vector<RuleImpact> impactsOf(const RuleBreakers& before, const RuleBreakers& after);

}  // namespace qor::cli
