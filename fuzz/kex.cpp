// SPDX-License-Identifier: Apache-2.0
// Any bytes as a keyword text. What parses is written anew from its parts and must parse to the same parts; what does
// not must say so at a place inside the text. The bytes also serve as a string value and as numbers of times and
// lengths.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/KexAmounts.h"
#include "platform/KexParser.h"
#include "platform/KexPositions.h"
#include "platform/KexStrings.h"
#include "platform/QorKexParser.h"

namespace {

using namespace qor::platform::kex;

void demand(bool condition) {
    if (!condition) std::abort();
}

std::string writtenValue(const Value& value) {
    switch (value.kind) {
        case QorKexValueKind::None:
            return "";
        case QorKexValueKind::String:
            return quoted(value.text);
        case QorKexValueKind::Word:
            return std::string(value.text);
        case QorKexValueKind::Integer:
            return std::to_string(value.number);
        case QorKexValueKind::TimeOrLength:
            return writtenMoment(static_cast<std::int32_t>(value.number));
    }
    std::abort();
}

std::string written(const std::string& text, const Document& document) {
    std::string out;
    for (std::size_t i = 0; i < document.elements.size(); ++i) {
        const Element& element = document.elements[i];
        const bool last = i + 1 == document.elements.size();
        const std::size_t end = last ? document.keys.size() : document.elements[i + 1].firstKey;
        out.append(Document::wordAt(text, element.name)).append(writtenValue(document.valueAt(text, element.value)));
        for (std::size_t k = element.firstKey; k < end; ++k) {
            const Key& key = document.keys[k];
            const auto name = Document::wordAt(text, key.name);
            demand(document.find(text, i, name) == &key);
            out.append("\n").append(name);
            if (key.value != 0) out.append(":").append(writtenValue(document.valueAt(text, key.value)));
        }
        out += '\n';
    }
    return out;
}

// The last key's position, counted another way: from the number of line ends in front of it.
void positionAgrees(const std::string& text, std::size_t offset) {
    QorKexPosition counted{1, static_cast<std::uint32_t>(offset + 1)};
    for (std::size_t at = offset; at-- > 0;) {
        if (text[at] != '\n' && !(text[at] == '\r' && text[at + 1] != '\n')) continue;
        if (counted.line++ == 1) counted.column = static_cast<std::uint32_t>(offset - at);
    }
    Positions positions;
    const QorKexPosition found = positions.of(text, offset);
    demand(found.line == counted.line && found.column == counted.column);
}

void textSurvives(const std::string& text) {
    QorKexParser parser{SV::String(text), SV::String("fuzz")};
    Document document;
    document.clear();
    const auto error = parse(text, document);
    demand((parser.Parse() == 0) == !error);
    demand(parser.GetErrorText().IsEmpty() == !error);
    if (error) {
        demand(error->at <= text.size());
        return;
    }
    demand(parser.GetElemCount() == document.elements.size());
    if (!document.keys.empty()) positionAgrees(text, document.keys.back().name);

    const std::string anew = written(text, document);
    Document again;
    again.clear();
    demand(!parse(anew, again));
    demand(written(anew, again) == anew);
    demand(again.elements.size() == document.elements.size() && again.keys.size() == document.keys.size());
}

void stringReadsBack(const std::string& bytes) {
    QorKexParser parser{"A k:" + QorKexParser::GetKexTextOfStrValue(bytes), SV::String("fuzz")};
    demand(parser.Parse() == 0 && parser.GetStrView("k") == bytes);
    const QorKexParser copy(parser);
    parser.SetText("");
    demand(copy.GetStrView("k") == bytes);
}

void momentReadsBack(std::int32_t moment) {
    QorKexParser parser{"A k:" + QorKexParser::GetKexTextOfTMMValue(moment), SV::String("fuzz")};
    demand(parser.Parse() == 0 && parser.GetValueTMM("k") == moment);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    textSurvives(bytes);
    stringReadsBack(bytes);
    std::int32_t moment = 0;
    if (size >= sizeof moment) {
        std::memcpy(&moment, data, sizeof moment);
        momentReadsBack(moment);
    }
    return 0;
}
