// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <optional>
#include <set>

#include "cli/BreachName.h"
#include "cli/BreachText.h"
#include "cli/CheckReport.h"
#include "cli/CheckSettings.h"
#include "cli/Diagnostics.h"
#include "cli/OutputFile.h"

namespace qor::cli {

namespace {

/// A text as it may stand in XML, in an attribute, too: what XML cannot hold is written as "\x1B".
std::string inXml(std::string_view text) {
    std::string result;
    for (const char c : printableLines(text)) switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            case '\n':
                result += "&#10;";
                break;
            default:
                result += c;
        }
    // The two characters that are well-formed UTF-8 and yet none of XML.
    for (const std::string_view none : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"})
        for (auto at = result.find(none); at != std::string::npos; at = result.find(none, at))
            result.replace(at, none.size(), "\xEF\xBF\xBD");
    return result;
}

/// JUnit's XML, for build servers: a suite for each file; in it a case for each model without breaches, and one for
/// each object with breaches, which fails unless they are only warnings.
class JunitReport final : public CheckReport {
public:
    explicit JunitReport(OutputFile& file) : _out(file) {
        _out.add("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"qor check\">\n");
    }
    ~JunitReport() override;

    void beginFile(const CheckedFile& file, const std::vector<QorDiagnostic>& diagnostics) override {
        _file = file.name;
        _cases = {};
        const Colours plain(false);
        std::string errors;
        for (const auto& diagnostic : diagnostics)
            if (diagnostic.severity == QorSeverity::Error) errors += diagnosticLine(diagnostic, plain);
        if (errors.empty()) return;
        ++_cases.errors;
        addCase("reading", fmt::format("<error message=\"the file is not valid\">{}</error>", inXml(errors)));
    }

    void beginModel(const CheckedModel& model) override {
        _model.emplace(model);
        _hasBreaches = false;
    }

    void breach(const ReportedBreach& breach) override {
        _hasBreaches = true;
        if (breach.record.subject != _subject) closeSubject();
        _subject = breach.record.subject;
        const auto subject = static_cast<QorIdentifier>(breach.record.subject);
        const bool isWarning = breach.severity == Severity::Warning;
        _title = subjectText(*_model, subject, breach.record.subjectIsClass, Colours(false));
        auto& texts = isWarning ? _warnings : _failures;
        if (_failures.empty() && !isWarning) _firstFailure = breach.record.text.str();
        auto rule = ruleText(*_model, breach.record.rule);
        if (!_told.insert(rule).second) return;
        texts += fmt::format("{}: {}\n    rule {}; found {}\n", placeText(placeOf(*_model, _file, subject)),
                             breach.record.text.view(), rule, breach.record.found);
    }

    void endModel() override {
        closeSubject();
        if (!_hasBreaches) addCase("all rules", "");
        _model.reset();
    }

    void endFile() override {
        _out.add(fmt::format("  <testsuite name=\"{}\" tests=\"{}\" failures=\"{}\" errors=\"{}\" skipped=\"0\">\n",
                             inXml(_file), _cases.count, _cases.failures, _cases.errors));
        _out.add(_cases.text);
        _out.add("  </testsuite>\n");
    }

    void end(const CheckSummary&) override { _out.add("</testsuites>\n"); }

private:
    struct Cases {
        std::string text;
        std::uint64_t count = 0;
        std::uint64_t failures = 0;
        std::uint64_t errors = 0;
    };

    void closeSubject() {
        if (_subject < 0) return;
        std::string content;
        if (!_failures.empty()) {
            ++_cases.failures;
            content = fmt::format("<failure message=\"{}\">{}</failure>", inXml(_firstFailure), inXml(_failures));
        }
        if (!_warnings.empty()) content += fmt::format("<system-out>{}</system-out>", inXml(_warnings));
        addCase(_title, content);
        _failures.clear();
        _warnings.clear();
        _told.clear();
        _subject = -1;
    }

    void addCase(std::string_view name, std::string_view content) {
        ++_cases.count;
        const auto model = _model ? std::string(_model->info.name) : std::string("file");
        _cases.text +=
            fmt::format("    <testcase classname=\"{}\" name=\"{}\"", inXml(_file + "/" + model), inXml(name));
        _cases.text += content.empty() ? std::string("/>\n") : fmt::format(">{}</testcase>\n", content);
    }

    OutputFile& _out;
    std::string _file;
    Cases _cases;
    std::optional<CheckedModel> _model;
    bool _hasBreaches = false;
    long _subject = -1;
    std::string _title;
    std::string _firstFailure;
    std::string _failures;
    std::string _warnings;
    std::set<std::string> _told;  ///< the subject's rules: one can be broken in several counts
};

JunitReport::~JunitReport() = default;

}  // namespace

std::unique_ptr<CheckReport> makeJunitReport(OutputFile& file) { return std::make_unique<JunitReport>(file); }

}  // namespace qor::cli
