// SPDX-License-Identifier: Apache-2.0
// The texts of all messages, one constant table per language. The build makes them from the catalogues in
// embedded/messages/ and refuses a catalogue that lacks a number or has other placeholders than its table says.
#pragma once
#include <cstdint>
#include <span>
#include <string_view>

namespace qor::embedded {

struct MessageRow {
    std::uint16_t number;  // message resource number
    const char* text;      // UTF-8, with its placeholders; never null, never empty
};

// Rows ascending by number, the same numbers in every language. `isoLanguage` is a two-letter code; a region after
// "-" or "_" is ignored ("de-AT" is German). A language without a catalogue gives English. The tables are constants.
std::span<const MessageRow> messageRows(std::string_view isoLanguage);

// The two-letter codes of the languages that have a catalogue, ascending.
std::span<const std::string_view> messageLanguages();

}  // namespace qor::embedded
