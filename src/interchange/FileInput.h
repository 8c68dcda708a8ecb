// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "interchange/ImportSink.h"

namespace qor::interchange {

/// A file of the file system, read in order.
class FileSource final : public ByteSource {
public:
    /// "-" is standard input. Nothing, and why in `problem`, for what cannot be read.
    static std::unique_ptr<FileSource> open(const std::string& path, std::string& problem);
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;
    ~FileSource() override;

    std::ptrdiff_t read(char* buffer, std::size_t size) override;
    /// Bytes of a regular file; 0 for anything else, which can be read only once.
    [[nodiscard]] std::size_t size() const { return _size; }
    [[nodiscard]] bool canBeReadAgain() const { return _regular; }
    /// Why the last read failed.
    [[nodiscard]] const std::string& problem() const { return _problem; }

private:
    FileSource(int descriptor, bool regular, std::size_t size)
        : _descriptor(descriptor), _regular(regular), _size(size) {}

    int _descriptor;
    bool _regular;
    std::size_t _size;
    std::string _problem;
};

/// A text in memory.
class TextSource final : public ByteSource {
public:
    explicit TextSource(std::string_view text) : _text(text) {}
    ~TextSource() override;
    std::ptrdiff_t read(char* buffer, std::size_t size) override;

private:
    std::string_view _text;
};

/// Bytes that were already taken from a source, and then the rest of it.
class ResumedSource final : public ByteSource {
public:
    ResumedSource(std::string_view taken, ByteSource& rest) : _taken(taken), _rest(rest) {}
    ~ResumedSource() override;
    std::ptrdiff_t read(char* buffer, std::size_t size) override;

private:
    TextSource _taken;
    ByteSource& _rest;
};

/// Appends up to `size` bytes; false when reading failed.
bool readMore(ByteSource& source, std::size_t size, std::string& text);

}  // namespace qor::interchange
