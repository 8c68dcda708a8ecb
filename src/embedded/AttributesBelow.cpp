// SPDX-License-Identifier: Apache-2.0
#include "embedded/AttributesBelow.h"

namespace qor::embedded {

void AttributesBelow::makeRoom(QorIdentifier cls, std::string_view name) {
    auto place = _byName.find(name);
    if (place == _byName.end()) place = _byName.try_emplace(std::string(name)).first;
    place->second.try_emplace(cls);
}

void AttributesBelow::add(QorIdentifier cls, std::string_view name, QorIdentifier attribute) noexcept {
    Entry& entry = _byName.find(name)->second.find(cls)->second;
    ++entry.count;
    entry.latest = attribute;
}

void AttributesBelow::remove(QorIdentifier cls, std::string_view name) noexcept {
    --_byName.find(name)->second.find(cls)->second.count;
}

void AttributesBelow::sweep() noexcept {
    for (auto name = _byName.begin(); name != _byName.end();) {
        std::erase_if(name->second, [](const auto& entry) { return entry.second.count == 0; });
        name = name->second.empty() ? _byName.erase(name) : std::next(name);
    }
}

AttributesBelow::Entry AttributesBelow::find(QorIdentifier cls, std::string_view name) const noexcept {
    const auto place = _byName.find(name);
    if (place == _byName.end()) return {};
    const auto entry = place->second.find(cls);
    return entry == place->second.end() ? Entry() : entry->second;
}

}  // namespace qor::embedded
