// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <new>
#include <string_view>

#include "platform/QorKexParser.h"

namespace qor::embedded {

// Whether the parser's text is a keyword text. A lack of memory is no fault of the text: std::bad_alloc is thrown.
[[nodiscard]] inline bool parsed(QorKexParser& parser) {
    if (parser.Parse() == 0) return true;
    if (parser.GetErrorPosition().line == 0) throw std::bad_alloc();  // errors of a text have a place
    return false;
}

[[nodiscard]] inline bool isKeywordText(std::string_view text) {
    QorKexParser parser{SV::String(text), SV::String()};
    return parsed(parser);
}

}  // namespace qor::embedded
