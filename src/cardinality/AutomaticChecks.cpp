// SPDX-License-Identifier: Apache-2.0
#include "cardinality/RuleReader.h"
#include "cardinality/repository.h"
#include "cardinality/ruleKeys.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorKexParser.h"
#include "platform/QorOwnedText.h"

namespace qor::cardinality {

AutomaticChecks readAutomaticChecks(long library) {
    AutomaticChecks checks;
    QorOwnedText text;
    if (!readOrMissing(Request::AutomaticChecks,
                       repository().getAttributeValue(library, QorAttributeId::AutomaticChecks, text.out(), false)))
        return checks;

    QorKexParser parser(SV::String(text.view()), SV::String());
    // A text with errors turns the automatic checks off without a word: it must not keep a library from loading.
    if (parser.Parse() != 0) return checks;
    for (unsigned long index = 0; parser.SetCurElemIndex(index); ++index) {
        if (parser.GetCurElemNameView() != kAutomaticChecksElement) continue;
        checks.beforeSave = parser.GetIntValue(kBeforeSaveKey) != 0;
        checks.afterModelingAction = parser.GetIntValue(kAfterModelingActionKey) != 0;
    }
    return checks;
}

}  // namespace qor::cardinality
