// SPDX-License-Identifier: Apache-2.0
// The rules in force as plain text. A number 65535 is written although it limits nothing.
#include <string>

#include "cardinality/QorClassCardinality.h"
#include "cardinality/repository.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorGuard.h"
#include "platform/QorOwnedText.h"

namespace {

using namespace qor::cardinality;

/// A name is missing after a failure, which has then been reported; the heading is written without it.
void appendHeading(SV::String& text, std::string_view label, long identifier, long nameAttribute) {
    QorOwnedText name;
    (void)readOrMissing(Request::ReportName,
                        repository().getAttributeValue(identifier, nameAttribute, name.out(), false));
    text += label;
    text += name.view();
    text += ":\n";
}

void appendLine(SV::String& text, std::string_view label, const QorCardinalityLimit& limit) {
    text += label;
    text += std::to_string(limit.count);
    text += "\n";
}

}  // namespace

SV::String& QorClassCardinality::toReportText(SV::String& text) const {
    Qor_Guarded(kSource, [&] {
        appendHeading(text, "Cardinalities for ", _cls, QorAttributeId::ClassName);
        appendLine(text, "maxObjects: ", maxObjects);
        appendLine(text, "maxTotal:   ", maxTotal);
        appendLine(text, "maxIn:      ", maxIn);
        appendLine(text, "maxOut:     ", maxOut);
        text += "\n";
        appendLine(text, "minObjects: ", minObjects);
        appendLine(text, "minTotal:   ", minTotal);
        appendLine(text, "minIn:      ", minIn);
        appendLine(text, "minOut:     ", minOut);
        text += "\n";
        for (const auto& relation : relations) relation.toReportText(text);
        text += "=======\n\n";
    });
    return text;
}

SV::String& QorRelationCardinality::toReportText(SV::String& text) const {
    Qor_Guarded(kSource, [&] {
        appendHeading(text, "Relation ", _relationClass, QorAttributeId::RelationClassName);
        appendLine(text, "maxIn:         ", maxIn);
        appendLine(text, "maxOut:        ", maxOut);
        text += "\n";
        appendLine(text, "defaultMaxIn:  ", defaultMaxIn);
        appendLine(text, "defaultMaxOut: ", defaultMaxOut);
        text += "\n";
        appendLine(text, "minIn:         ", minIn);
        appendLine(text, "minOut:        ", minOut);
        text += "\n";
        appendLine(text, "defaultMinIn:  ", defaultMinIn);
        appendLine(text, "defaultMinOut: ", defaultMinOut);
        text += "\n";
        for (const auto& target : targets) target.toReportText(text);
        text += "\n";
    });
    return text;
}

SV::String& QorRelationTargetCardinality::toReportText(SV::String& text) const {
    Qor_Guarded(kSource, [&] {
        appendHeading(text, "Related class ", _cls, QorAttributeId::ClassName);
        appendLine(text, "maxToTarget:         ", maxToTarget);
        appendLine(text, "maxFromSource:       ", maxFromSource);
        text += "\n";
        appendLine(text, "minToTarget:         ", minToTarget);
        appendLine(text, "minFromSource:       ", minFromSource);
        text += "\n";
    });
    return text;
}
