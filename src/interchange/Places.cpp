// SPDX-License-Identifier: Apache-2.0
#include "interchange/Places.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "interchange/Wording.h"

namespace qor::interchange {

TextPlace textPlaceOf(const Tree& tree, NodeId node) {
    const Mark mark = tree.mark(node);
    switch (tree.kind(node)) {
        case NodeKind::Block: {
            const std::uint32_t indent = tree.blockIndent(node);
            return {{mark.line + 1, indent + 1}, indent, true, true};
        }
        case NodeKind::Plain:
            return {mark, 0, false, true};
        case NodeKind::Quoted:
            return {{mark.line, mark.column + 1}, 0, false, true};
        default:
            return {mark, 0, false, false};
    }
}

Mark markInText(const TextPlace& place, std::uint32_t line, std::uint32_t column) {
    if (line == 1 && place.exactOnFirst) return {place.first.line, place.first.column + std::max(column, 1U) - 1};
    if (line > 1 && place.lineByLine) return {place.first.line + line - 1, place.indent + std::max(column, 1U)};
    return place.first;
}

namespace {

/// "line 2, column 1" at the beginning of the text: how many bytes that is, 0 when there is nothing of the kind.
std::size_t readPosition(std::string_view text, QorKexPosition& position) {
    constexpr std::string_view kLine = "line ";
    constexpr std::string_view kColumn = ", column ";
    const char* const end = text.data() + text.size();
    if (!text.starts_with(kLine)) return 0;
    const auto line = std::from_chars(text.data() + kLine.size(), end, position.line);
    if (line.ec != std::errc() || !std::string_view(line.ptr, end).starts_with(kColumn)) return 0;
    const auto column = std::from_chars(line.ptr + kColumn.size(), end, position.column);
    return column.ec == std::errc() ? static_cast<std::size_t>(column.ptr - text.data()) : 0;
}

bool showsLine(const TextPlace& place, std::uint32_t line) { return line == 1 ? place.exactOnFirst : place.lineByLine; }

}  // namespace

std::string messageInFile(std::string_view message, const TextPlace& place) {
    QorKexPosition position;
    const std::size_t length = readPosition(message, position);
    if (length != 0 && message.substr(length).starts_with(": ") && showsLine(place, position.line))
        message.remove_prefix(length + 2);

    // Nothing else that a parser says ends with a place: names and texts end with a quotation mark.
    constexpr std::string_view kBefore = ", in ";
    const std::string_view lines = message.substr(message.find_last_not_of('\n') + 1);
    message.remove_suffix(lines.size());
    const std::size_t at = message.rfind(kBefore);
    if (at == std::string_view::npos) return concat({message, lines});
    const std::string_view second = message.substr(at + kBefore.size());
    if (second.empty() || readPosition(second, position) != second.size()) return concat({message, lines});
    if (!showsLine(place, position.line)) return concat({message, " of the text", lines});
    const Mark mark = markInText(place, position.line, position.column);
    return concat({message.substr(0, at), kBefore, "line ", std::to_string(mark.line), ", column ",
                   std::to_string(mark.column), lines});
}

std::uint32_t Places::beginFile(std::string name) {
    _files.push_back({std::move(name), _entries.size()});
    return static_cast<std::uint32_t>(_files.size() - 1);
}

void Places::add(QorIdentifier thing, Mark mark, std::string_view sourceId) {
    Entry entry{thing, mark.line, mark.column, kNoText};
    if (!sourceId.empty()) {
        std::string text(sourceId.substr(0, sourceId.find('\0')));
        text.push_back('\0');
        entry.sourceId = _texts.add(text);
    }
    _ascending = _ascending && (_entries.empty() || _entries.back().thing < thing);
    _entries.push_back(entry);
}

void Places::addText(QorIdentifier owner, QorIdentifier attribute, const TextPlace& place) {
    _fileTexts[{owner, attribute}] = {static_cast<std::uint32_t>(_files.size() - 1), place};
}

void Places::forgetFile() {
    _entries.resize(_files.back().firstEntry);
    const auto file = static_cast<std::uint32_t>(_files.size() - 1);
    std::erase_if(_fileTexts, [file](const auto& entry) { return entry.second.file == file; });
}

const Places::Entry* Places::find(QorIdentifier thing, std::size_t begin, std::size_t end) const {
    const Entry* const last = _entries.data() + end;
    const Entry* const found = std::lower_bound(_entries.data() + begin, last, thing,
                                                [](const Entry& entry, QorIdentifier id) { return entry.thing < id; });
    return found != last && found->thing == thing ? found : nullptr;
}

// A repository may hand an identifier out again after its thing was removed; then the last file that knows it is right.
const Places::Entry* Places::find(QorIdentifier thing) const {
    if (_ascending) return find(thing, 0, _entries.size());
    const Entry* found = nullptr;
    std::size_t end = _entries.size();
    for (std::size_t file = _files.size(); file-- > 0 && found == nullptr; end = _files[file].firstEntry)
        found = find(thing, _files[file].firstEntry, end);
    return found;
}

QorFilePlace Places::placeOf(QorIdentifier thing) const {
    const Entry* entry = find(thing);
    if (entry == nullptr) return {};
    const auto index = static_cast<std::size_t>(entry - _entries.data());
    const auto behind = std::upper_bound(_files.begin(), _files.end(), index,
                                         [](std::size_t wanted, const File& file) { return wanted < file.firstEntry; });
    return {std::prev(behind)->name, entry->line, entry->column};
}

std::string_view Places::sourceIdOf(QorIdentifier thing) const {
    const Entry* entry = find(thing);
    return entry == nullptr || entry->sourceId == kNoText ? std::string_view{} : _texts.at(entry->sourceId);
}

QorFilePlace Places::placeInText(QorIdentifier owner, QorIdentifier attribute, QorKexPosition position) const {
    const auto found = _fileTexts.find({owner, attribute});
    if (found == _fileTexts.end()) return {};
    const Mark mark = markInText(found->second.place, position.line, position.column);
    return {_files[found->second.file].name, mark.line, mark.column};
}

std::string Places::messageInFile(QorIdentifier owner, QorIdentifier attribute, std::string_view message) const {
    const auto found = _fileTexts.find({owner, attribute});
    return found == _fileTexts.end() ? std::string(message) : interchange::messageInFile(message, found->second.place);
}

}  // namespace qor::interchange
