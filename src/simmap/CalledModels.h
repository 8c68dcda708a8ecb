// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "platform/SvString.h"

namespace qor::simmap {

/// Where objects of the class say which model they call: the class's hierarchy attribute when it is one with
/// references, else every such attribute that its property sheet shows.
[[nodiscard]] std::vector<long> callingAttributes(long cls);

/// What an object calls: references to objects are no calls, whatever model these lie in.
struct CalledModels {
    bool any = false;           ///< it refers to a model
    bool found = false;         ///< at least one of those models exists
    SV::String missing;         ///< name of one that does not
    long missingAttribute = 0;  ///< through which it is referred to
};
[[nodiscard]] CalledModels calledModels(long model, long object, const std::vector<long>& attributes);

}  // namespace qor::simmap
