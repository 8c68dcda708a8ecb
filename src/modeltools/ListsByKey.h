// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace qor::modeltools {

/// Lists of values by key, laid out in one array; made once from pairs.
template <class Value>
class ListsByKey {
public:
    /// The pairs must come ascending by key; a key's values keep their order.
    void add(long key, Value value) {
        if (_keys.empty() || _keys.back() != key) {
            _keys.push_back(key);
            _begins.push_back(_values.size());
        }
        _values.push_back(value);
    }
    void reserve(std::size_t values) { _values.reserve(values); }
    [[nodiscard]] std::span<const Value> of(long key) const {
        const auto found = std::lower_bound(_keys.begin(), _keys.end(), key);
        if (found == _keys.end() || *found != key) return {};
        const auto at = static_cast<std::size_t>(found - _keys.begin());
        const std::size_t end = at + 1 < _begins.size() ? _begins[at + 1] : _values.size();
        return std::span<const Value>(_values).subspan(_begins[at], end - _begins[at]);
    }
    [[nodiscard]] const std::vector<long>& keys() const { return _keys; }
    [[nodiscard]] const std::vector<Value>& values() const { return _values; }

private:
    std::vector<long> _keys;
    std::vector<std::size_t> _begins;
    std::vector<Value> _values;
};

}  // namespace qor::modeltools
