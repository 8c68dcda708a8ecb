// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>

#include "modeltools/NumberSearch.h"
#include "platform/ISortedSet.h"
#include "platform/QorErrorCode.h"
#include "platform/SvString.h"

namespace qor::modeltools {

/// The names and values that a run works on: the repository's own (RepositoryGround.h), or what they would become
/// (PlannedGround.h).
class NamingGround {
public:
    virtual ~NamingGround();

    /// Text in an attribute of an object; empty when it has none, nothing when it cannot be read.
    [[nodiscard]] virtual std::optional<SV::String> textOf(long object, long attribute) = 0;
    /// Value of an attribute of any type as text, the class's default included; otherwise as `textOf`.
    [[nodiscard]] virtual std::optional<SV::String> valueOf(long object, long attribute) = 0;
    /// Who has the name among the objects of these classes: the lowest identifier, NotFound when nobody has.
    virtual QorErrorCode holderOf(const ISortedSet<long>& classes, const std::string& name, QorIdentifier& holder) = 0;
    /// Tells `numbers` of other names that change on the way.
    virtual QorErrorCode rename(long object, const std::string& name, NumberSearch& numbers) = 0;
    virtual QorErrorCode setText(long object, long attribute, const std::string& text) = 0;
};

/// The class and everything below it; the class alone when the repository does not tell.
[[nodiscard]] ISortedSet<long> withSubclasses(long cls);

}  // namespace qor::modeltools
