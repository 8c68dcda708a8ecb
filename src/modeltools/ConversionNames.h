// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string_view>

#include "platform/SvString.h"

namespace qor::modeltools {

/// Empty when the repository fails.
[[nodiscard]] SV::String nameOfConvertedClass(long cls);

/// The names that messages about a pair of attributes hold. Names that the repository refuses stay empty. Looked up
/// when a message is made: most pairs need none.
class ConversionNames {
public:
    ConversionNames(long sourceClass, long source, long targetClass, long target)
        : _sourceClass(sourceClass), _source(source), _targetClass(targetClass), _target(target) {}

    /// `source` and `target`: the record or profile classes, where the message is about these.
    [[nodiscard]] SV::String message(std::uint16_t number, std::string_view source = {},
                                     std::string_view target = {}) const;

private:
    long _sourceClass;
    long _source;
    long _targetClass;
    long _target;
};

}  // namespace qor::modeltools
