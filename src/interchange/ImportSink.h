// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "interchange/QorImport.h"

namespace qor::interchange {

/// Where a reader of one file leaves its findings.
class ImportSink {
public:
    virtual ~ImportSink();
    virtual void report(QorSeverity severity, std::uint32_t line, std::uint32_t column, std::string text,
                        std::vector<QorMention> mentions) = 0;
    /// A model came into being; it is taken back when the file turns out to have an error.
    virtual void madeModel(QorIdentifier model) = 0;
    /// A process that other files may call is part of the model.
    virtual void madeProcess(std::string_view sourceId, QorIdentifier model) = 0;
    /// An object or relation came into being. Called in ascending order of identifiers.
    virtual void madeThing(QorIdentifier thing, std::uint32_t line, std::uint32_t column,
                           std::string_view sourceId) = 0;
};

/// The bytes of a file or text, in order.
class ByteSource {
public:
    virtual ~ByteSource();
    /// Up to `size` bytes; 0 at the end, -1 when reading fails (what was read before stays valid).
    virtual std::ptrdiff_t read(char* buffer, std::size_t size) = 0;
};

}  // namespace qor::interchange
