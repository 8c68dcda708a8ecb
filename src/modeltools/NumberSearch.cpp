// SPDX-License-Identifier: Apache-2.0
#include "modeltools/NumberSearch.h"

#include <charconv>
#include <utility>

namespace qor::modeltools {

NumberSearch::Found NumberSearch::firstFor(const std::string& baseText, QorIdentifier object) {
    Base& base = _bases[baseText];
    const Held held = _held.of(object);
    const std::int32_t own = held.base == &base ? held.number : 0;
    std::string name = baseText + "-";
    const std::size_t prefix = name.size();
    const auto found = [&base](std::int32_t number) {
        return Found{number, QorErrorCode::Ok, number > 1 ? base.holders[0] : QorNoIdentifier};
    };
    for (;;) {
        const std::int32_t number =
            base.doubtful.empty() ? static_cast<std::int32_t>(base.holders.size()) + 1 : base.doubtful.top();
        if (own != 0 && own < number) return found(own);
        if (number > _highest) return {};
        name.resize(prefix);
        name += std::to_string(number);
        QorIdentifier holder = QorNoIdentifier;
        const QorErrorCode code = _lookUp(name, holder);
        if (code == QorErrorCode::NotFound) return found(number);
        if (code != QorErrorCode::Ok) return {0, code, QorNoIdentifier};
        note(base, holder, number);
        if (holder == object) return found(number);
    }
}

void NumberSearch::given(const std::string& baseText, QorIdentifier object, std::int32_t number) {
    const Held earlier = _held.of(object);
    note(_bases[baseText], object, number);
    if (earlier.base != nullptr) doubt(*earlier.base, earlier.number);
}

void NumberSearch::nameLost(QorIdentifier object) {
    const Held lost = _held.of(object);
    if (lost.base != nullptr) doubt(*lost.base, lost.number);
}

void NumberSearch::nameSeen(std::string_view name) {
    const std::size_t hyphen = name.rfind('-');
    if (hyphen == std::string_view::npos) return;
    const auto base = _bases.find(std::string(name.substr(0, hyphen)));
    if (base == _bases.end()) return;
    std::int32_t number = 0;
    const char* const end = name.data() + name.size();
    const auto read = std::from_chars(name.data() + hyphen + 1, end, number);
    const bool isNumber = read.ec == std::errc() && read.ptr == end;
    if (isNumber && number >= 1 && static_cast<std::size_t>(number) <= base->second.holders.size())
        doubt(base->second, number);
}

void NumberSearch::forgetAll() {
    _held.clear();
    _bases.clear();
}

void NumberSearch::doubt(Base& base, std::int32_t number) {
    QorIdentifier& holder = base.holders[static_cast<std::size_t>(number) - 1];
    if (holder == QorNoIdentifier) return;
    const Held held = _held.of(holder);
    if (held.base == &base && held.number == number) _held.set(holder, {});
    holder = QorNoIdentifier;
    base.doubtful.push(number);
}

/// Numbers come in the order in which they are asked: the lowest one in doubt, else the next one.
void NumberSearch::note(Base& base, QorIdentifier holder, std::int32_t number) {
    if (static_cast<std::size_t>(number) > base.holders.size()) {
        base.holders.push_back(holder);
    } else {
        base.holders[static_cast<std::size_t>(number) - 1] = holder;
        base.doubtful.pop();
    }
    _held.set(holder, {&base, number});
}

}  // namespace qor::modeltools
