// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <compare>
#include <map>
#include <string_view>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "embedded/QorRepositoryReader.h"
#include "interchange/QorImport.h"

namespace qor::cli {

/// A key of a rule text, told apart from the same key of other elements.
struct WrittenRule {
    long cls = -1;
    std::string_view key;
    long relationClass = -1;
    long otherClass = -1;
    std::uint32_t limit = 0;

    explicit WrittenRule(const QorCardinalityRule& rule)
        : cls(rule.cls),
          key(rule.key),
          relationClass(rule.relationClass),
          otherClass(rule.otherClass),
          limit(rule.limit) {}
    friend auto operator<=>(const WrittenRule&, const WrittenRule&) = default;
};

/// Where the rules of a library are written in its file.
class RulePlaces {
public:
    RulePlaces(const QorRepositoryReader& reader, const QorImporter& importer) : _reader(reader), _importer(importer) {}

    /// The place of the rule's key; no file when it is not found. A key's text is searched once.
    const QorFilePlace& placeOf(const WrittenRule& rule);

private:
    [[nodiscard]] QorFilePlace search(const WrittenRule& rule) const;

    const QorRepositoryReader& _reader;
    const QorImporter& _importer;
    std::map<WrittenRule, QorFilePlace> _places;
};

}  // namespace qor::cli
