// SPDX-License-Identifier: Apache-2.0
// What an author of rules most likely did not mean.
#include "cardinality/QorCardinalityTextReview.h"

namespace {

/// "column kind element.key (number of known names)" of each remark, in brief.
std::string brief(const std::vector<QorCardinalityTextRemark>& remarks) {
    constexpr const char* kKinds[] = {"syntax", "element", "key", "no number", "no value"};
    std::string text;
    for (const auto& remark : remarks) {
        if (!text.empty()) text += "; ";
        text += std::to_string(remark.position.column) + " " + kKinds[static_cast<int>(remark.oversight)];
        if (!remark.element.IsEmpty()) text += " " + remark.element.str();
        if (!remark.key.IsEmpty()) text += "." + remark.key.str();
        if (!remark.known.empty()) text += " (" + std::to_string(remark.known.size()) + ")";
        EXPECT_EQ(remark.reason.IsEmpty(), remark.oversight != QorCardinalityOversight::SyntaxError);
    }
    return text;
}

struct Row {
    const char *text, *remarks;
};

TEST(TextReview, FindsWhatTheReadingPassesOverInSilence) {
    const Row classTexts[] = {
        {"CARDINALITIES max-objects: 1 max-relations: 2 max-incoming: 3 max-outgoing: 4 min-objects: 5 min-relations: "
         "6 min-incoming: 7 min-outgoing: -1 RELATION \"r\" max-outgoing: 1 max-incoming: 2 default-max-outgoing: 3 "
         "default-max-incoming: 4 min-outgoing: 5 min-incoming: 6 default-min-outgoing: 7 default-min-incoming: 8 "
         "TO_CLASS \"k\" max-outgoing: 1 min-outgoing: 2 FROM_CLASS \"k\" max-incoming: 3 min-incoming: 4",
         ""},
        {"CARDINALITIES max-outgonig: 1", "15 key CARDINALITIES.max-outgonig (8)"},
        {"CARDINALITIES max-objects: many min-objects: \"1\" max-incoming: 00:000:00:00:01 min-incoming: 2cm",
         "15 no number CARDINALITIES.max-objects; 33 no number CARDINALITIES.min-objects; 50 no number "
         "CARDINALITIES.max-incoming; 80 no number CARDINALITIES.min-incoming"},
        {"CARDINALITIES max-relations", "15 no value CARDINALITIES.max-relations"},
        {"CARDINALITIES RELATION \"r\" max-objects: 1 TO_CLASS \"k\" max-incoming: 1 FROM_CLASS \"k\" min-incoming",
         "28 key RELATION.max-objects (8); 56 key TO_CLASS.max-incoming (2); 87 no value FROM_CLASS.min-incoming"},
        // Told as errors by the reading itself.
        {"CARDINALITIES \"", ""},
        {"CARDINALITIES OTHER odd: 1", ""},
    };
    for (const Row& row : classTexts)
        EXPECT_EQ(brief(QorCardinalityTextReview::ofClassText(row.text)), row.remarks) << row.text;

    const Row automaticChecks[] = {
        {"CHECK_CARDINALITIES before-save: 1 after-modeling-action: 0", ""},
        {"", ""},
        {"CHECK_CARDINALITIES before-save: yes after-modelling-action: 1",
         "21 no number CHECK_CARDINALITIES.before-save; 38 key CHECK_CARDINALITIES.after-modelling-action (2)"},
        {"CHECKS before-save: 1", "1 element CHECKS (1)"},
        {"CHECK_CARDINALITIES before-save:", "33 syntax"},
    };
    for (const Row& row : automaticChecks)
        EXPECT_EQ(brief(QorCardinalityTextReview::ofAutomaticChecks(row.text)), row.remarks) << row.text;
}

}  // namespace
