// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "interchange/ImportSink.h"
#include "interchange/bpmn/BpmnPlace.h"

namespace qor::interchange::bpmn {

/// What a warning is about. Of each kind so many are told one by one, the others are counted: a crowd of one kind must
/// not hide the others.
enum class FindingKind : std::uint8_t {
    NotUnderstood,
    OutsideProcess,
    DuplicateId,
    Dangling,
    SelfFlow,
    UnfitEnds,
    LostValue,
    Count
};

inline constexpr std::size_t kMaxOfOneKind = 100;
inline constexpr std::size_t kMaxNamespaces = 100;
inline constexpr std::size_t kMaxMentions = 10000;  ///< in one file

/// Gathers errors and warnings of one file, folds what comes in crowds, and hands all of it over in the file's order.
class Findings {
public:
    void error(Place place, std::string text);
    void warn(FindingKind kind, Place place, std::string text);
    /// An element that BPMN knows and the method library has no place for; by name when it has no identifier.
    void leftOut(std::string_view element, std::string_view id, Place place);
    /// An element or attribute of a namespace that is not BPMN's; `words` makes the text that names it and where it is.
    template <class Words>
    void foreign(std::string_view space, bool isElement, Place place, const Words& words) {
        mention(countForeign(space, isElement, place), place, words);
    }
    /// The same, inside another element that is not BPMN's: it is only counted.
    void foreignInside(std::string_view space, bool isElement, Place place) {
        (void)countForeign(space, isElement, place);
    }

    [[nodiscard]] bool hasErrors() const { return _hasErrors; }
    void deliver(ImportSink& sink);

private:
    struct Finding {
        QorSeverity severity;
        Place place;
        std::string text;
        std::vector<QorMention> mentions;
    };
    struct Tally {
        std::uint64_t elements = 0;
        std::uint64_t attributes = 0;
        Place first;
        std::uint64_t named = 0;
        std::vector<QorMention> mentions = {};
    };

    Tally& countForeign(std::string_view space, bool isElement, Place place);
    /// A file may hold any number of them, so that only so many are kept; all are counted.
    template <class Words>
    void mention(Tally& tally, Place place, const Words& words) {
        ++tally.named;
        if (_mentions == kMaxMentions) return;
        ++_mentions;
        tally.mentions.push_back({place.line, place.column, words()});
    }
    void tellKinds();
    void tellLeftOut();
    void tellForeign();

    std::vector<Finding> _findings;
    std::array<Tally, static_cast<std::size_t>(FindingKind::Count)> _kinds;
    std::map<std::string, Tally, std::less<>> _leftOut;
    std::map<std::string, Tally, std::less<>> _foreign;
    Tally _furtherForeign;
    Tally _namesLeftOut;
    std::size_t _mentions = 0;
    bool _hasErrors = false;
};

}  // namespace qor::interchange::bpmn
