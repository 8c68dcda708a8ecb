// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <set>
#include <tuple>

#include "platform/ISortedSet.h"
#include "platform/QorSourceInterRefContainer.h"
#include "platform/SvString.h"

namespace qor::simmap {

/// The objects that references of some models lead to. References name model type, model, class and object, and mean
/// whatever version of the model is there.
class ReferredObjects {
public:
    explicit ReferredObjects(const ISortedSet<long>& sources);

    [[nodiscard]] bool contain(long model, long cls, const SV::String& name);

private:
    using Place = std::pair<unsigned long, SV::String>;  ///< number of the model's type, and its name
    using Target = std::tuple<Place, SV::String, SV::String>;

    [[nodiscard]] unsigned long typeNumber(const SV::String& name);
    [[nodiscard]] const Place& placeOf(long model);

    std::set<Target> _targets;
    std::map<SV::String, unsigned long> _types;
    std::map<long, Place> _places;
    std::map<long, SV::String> _classes;
};

}  // namespace qor::simmap
