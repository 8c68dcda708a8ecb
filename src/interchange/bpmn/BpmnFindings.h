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

/// Gathers errors and warnings of one file, folds what comes in crowds, and hands all of it over in the file's order.
class Findings {
public:
    void error(Place place, std::string text);
    void warn(FindingKind kind, Place place, std::string text);
    /// An element that BPMN knows and the method library has no place for.
    void leftOut(std::string_view element, Place place);
    /// An element or attribute of a namespace that is not BPMN's.
    void foreign(std::string_view space, bool isElement, Place place);

    [[nodiscard]] bool hasErrors() const { return _hasErrors; }
    void deliver(ImportSink& sink);

private:
    struct Finding {
        QorSeverity severity;
        Place place;
        std::string text;
    };
    struct Tally {
        std::uint64_t elements = 0;
        std::uint64_t attributes = 0;
        Place first;
    };

    void tellKinds();
    void tellLeftOut();
    void tellForeign();

    std::vector<Finding> _findings;
    std::array<Tally, static_cast<std::size_t>(FindingKind::Count)> _kinds;
    std::map<std::string, Tally, std::less<>> _leftOut;
    std::map<std::string, Tally, std::less<>> _foreign;
    Tally _furtherForeign;
    bool _hasErrors = false;
};

}  // namespace qor::interchange::bpmn
