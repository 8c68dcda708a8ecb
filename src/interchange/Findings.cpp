// SPDX-License-Identifier: Apache-2.0
#include "interchange/Findings.h"

#include <algorithm>
#include <tuple>

#include "interchange/Wording.h"

namespace qor::interchange {

Findings::Findings(std::string file, Places& places) : _file(std::move(file)), _places(places) {
    _places.beginFile(_file);
    _models.reserve(8);
}

Findings::~Findings() = default;

void Findings::report(QorSeverity severity, std::uint32_t line, std::uint32_t column, std::string text,
                      std::vector<QorMention> mentions) {
    std::size_t& count = severity == QorSeverity::Error ? _errors : _warnings;
    if (++count <= kKept)
        _diagnostics.push_back({severity, {_file, line, column}, std::move(text), std::move(mentions)});
}

bool Findings::tooMany(Mark mark) {
    if (_errors < kKept) return false;
    ++_errors;
    _ended = true;
    _diagnostics.push_back({QorSeverity::Error, {_file, mark.line, mark.column}, "too many errors: reading ends here"});
    return true;
}

bool Findings::hasErrorAt(std::uint32_t line, std::uint32_t column) const {
    return std::any_of(_diagnostics.begin(), _diagnostics.end(), [line, column](const QorDiagnostic& known) {
        return known.severity == QorSeverity::Error && known.place.line == line && known.place.column == column;
    });
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
