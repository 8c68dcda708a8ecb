// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <vector>

#include "platform/ISortedSet.h"
#include "platform/QorCoreAttributeType.h"
#include "platform/QorErrorCode.h"
#include "platform/SvString.h"

/// What a check of readiness asks the repository. A refusal ends the check by RepositoryFailed: what the repository
/// does not tell must not be reported as missing.
namespace qor::simmap {

struct RepositoryFailed {};

void require(QorErrorCode code);

[[nodiscard]] QorCoreAttributeType typeOf(long attribute);
[[nodiscard]] long classOf(long object);
/// The name of a class, or of an object or model.
[[nodiscard]] SV::String nameOfClass(long cls);
[[nodiscard]] SV::String nameOf(long object);
[[nodiscard]] ISortedSet<long> withSubclasses(long cls);
/// The class and its subclasses, as far as they can have objects.
[[nodiscard]] std::vector<long> instantiableFrom(long cls);
[[nodiscard]] bool hasValue(long object, long attribute);
[[nodiscard]] bool hasRelations(long object);
/// The attributes of that type that the class's property sheet shows.
[[nodiscard]] std::vector<long> shownAttributes(long cls, QorCoreAttributeType type);

/// Attributes that an object may use for something, by its own class: a subclass has more than the class that a
/// definition names.
class AttributesByClass {
public:
    using Find = std::vector<long> (*)(long cls);
    explicit AttributesByClass(Find find) : _find(find) {}

    [[nodiscard]] const std::vector<long>& of(long cls) {
        const auto [known, isNew] = _attributes.try_emplace(cls);
        if (isNew) known->second = _find(cls);
        return known->second;
    }
    /// The class itself when no class from it on has any; else those that can have objects and lack the attributes.
    [[nodiscard]] std::vector<long> lackingFrom(long cls);

private:
    Find _find;
    std::map<long, std::vector<long>> _attributes;
};

}  // namespace qor::simmap
