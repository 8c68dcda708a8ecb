// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <string>

#include "embedded/QorRepositoryReader.h"
#include "interchange/Format.h"
#include "interchange/YamlWriter.h"

namespace qor::interchange {

/// How files name classes and relation classes of a library: by their names, with the part where a name alone would be
/// understood as another class.
class ClassNaming {
public:
    ClassNaming(const QorRepositoryReader& reader, QorIdentifier library);

    [[nodiscard]] QorIdentifier part(std::size_t index) const { return _parts[index]; }
    /// For a place where `ownPart` is looked at first; a class or relation class, ready to be written.
    [[nodiscard]] std::string reference(YamlWriter& writer, QorIdentifier cls, QorIdentifier ownPart) const;
    /// For models, where the business-process part is looked at first.
    [[nodiscard]] std::string reference(YamlWriter& writer, QorIdentifier cls) const {
        return reference(writer, cls, _parts[0]);
    }

private:
    const QorRepositoryReader& _reader;
    std::array<QorIdentifier, kParts.size()> _parts{};
};

}  // namespace qor::interchange
