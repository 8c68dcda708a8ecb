// SPDX-License-Identifier: Apache-2.0
#include "simcal/QorDistribution.h"

#include <optional>
#include <string>
#include <utility>

#include "platform/QorGuard.h"
#include "platform/QorRandomGenerator.h"
#include "simcal/DistributionText.h"

namespace {

using qor::simcal::DistributionKeywords;

template <class Call>
int guarded(Call&& call) noexcept {
    return Qor_Guarded("distribution", 0, [&]() -> int { return std::forward<Call>(call)() ? 1 : 0; });
}

bool storeWhenFound(std::optional<double> found, double& expectation) {
    if (found) expectation = *found;
    return found.has_value();
}

bool storeWhenFound(std::optional<std::string> found, SV::String& text) {
    if (found) text = SV::String(std::move(*found));
    return found.has_value();
}

int copyWhen(int valid, const SV::String& from, SV::String& to) noexcept {
    return guarded([&] {
        if (valid != 0) to = SV::String(from);
        return valid != 0;
    });
}

}  // namespace

QorDistribution::QorDistribution() noexcept = default;

QorDistribution::QorDistribution(const QorDistribution& other) noexcept : _generator(other._generator) {
    Qor_Guarded("distribution", [&] { _text = other._text; });
}

void QorDistribution::copyFrom(const QorDistribution& other) {
    _text = other._text;
    _generator = other._generator;
}

void QorDistribution::clear() noexcept {
    if (_ownsGenerator) delete _generator;
    _generator = nullptr;
    _ownsGenerator = false;
    _text = SV::String();
}

QorDistribution::~QorDistribution() { clear(); }

int QorDistribution::getDistributionString(SV::String& text) const noexcept {
    return copyWhen(_text.IsEmpty() ? 0 : 1, _text, text);
}

int QorDistribution::setDistributionString(const SV::String& text) noexcept {
    if (!_text.IsEmpty()) return 0;
    return copyWhen(isDistribution(text), text, _text);
}

int QorDistribution::getDistributionStringInUIRep(SV::String& text) const noexcept {
    return getDistributionString(text);
}

int QorDistribution::getRandomGenerator(QorRandomGenerator*& generator) const noexcept {
    generator = _generator;
    return _generator != nullptr ? 1 : 0;
}

int QorDistribution::setRandomGenerator(QorRandomGenerator* generator) noexcept {
    if (_generator != nullptr || generator == nullptr) return 0;
    _generator = generator;
    _ownsGenerator = true;
    return 1;
}

int QorDistribution::isDistribution(const SV::String& text) noexcept {
    return guarded([&] {
        const DistributionKeywords keywords;
        return qor::simcal::boundsOfLong(text, keywords.uniform) ||
               qor::simcal::parameterOfLong(text, keywords.exponential);
    });
}

int QorDistribution::isUniform(const SV::String& text) noexcept {
    return guarded([&] { return qor::simcal::boundsOfLong(text, DistributionKeywords().uniform).has_value(); });
}

int QorDistribution::isExponential(const SV::String& text) noexcept {
    return guarded([&] { return qor::simcal::parameterOfLong(text, DistributionKeywords().exponential).has_value(); });
}

int QorDistribution::getLongDistributionString(const SV::String& shortText, SV::String& longText) noexcept {
    return guarded(
        [&] { return storeWhenFound(qor::simcal::longOfShort(shortText, DistributionKeywords()), longText); });
}

int QorDistribution::getLongUniformDistributionString(const SV::String& shortText, SV::String& longText) noexcept {
    return guarded([&] {
        const auto bounds = qor::simcal::boundsOfShort(shortText);
        if (bounds) longText = qor::simcal::longUniform(*bounds, DistributionKeywords().uniform);
        return bounds.has_value();
    });
}

int QorDistribution::getLongExponentialDistributionString(const SV::String& shortText, SV::String& longText) noexcept {
    return guarded([&] {
        const auto parameter = qor::simcal::parameterOfShort(shortText);
        if (parameter) longText = qor::simcal::longExponential(*parameter, DistributionKeywords().exponential);
        return parameter.has_value();
    });
}

int QorDistribution::getShortDistributionString(const SV::String& longText, SV::String& shortText) noexcept {
    return guarded(
        [&] { return storeWhenFound(qor::simcal::shortOfLong(longText, DistributionKeywords()), shortText); });
}

int QorDistribution::getShortUniformDistributionString(const SV::String& longText, SV::String& shortText) noexcept {
    return guarded([&] {
        const auto bounds = qor::simcal::boundsOfLong(longText, DistributionKeywords().uniform);
        if (bounds) shortText = qor::simcal::shortUniform(*bounds);
        return bounds.has_value();
    });
}

int QorDistribution::getShortExponentialDistributionString(const SV::String& longText, SV::String& shortText) noexcept {
    return guarded([&] {
        const auto parameter = qor::simcal::parameterOfLong(longText, DistributionKeywords().exponential);
        if (parameter) shortText = qor::simcal::shortExponential(*parameter);
        return parameter.has_value();
    });
}

int QorDistribution::convertLongDistributionStringInUIRep(const SV::String& longText, SV::String& shown) noexcept {
    return copyWhen(isDistribution(longText), longText, shown);
}

int QorDistribution::convertLongUniformDistributionStringInUIRep(const SV::String& longText,
                                                                 SV::String& shown) noexcept {
    return copyWhen(isUniform(longText), longText, shown);
}

int QorDistribution::convertUIRepInLongDistributionString(const SV::String& shown, SV::String& longText) noexcept {
    return copyWhen(isDistribution(shown), shown, longText);
}

int QorDistribution::convertUIRepInLongUniformDistributionString(const SV::String& shown,
                                                                 SV::String& longText) noexcept {
    return copyWhen(isUniform(shown), shown, longText);
}

int QorDistribution::getExpectation(const SV::String& text, double& expectation) noexcept {
    return guarded(
        [&] { return storeWhenFound(qor::simcal::expectationOfLong(text, DistributionKeywords()), expectation); });
}

int QorDistribution::getExpectationOfUniformDistribution(const SV::String& text, double& expectation) noexcept {
    return guarded([&] {
        return storeWhenFound(qor::simcal::expectationOfUniform(text, DistributionKeywords().uniform), expectation);
    });
}

int QorDistribution::getExpectationOfExponentialDistribution(const SV::String& text, double& expectation) noexcept {
    return guarded([&] {
        return storeWhenFound(qor::simcal::expectationOfExponential(text, DistributionKeywords().exponential),
                              expectation);
    });
}
