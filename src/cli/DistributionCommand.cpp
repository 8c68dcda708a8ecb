// SPDX-License-Identifier: Apache-2.0
#include "cli/DistributionCommand.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>

#include "cli/Console.h"
#include "cli/InputFiles.h"
#include "cli/JsonWriter.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "simcal/QorDistribution.h"

namespace qor::cli {

namespace {

/// All that is to be known about a text in either form; nothing when it has neither.
struct Distribution {
    SV::String longText;
    SV::String shortText;
    std::string mean;  ///< as few digits as name the number; empty when it exceeds every number
};

/// The shortest decimal that reads back as the same number, whatever the locale.
std::string meanText(const SV::String& longText) {
    double mean = 0;
    if (QorDistribution::getExpectation(longText, mean) == 0 || !std::isfinite(mean)) return {};
    std::array<char, 64> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), mean).ptr;
    return {digits.data(), end};
}

std::optional<Distribution> understand(const std::string& text) {
    Distribution found;
    if (QorDistribution::isDistribution(text) != 0)
        found.longText = text;
    else if (QorDistribution::getLongDistributionString(text, found.longText) == 0)
        return std::nullopt;
    // A short text can have its bounds in the wrong order; then the way back is barred.
    if (QorDistribution::getShortDistributionString(found.longText, found.shortText) == 0) return std::nullopt;
    found.mean = meanText(found.longText);
    return found;
}

std::string firstLineOfInput() {
    std::string line;
    for (int c = std::getchar(); c != EOF && c != '\n'; c = std::getchar()) line += static_cast<char>(c);
    return line;
}

void writeJson(const DistributionOptions& options, const std::string& text, const std::optional<Distribution>& found,
               Console& console) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view piece) { console.out(piece); });
    json.beginObject().field("schema", "qor.distribution/1").field("command", std::string_view(options.verb));
    json.field("text", std::string_view(text)).field("valid", found.has_value());
    json.field("long", found ? std::optional(found->longText.str()) : std::nullopt);
    json.field("short", found ? std::optional(found->shortText.str()) : std::nullopt);
    json.field("mean", found && !found->mean.empty() ? std::optional(found->mean) : std::nullopt).endObject();
}

std::string asked(const std::string& verb, const Distribution& found) {
    if (verb == "short") return found.shortText.str();
    if (verb == "mean") return found.mean.empty() ? "too large for a number" : found.mean;
    return found.longText.str();
}

}  // namespace

Exit runDistribution(const DistributionOptions& options, Console& console) {
    QorEmbeddedOptions platformOptions;
    platformOptions.language = options.language;
    const QorEmbeddedPlatform platform(platformOptions);
    const QorHostInstallation installation(platform.host());

    const std::string text = options.text == kStandardInput ? firstLineOfInput() : options.text;
    const auto found = understand(text);
    if (options.json)
        writeJson(options, text, found, console);
    else if (found)
        console.out(printable(asked(options.verb, *found)) + '\n');
    if (!found && !options.json) {
        SV::String uniform;
        SV::String exponential;
        (void)QorDistribution::getLongDistributionString("U3;7", uniform);
        (void)QorDistribution::getLongDistributionString("E0.5", exponential);
        console.err(
            fmt::format("qor: {} {} is no distribution: {} or U3;7, {} or E0.5; the lower bound below the "
                        "upper one, the parameter above 0 and at most 1\n",
                        console.errColours().error("error:"), quoted(text), uniform.view(), exponential.view()));
    }
    return found ? Exit::Clean : Exit::BadInput;
}

}  // namespace qor::cli
