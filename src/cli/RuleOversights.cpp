// SPDX-License-Identifier: Apache-2.0
#include "cli/RuleOversights.h"

#include <fmt/format.h>

#include <string>

#include "cardinality/QorCardinalityTextReview.h"
#include "cli/Nearest.h"
#include "platform/QorAttributeIds.h"

namespace qor::cli {

namespace {

using Oversight = QorCardinalityOversight;
using Remark = QorCardinalityTextRemark;

/// What to write instead: the nearest name, or all of them when there are few.
std::string hint(std::string_view written, const std::vector<std::string_view>& known) {
    constexpr std::size_t kFew = 2;
    const std::vector<std::string> names(known.begin(), known.end());
    const std::string meant = didYouMean(written, names);
    if (!meant.empty() || names.size() > kFew) return meant;
    return fmt::format("; known {} {}", names.size() == 1 ? "is" : "are", fmt::join(names, " and "));
}

std::string textOf(const Remark& remark) {
    const std::string element = remark.element.str();
    const std::string key = remark.key.str();
    switch (remark.oversight) {
        case Oversight::SyntaxError:
            return fmt::format("the text is not read, so that checks never run by themselves: {}",
                               remark.reason.view());
        case Oversight::UnknownElement:
            return fmt::format("the element {} is not read{}", element, hint(element, remark.known));
        case Oversight::UnknownKey:
            return fmt::format("the key \"{}\" of {} is not read{}", key, element, hint(key, remark.known));
        case Oversight::NoNumber:
            return fmt::format("the value of \"{}\" is no number and counts as 0", key);
        case Oversight::NoValue:
            return fmt::format("the key \"{}\" has no value and counts as 0", key);
    }
    return {};
}

/// Collects the oversights of one library.
class Collector {
public:
    explicit Collector(Workspace& workspace) : _workspace(workspace) {}

    std::vector<RuleOversight> all() {
        collectAutomaticChecks();
        for (const QorLibraryPart part : {QorLibraryPart::BusinessProcess, QorLibraryPart::WorkingEnvironment})
            for (const QorClassInfo& cls : _workspace.reader().classesOf(_workspace.part(part)))
                if (!cls.isAbstract && !cls.isRecordClass) collectClass(cls, part);
        return std::move(_oversights);
    }

private:
    void collectClass(const QorClassInfo& cls, QorLibraryPart part) {
        const QorIdentifier attribute = part == QorLibraryPart::BusinessProcess
                                            ? QorAttributeId::Cardinality
                                            : QorAttributeId::WorkingEnvironmentCardinality;
        const std::string_view text = _workspace.reader().classValue(cls.id, attribute);
        for (const Remark& remark : QorCardinalityTextReview::ofClassText(text))
            add(cls.id, cls.id, attribute, remark.position,
                fmt::format("cardinalities of class \"{}\": {}", cls.name, textOf(remark)));
    }

    /// Only the business-process part is asked when checks run by themselves.
    void collectAutomaticChecks() {
        constexpr QorIdentifier kAttribute = QorAttributeId::AutomaticChecks;
        constexpr QorKexPosition kBegin{1, 1};
        const QorIdentifier asked = _workspace.part(QorLibraryPart::BusinessProcess);
        for (const Remark& remark :
             QorCardinalityTextReview::ofAutomaticChecks(_workspace.reader().libraryValue(asked, kAttribute)))
            add(QorNoIdentifier, asked, kAttribute, remark.position,
                fmt::format("automatic_checks: {}", textOf(remark)));
        for (const QorIdentifier other : {_workspace.library(), _workspace.part(QorLibraryPart::WorkingEnvironment)})
            if (!_workspace.reader().libraryValue(other, kAttribute).empty())
                add(QorNoIdentifier, other, kAttribute, kBegin,
                    "automatic_checks: the text is not read here; it belongs to the texts of business_process");
    }

    void add(QorIdentifier cls, QorIdentifier owner, QorIdentifier attribute, QorKexPosition position,
             std::string text) {
        const QorImporter& importer = _workspace.libraryImporter();
        _oversights.push_back({cls,
                               {QorSeverity::Warning, importer.placeInText(owner, attribute, position),
                                importer.messageInFile(owner, attribute, text)}});
    }

    Workspace& _workspace;
    std::vector<RuleOversight> _oversights;
};

}  // namespace

std::vector<RuleOversight> ruleOversights(Workspace& workspace) {
    return workspace.hasLibrary() ? Collector(workspace).all() : std::vector<RuleOversight>();
}

}  // namespace qor::cli
