// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <iterator>
#include <map>
#include <memory>

#include "platform/QorIdentifier.h"

/// Rule records by identifier, ascending. Owns them; a copy holds copies of them.
template <class Record>
class QorCardinalityMap {
    using Records = std::map<QorIdentifier, std::unique_ptr<Record>>;

public:
    /// Goes over the records.
    class const_iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Record;
        using difference_type = std::ptrdiff_t;
        using pointer = const Record*;
        using reference = const Record&;

        explicit const_iterator(typename Records::const_iterator place) : _place(place) {}
        reference operator*() const { return *_place->second; }
        pointer operator->() const { return _place->second.get(); }
        const_iterator& operator++() {
            ++_place;
            return *this;
        }
        const_iterator operator++(int) { return const_iterator(_place++); }
        friend bool operator==(const const_iterator& a, const const_iterator& b) { return a._place == b._place; }

    private:
        typename Records::const_iterator _place;
    };

    QorCardinalityMap() = default;
    QorCardinalityMap(const QorCardinalityMap& other) {
        for (const auto& [key, record] : other._records)
            _records.emplace_hint(_records.end(), key, std::make_unique<Record>(*record));
    }
    QorCardinalityMap(QorCardinalityMap&& other) noexcept = default;
    QorCardinalityMap& operator=(QorCardinalityMap other) noexcept {
        _records.swap(other._records);
        return *this;
    }
    ~QorCardinalityMap() = default;

    /// The record; null when there is none.
    [[nodiscard]] const Record* find(QorIdentifier key) const {
        const auto place = _records.find(key);
        return place == _records.end() ? nullptr : place->second.get();
    }
    /// The record, made with its defaults when there was none.
    Record& findOrCreate(QorIdentifier key) {
        auto& record = _records[key];
        if (!record) record = std::make_unique<Record>(key);
        return *record;
    }
    void removeAll() noexcept { _records.clear(); }

    [[nodiscard]] std::size_t numberOfElements() const { return _records.size(); }
    [[nodiscard]] const_iterator begin() const { return const_iterator(_records.begin()); }
    [[nodiscard]] const_iterator end() const { return const_iterator(_records.end()); }

private:
    Records _records;
};
