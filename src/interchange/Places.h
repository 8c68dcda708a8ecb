// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "interchange/QorImport.h"
#include "interchange/TextArena.h"
#include "interchange/Tree.h"

namespace qor::interchange {

/// Where a keyword text was written, so that places in it can be told in terms of the file.
struct TextPlace {
    Mark first;                 ///< of its first byte
    std::uint32_t indent = 0;   ///< what its further lines are indented by in the file
    bool lineByLine = false;    ///< its lines are the file's lines
    bool exactOnFirst = false;  ///< columns on its first line are the file's, moved by `first`
};

/// Of the text of a node.
[[nodiscard]] TextPlace textPlaceOf(const Tree& tree, NodeId node);
/// The place in the file of a line and column (from 1; line 0 means the whole text) of the text; its beginning where
/// the file does not show the text as it is.
[[nodiscard]] Mark markInText(const TextPlace& place, std::uint32_t line, std::uint32_t column);

/// What a parser says about a keyword text, for people who see the place in the file beside it: without the place in
/// the text in front ("line 3, column 1: "), and with the second place that it may end with ("already has the key ...,
/// in line 2, column 1") told as the file's. Places stay as they are where the file does not show the text as it is.
[[nodiscard]] std::string messageInFile(std::string_view message, const TextPlace& place);

/// Where things were written: 16 bytes for an object or relation and its identifier in the file, lookups O(log n).
class Places {
public:
    /// Of things to come; answers the file's number.
    std::uint32_t beginFile(std::string name);
    void add(QorIdentifier thing, Mark mark, std::string_view sourceId);
    void addText(QorIdentifier owner, QorIdentifier attribute, const TextPlace& place);
    /// Forgets what was added since the last beginFile.
    void forgetFile();

    [[nodiscard]] QorFilePlace placeOf(QorIdentifier thing) const;
    [[nodiscard]] std::string_view sourceIdOf(QorIdentifier thing) const;
    [[nodiscard]] QorFilePlace placeInText(QorIdentifier owner, QorIdentifier attribute, QorKexPosition position) const;
    [[nodiscard]] std::string messageInFile(QorIdentifier owner, QorIdentifier attribute,
                                            std::string_view message) const;

private:
    struct Entry {
        QorIdentifier thing;
        std::uint32_t line;
        std::uint32_t column;
        TextArena::Ref sourceId;  // text with a zero byte behind it
    };
    struct File {
        std::string name;
        std::size_t firstEntry;
    };
    struct FileText {
        std::uint32_t file;
        TextPlace place;
    };
    static constexpr TextArena::Ref kNoText = 0xFFFFFFFF;

    [[nodiscard]] const Entry* find(QorIdentifier thing) const;
    [[nodiscard]] const Entry* find(QorIdentifier thing, std::size_t begin, std::size_t end) const;

    std::vector<File> _files;
    std::vector<Entry> _entries;  // ascending within a file
    bool _ascending = true;       // over all files
    std::map<std::pair<QorIdentifier, QorIdentifier>, FileText> _fileTexts;
    TextArena _texts;
};

}  // namespace qor::interchange
