// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/ModelingManager.h"
#include "platform/QorEditing.h"

namespace qor::embedded {

// There is no clipboard here, so where a pasted object comes from is not told.
class Editing final : public QorEditingService {
public:
    Editing(const Repository& repository, ModelingManager& manager) : _repository(repository), _manager(manager) {}
    ~Editing() override;

    QorErrorCode interReferences(long model, long object, long attribute, QorInterReferences& references) override;
    QorErrorCode parseInterReferences(long attribute, const SV::String& text, QorInterReferences& references) override;
    QorErrorCode saveInterReferences(long model, long object, long attribute, const QorInterReferences& references,
                                     bool raiseEvent) override;
    // An expression is kept with its result, as its text.
    QorErrorCode expressionResult(long model, long object, long attribute, SV::String& result) override;
    // The attributes of instances in the order in which they were added, the topmost ancestor's first. Those whose
    // names begin with two underscores serve the system and are not shown.
    bool notebookAttribute(long cls, unsigned long position, SV::String& name) override;
    // Nothing is executed automatically here.
    void stopAutomaticExecutions() override {}
    void startAutomaticExecutions() override {}

private:
    [[nodiscard]] const AttributeRow* referenceAttribute(long attribute) const;
    QorErrorCode read(const AttributeRow& attribute, std::string_view text, QorInterReferences& references) const;

    const Repository& _repository;
    ModelingManager& _manager;
};

}  // namespace qor::embedded
