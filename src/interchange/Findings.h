// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "interchange/ImportSink.h"
#include "interchange/Places.h"
#include "interchange/Tree.h"

namespace qor::interchange {

/// What the reading of one file brings forth: diagnostics, of which the first thousand of each severity are kept, and
/// models with the places of their things.
class Findings final : public ImportSink {
public:
    Findings(std::string file, Places& places);
    ~Findings() override;

    void report(QorSeverity severity, std::uint32_t line, std::uint32_t column, std::string text,
                std::vector<QorMention> mentions = {}) override;
    void madeModel(QorIdentifier model) override;
    void madeProcess(std::string_view sourceId, QorIdentifier model) override;
    void madeThing(QorIdentifier thing, std::uint32_t line, std::uint32_t column, std::string_view sourceId) override;

    void error(Mark mark, std::string text) { report(QorSeverity::Error, mark.line, mark.column, std::move(text)); }
    [[nodiscard]] bool hasErrors() const { return _errors != 0; }
    /// For a reader that would rather not go on when there are too many errors; says so in a last one.
    [[nodiscard]] bool tooMany(Mark mark);
    [[nodiscard]] bool hadTooMany() const { return _ended; }
    /// The file cannot be read to its end.
    void breakOff() { _brokeOff = true; }
    [[nodiscard]] bool brokeOff() const { return _brokeOff; }
    /// Lines and columns of the errors so far.
    [[nodiscard]] std::set<std::pair<std::uint32_t, std::uint32_t>> errorPlaces() const;

    /// A name that nobody writes, for a thing that cannot have the one that was written; messages show the latter.
    [[nodiscard]] std::string spareName(std::string_view written);

    [[nodiscard]] Places& places() { return _places; }
    [[nodiscard]] const std::vector<QorIdentifier>& models() const { return _models; }
    [[nodiscard]] const std::vector<QorImportedProcess>& processes() const { return _processes; }
    /// A model group came into being.
    void madeGroup(QorIdentifier group) { _groups.push_back(group); }
    [[nodiscard]] const std::vector<QorIdentifier>& groups() const { return _groups; }
    /// In the order of the file, with a last line that counts what was not kept.
    [[nodiscard]] std::vector<QorDiagnostic> takeDiagnostics();

private:
    static constexpr std::size_t kKept = 1000;

    [[nodiscard]] std::string asWritten(std::string text) const;

    std::string _file;
    Places& _places;
    std::vector<std::string> _written;  // what spare names stand for, by their numbers
    std::vector<QorDiagnostic> _diagnostics;
    std::vector<QorIdentifier> _models;
    std::vector<QorImportedProcess> _processes;
    std::vector<QorIdentifier> _groups;
    std::size_t _errors = 0;
    std::size_t _warnings = 0;
    bool _ended = false;
    bool _brokeOff = false;
};

}  // namespace qor::interchange
