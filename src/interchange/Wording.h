// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace qor::interchange {

[[nodiscard]] std::string concat(std::initializer_list<std::string_view> parts);

/// For messages: in quotation marks, long texts and texts of several lines cut, control characters replaced.
[[nodiscard]] std::string inQuotes(std::string_view text);

/// Finds what somebody who mistyped a name may have meant. Its work is bounded, however many names and mistakes a file
/// holds: after that it finds nothing any more.
class Guesser {
public:
    /// `names` is anything to iterate over that gives texts.
    template <class Names>
    [[nodiscard]] std::string_view nearest(std::string_view mistyped, const Names& names) {
        std::string_view best;
        std::size_t distance = tolerance(mistyped);
        for (const std::string_view name : names) {
            if (!willing()) break;
            if (closer(mistyped, name, distance)) best = name;
        }
        return best;
    }
    [[nodiscard]] bool willing() const { return _budget != 0; }
    /// "; did you mean "Task"?", or nothing.
    template <class Names>
    [[nodiscard]] std::string hint(std::string_view mistyped, const Names& names) {
        const std::string_view name = nearest(mistyped, names);
        return name.empty() ? std::string() : concat({"; did you mean ", inQuotes(name), "?"});
    }

private:
    /// One more than the distance that still counts as near.
    static std::size_t tolerance(std::string_view mistyped);
    /// The name is nearer than `distance`, which then becomes its own.
    bool closer(std::string_view mistyped, std::string_view name, std::size_t& distance);

    std::size_t _budget = 1000000;  // names that may still be compared
};

}  // namespace qor::interchange
