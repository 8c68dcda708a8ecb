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

// Control characters, and what else some reader of texts takes for the end of a line: U+0000 to U+001F, U+007F to
// U+009F, U+2028 and U+2029, in UTF-8.
[[nodiscard]] inline bool holdsControlCharacter(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byteAt = [&](std::size_t place) {
            return place < text.size() ? static_cast<unsigned char>(text[place]) : 0U;
        };
        const unsigned byte = byteAt(at);
        if (byte < 0x20 || byte == 0x7F) return true;
        if (byte == 0xC2 && byteAt(at + 1) >= 0x80 && byteAt(at + 1) < 0xA0) return true;
        if (byte == 0xE2 && byteAt(at + 1) == 0x80 && (byteAt(at + 2) & 0xFEU) == 0xA8) return true;
    }
    return false;
}

// Whether a text may be a name.
[[nodiscard]] inline QorBuildError checkName(std::string_view name) {
    constexpr std::size_t kLongestName = 65535;
    if (name.empty()) return QorBuildError::EmptyName;
    if (name.size() > kLongestName || holdsControlCharacter(name)) return QorBuildError::NameRefused;
    return QorBuildError::None;
}

[[nodiscard]] inline QorBuildResult refused(QorBuildError error, QorIdentifier id = QorNoIdentifier) {
    return {id, error};
}

}  // namespace qor::embedded
