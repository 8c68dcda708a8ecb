// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Journal.h"
#include "embedded/NameIndex.h"
#include "embedded/TextArena.h"
#include "embedded/ThingTable.h"
#include "embedded/ValueTable.h"

namespace qor::embedded {

// What all parts of a repository share: one space of identifiers, of texts, of names and of values, and
// the journal of what is done to them.
struct Store {
    ThingTable things;
    TextArena texts;
    NameIndex names;
    ValueTable values;
    Journal journal;
};

// A text that is released again unless it is kept.
class NewText {
public:
    NewText(TextArena& texts, std::string_view text) : _texts(texts), _ref(texts.add(text)) {}
    NewText(const NewText&) = delete;
    NewText& operator=(const NewText&) = delete;
    ~NewText() { _texts.release(_ref); }
    [[nodiscard]] TextRef keep() noexcept {
        const TextRef ref = _ref;
        _ref = 0;
        return ref;
    }

private:
    TextArena& _texts;
    TextRef _ref;
};

// Whether a text may be a name.
[[nodiscard]] inline QorBuildError checkName(std::string_view name) {
    constexpr std::size_t kLongestName = 65535;
    if (name.empty()) return QorBuildError::EmptyName;
    if (name.size() > kLongestName || name.find('\0') != std::string_view::npos) return QorBuildError::NameRefused;
    return QorBuildError::None;
}

[[nodiscard]] inline QorBuildResult refused(QorBuildError error, QorIdentifier id = QorNoIdentifier) {
    return {id, error};
}

}  // namespace qor::embedded
