// SPDX-License-Identifier: Apache-2.0
#include "interchange/Findings.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <tuple>

#include "interchange/Wording.h"

namespace qor::interchange {

namespace {

// Around the number of a spare name; a noncharacter of Unicode.
constexpr std::string_view kSpareMark = "\xEF\xBF\xBE";

}  // namespace

Findings::Findings(std::string file, Places& places) : _file(std::move(file)), _places(places) {
    _places.beginFile(_file);
    _models.reserve(8);
}

Findings::~Findings() = default;

void Findings::report(QorSeverity severity, std::uint32_t line, std::uint32_t column, std::string text,
                      std::vector<QorMention> mentions) {
    std::size_t& count = severity == QorSeverity::Error ? _errors : _warnings;
    if (++count <= kKept)
        _diagnostics.push_back({severity, {_file, line, column}, asWritten(std::move(text)), std::move(mentions)});
}

bool Findings::tooMany(Mark mark) {
    if (_errors < kKept) return false;
    ++_errors;
    _ended = true;
    _diagnostics.push_back({QorSeverity::Error, {_file, mark.line, mark.column}, "too many errors: reading ends here"});
    return true;
}

std::set<std::pair<std::uint32_t, std::uint32_t>> Findings::errorPlaces() const {
    std::set<std::pair<std::uint32_t, std::uint32_t>> places;
    for (const QorDiagnostic& known : _diagnostics)
        if (known.severity == QorSeverity::Error) places.emplace(known.place.line, known.place.column);
    return places;
}

std::string Findings::spareName(std::string_view written) {
    const std::string shown = inQuotes(written);
    _written.push_back(shown.substr(1, shown.size() - 2));
    return concat({kSpareMark, std::to_string(_written.size() - 1), kSpareMark});
}

std::string Findings::asWritten(std::string text) const {
    for (std::size_t at = text.find(kSpareMark); at != std::string::npos; at = text.find(kSpareMark, at)) {
        const char* const digits = text.data() + at + kSpareMark.size();
        std::size_t number = _written.size();
        const auto [end, problem] = std::from_chars(digits, text.data() + text.size(), number);
        const auto behind = static_cast<std::size_t>(end - text.data());
        const bool isSpare = problem == std::errc() && number < _written.size() &&
                             text.compare(behind, kSpareMark.size(), kSpareMark) == 0;
        if (!isSpare) {
            at += kSpareMark.size();
            continue;
        }
        text.replace(at, behind + kSpareMark.size() - at, _written[number]);
        at += _written[number].size();
    }
    return text;
}

void Findings::madeModel(QorIdentifier model) {
    _models.push_back(model);
    // There is room before the next model is made, so that none can be made and then not be known.
    if (_models.size() == _models.capacity()) _models.reserve(_models.size() * 2);
}

void Findings::madeProcess(std::string_view sourceId, QorIdentifier model) {
    _processes.push_back({std::string(sourceId), model});
}

void Findings::madeThing(QorIdentifier thing, std::uint32_t line, std::uint32_t column, std::string_view sourceId) {
    _places.add(thing, {line, column}, sourceId);
}

std::vector<QorDiagnostic> Findings::takeDiagnostics() {
    std::stable_sort(
        _diagnostics.begin(), _diagnostics.end(), [](const QorDiagnostic& one, const QorDiagnostic& other) {
            return std::tie(one.place.line, one.place.column) < std::tie(other.place.line, other.place.column);
        });
    for (const bool errors : {true, false}) {
        const auto severity = errors ? QorSeverity::Error : QorSeverity::Warning;
        const std::size_t count = errors ? _errors : _warnings;
        if (count <= kKept || (errors && _ended)) continue;
        _diagnostics.push_back({severity,
                                {_file, 0, 0},
                                concat({"\xE2\x80\xA6 and ", std::to_string(count - kKept), " more ",
                                        errors ? "error" : "warning", count - kKept == 1 ? "" : "s"})});
    }
    return std::move(_diagnostics);
}

}  // namespace qor::interchange
