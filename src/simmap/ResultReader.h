// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/ISequence.h"
#include "platform/ISortedSet.h"
#include "platform/QorKexParser.h"
#include "platform/SvString.h"
#include "simmap/QorSimResultDefinitions.h"
#include "simmap/ResultHolders.h"

namespace qor::simmap {

/// The attributes that take the results of one kind of holder.
struct ResultTables {
    /// Source attribute and the result attribute that takes its values; a fixed result attribute with itself.
    ISortedSet<std::pair<long, long>> mapping;
    ISequence<long> attributes;  ///< the fixed ones in key order, 0 where the record names none
    std::vector<QorSimResultSource> sources;
    void clear();
};

enum class ResultSyntax { Unreadable, Current, Old };

/// Parses a result text of the part. One in the form before version 4.00.00 is rewritten and parsed again when the
/// platform still checks the old syntax; places in the parser are then no places in the text.
[[nodiscard]] ResultSyntax parseResultText(QorKexParser& parser, const SV::String& text, QorCoreVarType part);

/// The class name of the first record of the holder; nothing when there is none.
[[nodiscard]] std::optional<SV::String> holderClassName(QorKexParser& parser, const ResultHolder& holder);

/// Reads one kind's tables out of a parsed text of the part. Only the first record of a kind counts; source classes
/// belong to the holder whose record came last before them, and mean nothing before any.
class ResultReader {
public:
    /// Told about each error; true to go on behind it.
    using OnError = std::function<bool(int code, QorKexPosition position, const SV::String& message)>;

    ResultReader(QorKexParser& parser, long part, const ResultHolder& holder, OnError onError)
        : _parser(parser), _part(part), _holder(holder), _onError(std::move(onError)) {}

    /// False when there was an error. A text without a record of the holder gives empty tables.
    bool read(ResultTables& tables);
    /// The holder's class; 0 when it has none.
    [[nodiscard]] long holderClass() const { return _holderClass; }

private:
    bool readHolder(ResultTables& tables);
    bool readSource(ResultTables& tables);
    /// The attribute that the key names; 0 for an unknown one, which has then been reported.
    long attributeOf(long cls, std::string_view key);
    bool unknown(QorKexPosition position, std::string_view name);
    bool missing(std::string_view key);
    bool report(int code, QorKexPosition position, const SV::String& message);

    QorKexParser& _parser;
    long _part;
    const ResultHolder& _holder;
    OnError _onError;
    long _holderClass = 0;
    bool _clean = true;
};

}  // namespace qor::simmap
