// SPDX-License-Identifier: Apache-2.0
#include "platform/QorEditing.h"

QorEditingService::~QorEditingService() = default;

QorErrorCode QorEditingService::interReferences(long, long, long, QorInterReferences& references) {
    references = QorInterReferences{};
    return Qor_NotInstalled("QorEditingService::interReferences");
}

QorErrorCode QorEditingService::parseInterReferences(long, const SV::String&, QorInterReferences& references) {
    references = QorInterReferences{};
    return Qor_NotInstalled("QorEditingService::parseInterReferences");
}

QorErrorCode QorEditingService::saveInterReferences(long, long, long, const QorInterReferences&, bool) {
    return Qor_NotInstalled("QorEditingService::saveInterReferences");
}

QorErrorCode QorEditingService::expressionResult(long, long, long, SV::String& result) {
    result.Clear();
    return Qor_NotInstalled("QorEditingService::expressionResult");
}

QorErrorCode QorEditingService::sourceNameOfPastedObject(long, long, SV::String& name) {
    name.Clear();
    return Qor_NotInstalled("QorEditingService::sourceNameOfPastedObject");
}

bool QorEditingService::notebookAttribute(long, unsigned long, SV::String& name) {
    name.Clear();
    (void)Qor_NotInstalled("QorEditingService::notebookAttribute");
    return false;
}

void QorEditingService::stopAutomaticExecutions() {
    (void)Qor_NotInstalled("QorEditingService::stopAutomaticExecutions");
}

void QorEditingService::startAutomaticExecutions() {
    (void)Qor_NotInstalled("QorEditingService::startAutomaticExecutions");
}
