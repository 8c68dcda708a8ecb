// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <vector>

/// An ordered collection with positions from 0. Positions handed in must lie below numberOfElements() (for
/// `addAtIndex`: not above it).
template <class Element>
class ISequence {
public:
    using value_type = Element;
    using const_iterator = typename std::vector<Element>::const_iterator;

    ISequence() = default;
    ISequence(std::initializer_list<Element> elements) : _elements(elements) {}

    void add(const Element& element) { _elements.push_back(element); }
    void addAsLast(const Element& element) { _elements.push_back(element); }
    void addAsFirst(const Element& element) { _elements.insert(_elements.begin(), element); }
    void addAtIndex(unsigned long index, const Element& element) { _elements.insert(at(index), element); }

    [[nodiscard]] Element& elementAtIndex(unsigned long index) { return _elements[index]; }
    [[nodiscard]] const Element& elementAtIndex(unsigned long index) const { return _elements[index]; }

    void removeAtIndex(unsigned long index) { _elements.erase(at(index)); }
    void removeAll() { _elements.clear(); }
    void reserve(std::size_t count) { _elements.reserve(count); }

    [[nodiscard]] unsigned long numberOfElements() const { return _elements.size(); }
    [[nodiscard]] bool isEmpty() const { return _elements.empty(); }

    /// Ascending by `<`; equal elements keep their order.
    void sort() { std::stable_sort(_elements.begin(), _elements.end()); }
    template <class Less>
    void sort(Less less) {
        std::stable_sort(_elements.begin(), _elements.end(), less);
    }

    [[nodiscard]] const_iterator begin() const { return _elements.begin(); }
    [[nodiscard]] const_iterator end() const { return _elements.end(); }

    friend bool operator==(const ISequence& a, const ISequence& b) { return a._elements == b._elements; }

private:
    auto at(unsigned long index) { return _elements.begin() + static_cast<std::ptrdiff_t>(index); }

    std::vector<Element> _elements;
};
