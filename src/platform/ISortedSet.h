// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <utility>
#include <vector>

/// A sorted set of values, iterated in ascending order.
///
/// Kept as one sorted run and a small sorted tail: `add` of ascending values is amortised O(1), of other values
/// amortised O(sqrt n); `contains` is O(log n). Iterators, `elementAtIndex` and everything else that needs the whole
/// order first fold the tail into the run in O(n), so do not alternate them with unordered `add`. Iterators and
/// references hold until the next change.
template <class Element>
class ISortedSet {
public:
    using value_type = Element;
    using const_iterator = typename std::vector<Element>::const_iterator;

    ISortedSet() = default;
    ISortedSet(std::initializer_list<Element> elements) { assign(std::vector<Element>(elements)); }

    /// Adds the value; false when the set held it already.
    bool add(const Element& element) {
        if (_tail.empty() && (_run.empty() || _run.back() < element)) {
            _run.push_back(element);
            return true;
        }
        if (std::binary_search(_run.begin(), _run.end(), element)) return false;
        const auto place = std::lower_bound(_tail.begin(), _tail.end(), element);
        if (place != _tail.end() && !(element < *place)) return false;
        _tail.insert(place, element);
        if (_tail.size() * _tail.size() > _run.size() + 64) fold();
        return true;
    }

    void addAllFrom(const ISortedSet& other) {
        if (other.isEmpty()) return;
        if (isEmpty()) {
            *this = other;
            return;
        }
        fold();
        other.fold();
        std::vector<Element> merged;
        merged.reserve(_run.size() + other._run.size());
        std::set_union(_run.begin(), _run.end(), other._run.begin(), other._run.end(), std::back_inserter(merged));
        _run = std::move(merged);
    }

    /// Takes the place of the set's values by those given, in any order and with repetitions: O(n log n), O(n) when
    /// they come ascending.
    void assign(std::vector<Element> elements) {
        const auto isNoStep = [](const Element& a, const Element& b) { return !(a < b); };
        if (std::adjacent_find(elements.begin(), elements.end(), isNoStep) != elements.end()) {
            std::sort(elements.begin(), elements.end());
            elements.erase(std::unique(elements.begin(), elements.end(), isNoStep), elements.end());
        }
        _run = std::move(elements);
        _tail.clear();
    }

    /// Removes the value; false when the set did not hold it. O(n).
    bool remove(const Element& element) {
        for (auto* part : {&_run, &_tail}) {
            const auto place = std::lower_bound(part->begin(), part->end(), element);
            if (place != part->end() && !(element < *place)) {
                part->erase(place);
                return true;
            }
        }
        return false;
    }

    void removeAll() {
        _run.clear();
        _tail.clear();
    }

    void reserve(std::size_t count) { _run.reserve(count); }

    [[nodiscard]] bool contains(const Element& element) const {
        return std::binary_search(_run.begin(), _run.end(), element) ||
               std::binary_search(_tail.begin(), _tail.end(), element);
    }
    [[nodiscard]] unsigned long numberOfElements() const { return _run.size() + _tail.size(); }
    [[nodiscard]] bool isEmpty() const { return _run.empty() && _tail.empty(); }

    /// The value at a position from 0 in ascending order; the position must lie below numberOfElements().
    [[nodiscard]] const Element& elementAtIndex(unsigned long index) const {
        fold();
        return _run[index];
    }
    [[nodiscard]] const_iterator begin() const {
        fold();
        return _run.begin();
    }
    [[nodiscard]] const_iterator end() const {
        fold();
        return _run.end();
    }

    friend bool operator==(const ISortedSet& a, const ISortedSet& b) {
        a.fold();
        b.fold();
        return a._run == b._run;
    }

private:
    void fold() const {
        if (_tail.empty()) return;
        const auto middle = static_cast<std::ptrdiff_t>(_run.size());
        _run.insert(_run.end(), _tail.begin(), _tail.end());
        std::inplace_merge(_run.begin(), _run.begin() + middle, _run.end());
        _tail.clear();
    }

    // Folding changes how the values are laid out, never which ones they are.
    mutable std::vector<Element> _run;
    mutable std::vector<Element> _tail;
};
