// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/QorExport.h"
#include "platform/QorKexParser.h"
#include "platform/SvString.h"

/// The texts with which a simulation labels its results, from the simulation-text attribute of a method library
/// (docs/simulation.md). Copies have a text of their own.
class QOR_API QorSimTextHandler {
public:
    explicit QorSimTextHandler(const long& libraryId);
    QorSimTextHandler(const QorSimTextHandler& other) noexcept;
    QorSimTextHandler& operator=(const QorSimTextHandler& other) noexcept;
    ~QorSimTextHandler();

    /// Reads the library's text. 1 when it is a complete record or says that it is undefined, else 0; the error text
    /// then tells why.
    int init() noexcept;
    /// Reads the given text instead. A failure leaves `isDefined` as it was; the texts then are empty all the same.
    int init(const SV::String& text) noexcept;

    // Empty until a complete record has been read, and after a failure.
    [[nodiscard]] SV::String getBPText() const noexcept;
    [[nodiscard]] SV::String getCycleTimeText() const noexcept;
    [[nodiscard]] SV::String getActivityText() const noexcept;
    [[nodiscard]] SV::String getNumberText() const noexcept;
    [[nodiscard]] SV::String getActorText() const noexcept;
    [[nodiscard]] SV::String getPersCostText() const noexcept;
    [[nodiscard]] SV::String getResourceText() const noexcept;
    [[nodiscard]] SV::String getResCostText() const noexcept;

    /// The record as keyword text; of a handler without texts one that says that they are undefined.
    [[nodiscard]] SV::String getSimTextKEX() const noexcept;
    /// Empty while a complete record is in force.
    [[nodiscard]] SV::String getErrorText() const noexcept;
    /// Where in the text the error stands; no place for an error of the text as a whole.
    [[nodiscard]] QorKexPosition errorPosition() const noexcept { return _errorPosition; }
    /// 1 or 0.
    [[nodiscard]] int isDefined() const noexcept { return _defined; }

protected:
    int initKEX(const SV::String& text) noexcept;

private:
    int readLibrary();
    int readRecord();
    int orFailed(int result) noexcept;
    int fail(QorKexPosition position, SV::String text);
    [[nodiscard]] bool hasTexts() const noexcept { return _parser != nullptr && _defined == 1 && _error == 0; }
    [[nodiscard]] SV::String textOf(std::string_view key) const noexcept;

    long _library;
    std::unique_ptr<QorKexParser> _parser;
    std::int32_t _defined = 0;
    std::int32_t _error = 0;
    SV::String _errorText;
    QorKexPosition _errorPosition;
};
