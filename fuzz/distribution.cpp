// SPDX-License-Identifier: Apache-2.0
// Any bytes as a long and as a short text of a distribution. A valid long text must come back from its short form with
// the same short form and expectation; both ways must agree on what is valid.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/QorHost.h"
#include "platform/QorInternational.h"
#include "simcal/QorDistribution.h"

namespace {

void demand(bool condition) {
    if (!condition) std::abort();
}

class Texts : public QorMessageTexts {
    const char* text(unsigned short number) const override { return number == 14000 ? "Exponential" : "Uniform"; }
};

void checkLong(const SV::String& text) {
    SV::String shortText;
    SV::String shown;
    double expectation = 0;
    const bool valid = QorDistribution::isDistribution(text) == 1;
    demand(QorDistribution::getShortDistributionString(text, shortText) == (valid ? 1 : 0));
    demand(QorDistribution::convertLongDistributionStringInUIRep(text, shown) == (valid ? 1 : 0));
    demand(QorDistribution().setDistributionString(text) == (valid ? 1 : 0));
    if (!valid) {
        demand(QorDistribution::getExpectation(text, expectation) == 0);
        return;
    }
    SV::String longText;
    SV::String shortAgain;
    double again = 0;
    demand(shown == text && QorDistribution::getLongDistributionString(shortText, longText) == 1);
    demand(QorDistribution::getShortDistributionString(longText, shortAgain) == 1 && shortAgain == shortText);
    demand(QorDistribution::getExpectation(text, expectation) == QorDistribution::getExpectation(longText, again));
    demand(expectation == again);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Texts texts;
    QorHost host;
    host.texts = const_cast<Texts*>(&texts);
    const QorHostInstallation installation(host);

    const SV::String text(std::string(reinterpret_cast<const char*>(data), size));
    checkLong(text);
    SV::String longText;
    if (QorDistribution::getLongDistributionString(text, longText) == 1) checkLong(longText);
    return 0;
}
