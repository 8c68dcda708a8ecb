// SPDX-License-Identifier: Apache-2.0
#include "embedded/store/RowHash.h"

#include <sodium.h>

#include <cstring>

namespace qor::embedded {

static_assert(RowHash::kKeyBytes == crypto_shorthash_KEYBYTES);
static_assert(sizeof(std::int64_t) == crypto_shorthash_BYTES);

namespace {

// Little-endian, so that a file can be carried to another machine.
template <class Number>
void append(std::string& bytes, Number number) {
    auto rest = static_cast<std::make_unsigned_t<Number>>(number);
    char buffer[sizeof rest];
    for (char& byte : buffer) {
        byte = static_cast<char>(rest & 0xff);
        rest = static_cast<decltype(rest)>(rest >> 8);
    }
    bytes.append(buffer, sizeof buffer);
}

}  // namespace

bool RowHash::makeKey(Key& key) noexcept {
    if (sodium_init() < 0) return false;
    randombytes_buf(key.data(), key.size());
    return true;
}

std::int64_t RowHash::of(const StoredRow& row, std::size_t numbers, std::size_t texts) {
    _bytes.clear();
    _bytes.push_back(static_cast<char>(row.table));
    for (std::size_t at = 0; at < numbers; ++at) append(_bytes, row.numbers[at]);
    for (std::size_t at = 0; at < texts; ++at) {
        append(_bytes, static_cast<std::uint32_t>(row.texts[at].size()));
        _bytes += row.texts[at];
    }
    return finish();
}

std::int64_t RowHash::of(std::initializer_list<std::int64_t> numbers, std::string_view text) {
    _bytes.clear();
    for (const std::int64_t number : numbers) append(_bytes, number);
    _bytes += text;
    return finish();
}

std::int64_t RowHash::finish() {
    unsigned char hash[crypto_shorthash_BYTES];
    crypto_shorthash(hash, reinterpret_cast<const unsigned char*>(_bytes.data()), _bytes.size(), _key.data());
    std::uint64_t number = 0;
    for (std::size_t at = sizeof hash; at > 0; --at) number = number << 8 | hash[at - 1];
    return static_cast<std::int64_t>(number);
}

}  // namespace qor::embedded
