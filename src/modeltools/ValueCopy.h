// SPDX-License-Identifier: Apache-2.0
// How conversion and transfer read and write values of any type.
#pragma once
#include <vector>

#include "frame/RepositoryLookup.h"
#include "platform/QorErrorCode.h"
#include "platform/QorOwnedText.h"

namespace qor::modeltools {

/// An object, or a record row, in a model.
struct ValuePlace {
    long model = -1;
    long owner = -1;
    long attribute = -1;
};

/// The value as text; NoValue when there is none. The defaults of a class count.
[[nodiscard]] QorErrorCode readValue(long owner, long attribute, QorOwnedText& text);
/// The same, but no value is the empty text.
[[nodiscard]] QorErrorCode readValueOrEmpty(long owner, long attribute, QorOwnedText& text);

/// What becomes of references whose text cannot be read.
enum class UnreadableReferences { Refused, LeftOut };

/// Puts references, given as text, in place of those that stand there.
[[nodiscard]] QorErrorCode writeReferences(const ValuePlace& to, const char* text, UnreadableReferences unreadable);

/// What the notebook of a table's record class shows, in its order.
[[nodiscard]] QorErrorCode readColumns(long table, std::vector<frame::ShownAttribute>& columns);

/// Deletes all rows, the last first, with the platform's automatic executions held: they must not see a table that is
/// half gone.
[[nodiscard]] QorErrorCode deleteRows(const ValuePlace& table);

}  // namespace qor::modeltools
