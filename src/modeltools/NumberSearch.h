// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <queue>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "modeltools/HeldNumbers.h"
#include "platform/QorErrorCode.h"
#include "platform/QorIdentifier.h"

namespace qor::modeltools {

/// Finds for an object the lowest number that makes "base-number" free or the object's own name, as if the numbers
/// were asked one after the other from 1. Numbers that are known to be taken are not asked again until their holder's
/// name changes, so that naming n objects of one base asks about n times and not n²/2 times.
///
/// Whoever changes names tells it; a change that nobody tells leaves a number that became free unused.
class NumberSearch {
public:
    /// The counter gives up at the number behind this one, also when that one is free.
    static constexpr std::int32_t kHighest = 9'999'998;

    /// Who has a name: Ok with the lowest identifier among the holders, NotFound when the name is free.
    using LookUp = std::function<QorErrorCode(const std::string& name, QorIdentifier& holder)>;

    explicit NumberSearch(LookUp lookUp, std::int32_t highest = kHighest)
        : _lookUp(std::move(lookUp)), _highest(highest) {}

    /// Makes room for about so many objects.
    void expect(std::size_t objects) { _held.expect(objects); }

    struct Found {
        std::int32_t number = 0;                ///< 0: none, or the look-up failed
        QorErrorCode code = QorErrorCode::Ok;   ///< of a look-up that failed
        QorIdentifier first = QorNoIdentifier;  ///< who has number 1, when the number is a higher one
    };
    Found firstFor(const std::string& base, QorIdentifier object);

    /// The object is about to get the name that was found last.
    void given(const std::string& base, QorIdentifier object, std::int32_t number);
    /// The object has, or may have, another name than before.
    void nameLost(QorIdentifier object);
    /// Somebody has got that name.
    void nameSeen(std::string_view name);
    void forgetAll();

private:
    struct Base {
        std::vector<QorIdentifier> holders;  ///< of the numbers from 1 that were asked; none: in doubt
        std::priority_queue<std::int32_t, std::vector<std::int32_t>, std::greater<>> doubtful;
    };
    using Held = HeldNumbers<Base>::Held;

    void doubt(Base& base, std::int32_t number);
    void note(Base& base, QorIdentifier holder, std::int32_t number);

    LookUp _lookUp;
    std::int32_t _highest;
    std::unordered_map<std::string, Base> _bases;
    HeldNumbers<Base> _held;
};

}  // namespace qor::modeltools
