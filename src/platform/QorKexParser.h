// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/QorExport.h"
#include "platform/SvString.h"

/// A place in a keyword text, both counted from 1, columns in bytes; 0 when there is none.
struct QorKexPosition {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

/// What kind of value a key has.
enum class QorKexValueKind : std::int32_t { None, String, Word, Integer, TimeOrLength };

/// Parser of keyword texts: the configuration language of method libraries.
///
/// A text is a sequence of elements: an upper-case keyword, optionally a value of its own, then keys with or without a
/// value ("RELATION \"then\" max-outgoing: 1 undefined"). docs/keyword-texts.md has the grammar.
///
/// Positions and views that the operations hand out hold until the next SetText, Parse, assignment or destruction.
/// Reading operations work on the current element; they read nothing while there is none. Finding a key costs the same
/// however many keys the element has. Memory: the text once, 12 bytes per element, 8 per key, 16 per long string,
/// strings with doubled quotes a second time. No operation throws: without memory Parse fails, and what gives a text
/// gives the empty one.
class QOR_API QorKexParser {
public:
    /// For a text kept in an attribute of a repository object; the names are used in error messages only.
    QorKexParser(SV::String text, SV::String attributeName, SV::String ownerName);
    QorKexParser(SV::String text, SV::String title);
    QorKexParser(const QorKexParser& other);
    QorKexParser& operator=(const QorKexParser& other);
    ~QorKexParser();

    /// The next Parse works on this text; until then no element is current, and the last one's number of elements and
    /// error stay.
    void SetText(SV::String text);

    /// Parses the whole text. 0 on success; 1 on a syntax error, which GetErrorText then tells. After success element
    /// 0, if there is one, is current; after a failure none is. One pass, no copy per token.
    long Parse();

    /// Elements found by the last successful Parse; a failed one leaves the number as it was.
    [[nodiscard]] unsigned long GetElemCount() const;
    /// Makes the element with that index from 0 current; false, and no change, when there is none.
    bool SetCurElemIndex(unsigned long index);
    [[nodiscard]] SV::String GetCurElemName() const;
    [[nodiscard]] std::string_view GetCurElemNameView() const;
    [[nodiscard]] QorKexPosition GetCurElemPosition() const;

    /// The current element holds the key, with or without a value.
    [[nodiscard]] bool IsContained(std::string_view key) const;
    /// The current element's keys by an index from 0, in the order of the text; empty behind the last one.
    [[nodiscard]] std::string_view GetKeyView(unsigned long index) const;
    /// None also when the key is absent.
    [[nodiscard]] QorKexValueKind GetValueKind(std::string_view key) const;
    /// Where the key stands in the current element.
    [[nodiscard]] QorKexPosition GetKeyPosition(std::string_view key) const;
    /// The string value of the key; empty when the key is absent or has no string value.
    [[nodiscard]] SV::String GetStrValue(std::string_view key) const;
    /// The value directly behind the current element's keyword; empty when there is none.
    [[nodiscard]] SV::String GetStrValue() const;
    /// As GetStrValue, but false and no change of `value` when the key is absent.
    bool TryGetStrValue(std::string_view key, SV::String& value) const;
    /// As the operations above, without a copy. Nothing when there is no string value.
    [[nodiscard]] std::optional<std::string_view> GetStrView(std::string_view key) const;
    [[nodiscard]] std::optional<std::string_view> GetStrView() const;

    /// The integer value of the key, -2147483648 to 4294967295; 0 when the key is absent or has no integer value.
    [[nodiscard]] long GetIntValue(std::string_view key) const;
    /// The bare word that is the key's value; empty when there is none.
    [[nodiscard]] SV::String GetModifier(std::string_view key) const;
    /// The time or length that is the key's value; 0 when there is none. 0 to 2147483647 are seconds (a year has 365
    /// days); a negative number is a length: -1 - n, with n in thousandths of a centimetre. A length below zero, which
    /// may stand in a text as a coordinate, has no number and reads as 0.
    [[nodiscard]] long GetValueTMM(std::string_view key) const;

    /// The text in its quoted form, ready to stand behind a colon; GetStrValue is its inverse.
    [[nodiscard]] static SV::String GetKexTextOfStrValue(std::string_view text);
    /// A number of GetValueTMM as time ("00:001:02:00:00") or length ("2.5cm"); GetValueTMM is its inverse. A number
    /// beyond signed 32 bits counts as the nearest one within.
    [[nodiscard]] static SV::String GetKexTextOfTMMValue(long value);

    /// Error of the last Parse, with its line and column; empty after success, never empty after a failure.
    [[nodiscard]] const SV::String& GetErrorText() const;
    /// That error without its line and column, for who tells the place in another way.
    [[nodiscard]] SV::String GetErrorReason() const;
    /// Where that error stands.
    [[nodiscard]] QorKexPosition GetErrorPosition() const;
    /// Appends to `text`: after a failed Parse the source names and its error ("Cardinality (Task, Orders): line 3,
    /// column 7: ..."), after a successful one the source names and the position of the current element ("Cardinality
    /// (Task, Orders): line 2, column 1"). Empty names are left out.
    void MakeErrorText(SV::String& text) const;
    /// Shows what MakeErrorText says in a modal error box.
    void ShowErrorBox() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
