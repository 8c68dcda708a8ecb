// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "platform/ISequence.h"
#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/QorKexParser.h"
#include "platform/SvString.h"
#include "simmap/QorSimResultAttributeType.h"

/// Into which attributes of the models a simulation writes its results, as the result texts of the two library parts
/// say (docs/simulation.md), and their reset before a new run.
///
/// The tables belong to the process: they are made once, by the first request for their kind, and stay as they are,
/// also when a request failed and when another library is loaded. Once an error has been met, every reset is refused
/// until the process ends. Whoever needs the results of several libraries in one process takes QorSimResultReset.
class QOR_API QorSimResultAttributes {
public:
    /// Reads the texts of the loaded library. A text with a syntax error sets the error flag.
    QorSimResultAttributes() noexcept;
    QorSimResultAttributes(const QorSimResultAttributes& other) noexcept;
    QorSimResultAttributes& operator=(const QorSimResultAttributes& other) noexcept;
    virtual ~QorSimResultAttributes();

    /// Makes the tables of the kind unless there are any. 1; 0 for a kind that does not exist and, once, for a text
    /// with an error: a box says so, and the tables stay empty.
    int getResultAttributes(QorSimResultAttributeType type) noexcept;

    /// Resets the result attributes of all result holders in the models: numbers to 0, times to no time, everything
    /// else to the empty text, in one unit of work where the host offers any. `instanceIds` becomes the holders.
    /// A value that cannot be written is reported as an internal error, and the others are written. 1; 0, and nothing
    /// is written, after an error of the texts, and when the unit of work cannot be kept.
    int resetResultAttributes(const ISortedSet<long>& modelIds, ISortedSet<long>& instanceIds) noexcept;

    /// Rewrites a text in the form before version 4.00.00 (docs/simulation.md) into the current one. `kindSelector` is
    /// what `classOf` answers for the text's library part. Any other text is refused: false, no change, and the error
    /// flag is set, for its results would be lost.
    static bool old2New(SV::String& text, long kindSelector) noexcept;

    // The process's tables, empty before they are made. In a mapping each pair is an attribute that values come from
    // and the attribute that takes them; for a fixed attribute these are the same. The lists hold the fixed
    // attributes in the order of their keys, 0 for one that is not named.
    static const ISortedSet<std::pair<long, long>>& Get_ProcessStartMapping() noexcept;
    static const ISortedSet<std::pair<long, long>>& Get_ActivityMapping() noexcept;
    static const ISortedSet<std::pair<long, long>>& Get_PersonMapping() noexcept;
    static const ISequence<long>& Get_ProcessStartAttributes() noexcept;
    static const ISequence<long>& Get_ActivityAttributes() noexcept;
    static const ISequence<long>& Get_PersonAttributes() noexcept;
    /// 1 once an error has been met.
    static int Get_Error() noexcept;

protected:
    /// Shows that a name is unknown, empties the kind's tables and sets the error flag.
    void _GetAttrError(QorSimResultAttributeType type) noexcept;

private:
    static constexpr std::size_t kKinds = 3;
    static constexpr std::size_t kParts = 2;

    void _InitParser();
    bool makeTables(QorSimResultAttributeType type);
    void copyNames(const QorSimResultAttributes& other) noexcept;
    void resetModel(long model, std::vector<long>& instances);

    std::array<SV::String, kKinds> _holderNames;
    std::array<QorKexParser, kParts> _parsers;  ///< business process, working environment
};
