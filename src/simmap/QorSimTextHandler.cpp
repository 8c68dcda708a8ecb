// SPDX-License-Identifier: Apache-2.0
#include "simmap/QorSimTextHandler.h"

#include <array>
#include <new>
#include <string>
#include <utility>

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorGuard.h"
#include "platform/QorMessage.h"
#include "simmap/KexValues.h"
#include "simmap/internalErrors.h"
#include "simmap/messages.h"

using namespace qor::simmap;
namespace frame = qor::frame;

namespace {

constexpr std::string_view kElement = "SIMTEXT";
constexpr std::string_view kUndefined = "undefined";

// In the order in which the record is written and tested.
constexpr std::array<std::string_view, 8> kKeys = {"bp",    "cycletime", "activity", "number",
                                                   "actor", "perscost",  "resource", "rescost"};

SV::String incomplete(std::string_view what) { return Qor_Message(message::textRecordIncomplete, {{"%s", what}}); }

}  // namespace

QorSimTextHandler::QorSimTextHandler(const long& libraryId) : _library(libraryId) {}

QorSimTextHandler::QorSimTextHandler(const QorSimTextHandler& other) noexcept : _library(other._library) {
    *this = other;
}

/// Without memory for a copy the handler is as one that has not read anything.
QorSimTextHandler& QorSimTextHandler::operator=(const QorSimTextHandler& other) noexcept {
    if (this == &other) return *this;
    _library = other._library;
    _parser.reset();
    _defined = 0;
    Qor_Guarded(kTextSource, [&] {
        _errorText = other._errorText;
        _errorPosition = other._errorPosition;
        if (other._parser) _parser = std::make_unique<QorKexParser>(*other._parser);
        if (_parser && _parser->GetElemCount() != other._parser->GetElemCount()) throw std::bad_alloc();
        _error = other._error;
        _defined = other._defined;
    });
    return *this;
}

QorSimTextHandler::~QorSimTextHandler() = default;

int QorSimTextHandler::init() noexcept {
    return orFailed(Qor_Guarded(kTextSource, 0, [this] { return readLibrary(); }));
}

/// Marks the handler as failed also when there was no memory to say why.
int QorSimTextHandler::orFailed(int result) noexcept {
    if (result == 0) _error = 1;
    return result;
}

int QorSimTextHandler::readLibrary() {
    if (_library == 0) {
        reportInternalError(TextLine::NoLibrary);
        return fail({}, Qor_Message(message::repositoryFailed));
    }
    const auto text = frame::readText(_library, QorAttributeId::SimulationText);
    if (!text) {
        reportInternalError(TextLine::Text);
        return fail({}, Qor_Message(message::repositoryFailed));
    }
    return init(*text);
}

int QorSimTextHandler::init(const SV::String& text) noexcept {
    if (!text.IsEmpty()) return initKEX(text);
    _defined = 0;
    return orFailed(Qor_Guarded(kTextSource, 0, [this] { return fail({}, Qor_Message(message::noTextsDefined)); }));
}

int QorSimTextHandler::initKEX(const SV::String& text) noexcept {
    return orFailed(Qor_Guarded(kTextSource, 0, [&] {
        const auto attributeName = frame::nameOfAttribute(QorAttributeId::SimulationText);
        if (!attributeName) reportInternalError(TextLine::AttributeName);
        const auto libraryName = frame::readText(_library, QorAttributeId::Name);
        if (!libraryName) reportInternalError(TextLine::LibraryName);
        _parser = std::make_unique<QorKexParser>(text, attributeName.value_or(SV::String()),
                                                 libraryName.value_or(SV::String()));
        return readRecord();
    }));
}

int QorSimTextHandler::readRecord() {
    if (_parser->Parse() != 0) return fail(_parser->GetErrorPosition(), _parser->GetErrorText());
    _parser->SetCurElemIndex(0);
    if (_parser->GetCurElemNameView() != kElement) return fail(_parser->GetCurElemPosition(), incomplete(kElement));
    if (_parser->IsContained(kUndefined)) {
        _defined = 0;
        _errorText = Qor_Message(message::noTextsDefined);
        _errorPosition = {};
        return 1;  // the error flag deliberately stays: whoever met an error before still has it
    }
    // Of several missing keys the message names the last one.
    std::string_view missing;
    for (const auto key : kKeys)
        if (!_parser->IsContained(key)) missing = key;
    if (!missing.empty()) return fail(_parser->GetCurElemPosition(), incomplete(missing));
    _defined = 1;
    _error = 0;
    _errorPosition = {};
    return 1;
}

int QorSimTextHandler::fail(QorKexPosition position, SV::String text) {
    _error = 1;
    _errorText = std::move(text);
    _errorPosition = position;
    return 0;
}

SV::String QorSimTextHandler::textOf(std::string_view key) const noexcept {
    if (!hasTexts()) return {};
    return Qor_Guarded(kTextSource, SV::String(), [&] {
        _parser->SetCurElemIndex(0);
        return valueOrEmpty(*_parser, key);
    });
}

SV::String QorSimTextHandler::getBPText() const noexcept { return textOf("bp"); }
SV::String QorSimTextHandler::getCycleTimeText() const noexcept { return textOf("cycletime"); }
SV::String QorSimTextHandler::getActivityText() const noexcept { return textOf("activity"); }
SV::String QorSimTextHandler::getNumberText() const noexcept { return textOf("number"); }
SV::String QorSimTextHandler::getActorText() const noexcept { return textOf("actor"); }
SV::String QorSimTextHandler::getPersCostText() const noexcept { return textOf("perscost"); }
SV::String QorSimTextHandler::getResourceText() const noexcept { return textOf("resource"); }
SV::String QorSimTextHandler::getResCostText() const noexcept { return textOf("rescost"); }

SV::String QorSimTextHandler::getSimTextKEX() const noexcept {
    return Qor_Guarded(kTextSource, SV::String(), [this] {
        if (!hasTexts()) return SV::String("SIMTEXT\nundefined");
        std::string text(kElement);
        _parser->SetCurElemIndex(0);
        for (const auto key : kKeys) {
            text.append("\n").append(key).append(":");
            text += quotedValue(_parser->GetStrView(key).value_or(std::string_view())).view();
        }
        return SV::String(std::move(text));
    });
}

SV::String QorSimTextHandler::getErrorText() const noexcept {
    if (_error == 0 && _defined == 1) return {};
    return Qor_Guarded(kTextSource, SV::String(), [this] { return _errorText; });
}
