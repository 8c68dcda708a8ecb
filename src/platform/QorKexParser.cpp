// SPDX-License-Identifier: Apache-2.0
#include "platform/QorKexParser.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include "platform/KexAmounts.h"
#include "platform/KexDocument.h"
#include "platform/KexParser.h"
#include "platform/KexPositions.h"
#include "platform/KexStrings.h"
#include "platform/QorErrorBox.h"
#include "platform/QorGuard.h"
#include "platform/QorWindows.h"
#include "platform/SvWindow.h"

namespace kex = qor::platform::kex;

/// Null in a parser only when there was no memory for it.
struct QorKexParser::Impl {
    SV::String text;
    SV::String attributeName;
    SV::String ownerName;

    kex::Document document;  // empty unless the last Parse succeeded and worked on this text
    mutable kex::Positions positions;
    std::size_t current = 0;

    std::size_t elementCount = 0;
    SV::String error;
    QorKexPosition errorPosition;

    const kex::Element* element() const {
        return current < document.elements.size() ? &document.elements[current] : nullptr;
    }
    const kex::Key* key(std::string_view name) const {
        return element() == nullptr ? nullptr : document.find(text, current, name);
    }
    std::string_view word(std::uint32_t at) const { return kex::Document::wordAt(text, at); }
    kex::Value valueOf(std::string_view name) const {
        const kex::Key* const found = key(name);
        return found == nullptr ? kex::Value() : document.valueAt(text, found->value);
    }
    QorKexPosition position(std::uint32_t at) const { return positions.of(text, at); }

    void forgetResults() {
        document.clear();
        positions.clear();
        current = 0;
    }

    bool parse() {
        const auto found = kex::parse(text.str(), document);
        if (!found) return true;
        errorPosition = kex::positionOf(text, found->at);
        error = written(errorPosition) + ": " + found->complaint;
        return false;
    }

    static std::string written(QorKexPosition position) {
        return "line " + std::to_string(position.line) + ", column " + std::to_string(position.column);
    }

    std::string sources() const {
        if (ownerName.IsEmpty()) return attributeName.str();
        if (attributeName.IsEmpty()) return ownerName.str();
        return attributeName.str() + " (" + ownerName.str() + ")";
    }
};

namespace {

// Short enough to be stored without memory of its own.
constexpr const char* kOutOfMemory = "out of memory";

constexpr const char* kSource = "kexparser";

SV::String copied(std::string_view view) noexcept {
    return Qor_Guarded(kSource, SV::String(), [view] { return SV::String(view); });
}

std::optional<std::string_view> stringOf(const kex::Value& value) {
    return value.kind == QorKexValueKind::String ? std::optional(value.text) : std::nullopt;
}

}  // namespace

QorKexParser::QorKexParser(SV::String text, SV::String attributeName, SV::String ownerName)
    : _impl(new (std::nothrow) Impl) {
    if (!_impl) return;
    _impl->text = std::move(text);
    _impl->attributeName = std::move(attributeName);
    _impl->ownerName = std::move(ownerName);
}

QorKexParser::QorKexParser(SV::String text, SV::String title)
    : QorKexParser(std::move(text), std::move(title), SV::String()) {}

QorKexParser::QorKexParser(const QorKexParser& other) { *this = other; }

QorKexParser& QorKexParser::operator=(const QorKexParser& other) {
    if (this == &other) return *this;
    const auto copy = [&other] { return other._impl ? std::make_unique<Impl>(*other._impl) : nullptr; };
    _impl = Qor_Guarded(kSource, std::unique_ptr<Impl>(), copy);
    return *this;
}

QorKexParser::~QorKexParser() = default;

void QorKexParser::SetText(SV::String text) {
    if (!_impl) _impl.reset(new (std::nothrow) Impl);
    if (!_impl) return;
    _impl->forgetResults();
    _impl->text = std::move(text);
}

long QorKexParser::Parse() {
    if (!_impl) return 1;
    Impl& impl = *_impl;
    impl.forgetResults();
    impl.error = SV::String(kOutOfMemory);
    impl.errorPosition = {};
    if (!Qor_Guarded(kSource, false, [&impl] { return impl.parse(); })) {
        impl.document.clear();
        return 1;
    }
    impl.error.Clear();
    impl.elementCount = impl.document.elements.size();
    return 0;
}

unsigned long QorKexParser::GetElemCount() const { return _impl ? _impl->elementCount : 0; }

bool QorKexParser::SetCurElemIndex(unsigned long index) {
    if (!_impl || index >= _impl->document.elements.size()) return false;
    _impl->current = index;
    return true;
}

SV::String QorKexParser::GetCurElemName() const { return copied(GetCurElemNameView()); }

std::string_view QorKexParser::GetCurElemNameView() const {
    const kex::Element* const element = _impl ? _impl->element() : nullptr;
    return element != nullptr ? _impl->word(element->name) : std::string_view();
}

QorKexPosition QorKexParser::GetCurElemPosition() const {
    const kex::Element* const element = _impl ? _impl->element() : nullptr;
    if (element == nullptr) return {};
    return Qor_Guarded(kSource, QorKexPosition(), [&] { return _impl->position(element->name); });
}

bool QorKexParser::IsContained(std::string_view key) const { return _impl && _impl->key(key) != nullptr; }

std::string_view QorKexParser::GetKeyView(unsigned long index) const {
    if (!_impl || _impl->element() == nullptr) return {};
    const auto keys = _impl->document.keysOf(_impl->current);
    return index < keys.size() ? _impl->word(keys[index].name) : std::string_view();
}

QorKexValueKind QorKexParser::GetValueKind(std::string_view key) const {
    return _impl ? _impl->valueOf(key).kind : QorKexValueKind::None;
}

QorKexPosition QorKexParser::GetKeyPosition(std::string_view key) const {
    const kex::Key* const found = _impl ? _impl->key(key) : nullptr;
    if (found == nullptr) return {};
    return Qor_Guarded(kSource, QorKexPosition(), [&] { return _impl->position(found->name); });
}

SV::String QorKexParser::GetStrValue(std::string_view key) const {
    return copied(GetStrView(key).value_or(std::string_view()));
}

SV::String QorKexParser::GetStrValue() const { return copied(GetStrView().value_or(std::string_view())); }

bool QorKexParser::TryGetStrValue(std::string_view key, SV::String& value) const {
    if (!IsContained(key)) return false;
    value = GetStrValue(key);
    return true;
}

std::optional<std::string_view> QorKexParser::GetStrView(std::string_view key) const {
    return stringOf(_impl ? _impl->valueOf(key) : kex::Value());
}

std::optional<std::string_view> QorKexParser::GetStrView() const {
    const kex::Element* const element = _impl ? _impl->element() : nullptr;
    return stringOf(element != nullptr ? _impl->document.valueAt(_impl->text, element->value) : kex::Value());
}

long QorKexParser::GetIntValue(std::string_view key) const {
    const auto value = _impl ? _impl->valueOf(key) : kex::Value();
    return value.kind == QorKexValueKind::Integer ? value.number : 0;
}

SV::String QorKexParser::GetModifier(std::string_view key) const {
    const auto value = _impl ? _impl->valueOf(key) : kex::Value();
    return value.kind == QorKexValueKind::Word ? copied(value.text) : SV::String();
}

long QorKexParser::GetValueTMM(std::string_view key) const {
    const auto value = _impl ? _impl->valueOf(key) : kex::Value();
    return value.kind == QorKexValueKind::TimeOrLength ? value.number : 0;
}

SV::String QorKexParser::GetKexTextOfStrValue(std::string_view text) {
    return Qor_Guarded(kSource, SV::String(), [text] { return SV::String(kex::quoted(text)); });
}

SV::String QorKexParser::GetKexTextOfTMMValue(long value) {
    using Limits = std::numeric_limits<std::int32_t>;
    const auto moment = static_cast<std::int32_t>(std::clamp<long>(value, Limits::min(), Limits::max()));
    return Qor_Guarded(kSource, SV::String(), [moment] { return SV::String(kex::writtenMoment(moment)); });
}

const SV::String& QorKexParser::GetErrorText() const {
    static const SV::String outOfMemory(kOutOfMemory);
    return _impl ? _impl->error : outOfMemory;
}

SV::String QorKexParser::GetErrorReason() const {
    constexpr std::string_view kBehindPosition = ": ";
    const std::string_view error = GetErrorText().view();
    if (GetErrorPosition().line == 0) return error;
    return error.substr(error.find(kBehindPosition) + kBehindPosition.size());
}

QorKexPosition QorKexParser::GetErrorPosition() const { return _impl ? _impl->errorPosition : QorKexPosition(); }

void QorKexParser::MakeErrorText(SV::String& text) const {
    Qor_Guarded(kSource, [&] {
        std::string report = _impl ? _impl->sources() : std::string();
        const auto add = [&report](std::string_view more) {
            if (!report.empty()) report += ": ";
            report += more;
        };
        const QorKexPosition element = GetCurElemPosition();
        if (!GetErrorText().IsEmpty()) {
            add(GetErrorText());
        } else if (element.line != 0) {
            add(Impl::written(element));
        }
        text += report;
    });
}

void QorKexParser::ShowErrorBox() const {
    SV::String report;
    MakeErrorText(report);
    QorErrorBox(SV::Application::GetTopWindow(), QorBoxStyle::Error, std::move(report))
        .Execute(QorErrorBoxType::Standard);
}
