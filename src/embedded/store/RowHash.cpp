// SPDX-License-Identifier: Apache-2.0
#include "embedded/store/RowHash.h"

#include <sodium.h>

#include <bit>
#include <cstring>

namespace qor::embedded {

static_assert(RowHash::kKeyBytes == crypto_shorthash_KEYBYTES);
static_assert(sizeof(std::int64_t) == crypto_shorthash_BYTES);

namespace {

// Bytes in the order of a little-endian machine, so that a file can be carried to another one.
template <class Number>
void append(char*& end, Number number) noexcept {
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(end, &number, sizeof number);
        end += sizeof number;
    } else {
        for (std::size_t byte = 0; byte < sizeof number; ++byte) {
            *end++ = static_cast<char>(number & 0xff);
            number = static_cast<Number>(number >> 8);
        }
    }
}

void append(char*& end, std::string_view text) noexcept {
    if (!text.empty()) std::memcpy(end, text.data(), text.size());
    end += text.size();
}

}  // namespace

bool RowHash::makeKey(Key& key) noexcept {
    if (sodium_init() < 0) return false;
    randombytes_buf(key.data(), key.size());
    return true;
}

char* RowHash::roomFor(std::size_t bytes) {
    if (bytes <= _small.size()) return _small.data();
    if (_large.size() < bytes) _large.resize(bytes);
    return _large.data();
}

std::int64_t RowHash::of(const StoredRow& row, std::size_t numbers, std::size_t texts) {
    std::size_t bytes = 1 + numbers * sizeof(QorIdentifier);
    for (std::size_t at = 0; at < texts; ++at) bytes += sizeof(std::uint32_t) + row.texts[at].size();
    char* const begin = roomFor(bytes);
    char* end = begin;
    *end++ = static_cast<char>(row.table);
    for (std::size_t at = 0; at < numbers; ++at) append(end, static_cast<std::uint32_t>(row.numbers[at]));
    for (std::size_t at = 0; at < texts; ++at) {
        append(end, static_cast<std::uint32_t>(row.texts[at].size()));
        append(end, row.texts[at]);
    }
    return hashOf({begin, bytes});
}

std::int64_t RowHash::of(std::initializer_list<std::int64_t> numbers, std::string_view text) {
    const std::size_t bytes = numbers.size() * sizeof(std::int64_t) + text.size();
    char* const begin = roomFor(bytes);
    char* end = begin;
    for (const std::int64_t number : numbers) append(end, static_cast<std::uint64_t>(number));
    append(end, text);
    return hashOf({begin, bytes});
}

std::int64_t RowHash::hashOf(std::string_view bytes) const noexcept {
    unsigned char hash[crypto_shorthash_BYTES];
    crypto_shorthash(hash, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), _key.data());
    std::uint64_t number = 0;
    for (std::size_t at = sizeof hash; at > 0; --at) number = number << 8 | hash[at - 1];
    return static_cast<std::int64_t>(number);
}

}  // namespace qor::embedded
