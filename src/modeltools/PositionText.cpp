// SPDX-License-Identifier: Apache-2.0
#include "modeltools/PositionText.h"

#include <cctype>

#include "platform/QorKexParser.h"

namespace qor::modeltools {

namespace {

constexpr std::string_view kWidth = "w";
constexpr std::string_view kHeight = "h";
constexpr std::string_view kUnit = "cm";

bool isKeyCharacter(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '_'; }

/// Where the text behind "w:" or "h:" begins. Only a key counts, not the end of a longer one, nor what stands in a
/// string or a comment.
std::size_t behindMarker(std::string_view text, std::string_view key) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '"') {
            at = text.find('"', at + 1);
        } else if (text[at] == '#') {
            at = text.find_first_of("\r\n", at);
        } else if (text.substr(at, key.size()) == key && text.substr(at + key.size(), 1) == ":" &&
                   (at == 0 || !isKeyCharacter(text[at - 1]))) {
            return at + key.size() + 1;
        }
        if (at == std::string_view::npos) break;
    }
    return std::string_view::npos;
}

/// True also when there is nothing to write. Everything up to the next unit is replaced, whatever it is.
bool replaceSide(std::string& text, std::string_view key, const std::optional<long>& side) {
    if (!side) return true;
    const std::size_t begin = behindMarker(text, key);
    if (begin == std::string::npos) return false;
    const std::size_t unit = text.find(kUnit, begin);
    if (unit == std::string::npos) return false;
    text.replace(begin, unit + kUnit.size() - begin, QorKexParser::GetKexTextOfTMMValue(*side).view());
    return true;
}

bool readSide(const QorKexParser& parser, std::string_view key, std::optional<long>& side) {
    if (!parser.IsContained(key)) return true;
    side = parser.GetValueTMM(key);
    return *side < 0;  // not negative is a time, or no number at all
}

}  // namespace

std::optional<ObjectSize> sizeIn(std::string_view position) {
    QorKexParser parser(SV::String(position), "Position");
    if (parser.Parse() != 0) return std::nullopt;
    ObjectSize size;
    if (!parser.SetCurElemIndex(0)) return size;
    if (!readSide(parser, kWidth, size.width) || !readSide(parser, kHeight, size.height)) return std::nullopt;
    return size;
}

std::optional<std::string> withSize(std::string position, const ObjectSize& size) {
    // Each side's place is searched when its turn comes: replacing the height may move the width.
    if (size.width && behindMarker(position, kWidth) == std::string::npos) return std::nullopt;
    if (!replaceSide(position, kHeight, size.height) || !replaceSide(position, kWidth, size.width)) return std::nullopt;
    return position;
}

}  // namespace qor::modeltools
