// SPDX-License-Identifier: Apache-2.0
#include "interchange/KeywordTexts.h"

#include "interchange/Places.h"
#include "platform/QorKexParser.h"

namespace qor::interchange {

void KeywordTexts::reportSyntaxErrors(Reading& reading) const {
    for (const auto& [text, what] : _texts) {
        QorKexParser parser{SV::String(reading.tree.text(text)), SV::String()};
        if (parser.Parse() == 0) continue;
        const TextPlace place = textPlaceOf(reading.tree, text);
        const QorKexPosition position = parser.GetErrorPosition();
        reading.findings.error(markInText(place, position.line, position.column),
                               concat({what, ": ", messageInFile(parser.GetErrorReason().view(), place)}));
    }
}

}  // namespace qor::interchange
