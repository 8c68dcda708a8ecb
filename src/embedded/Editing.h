// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Announcements.h"
#include "embedded/ModelingManager.h"
#include "platform/QorEditing.h"

namespace qor::embedded {

class Editing final : public QorEditingService {
public:
    Editing(const Repository& repository, ModelingManager& manager, Announcements& announcements)
        : _repository(repository), _manager(manager), _announcements(announcements) {}
    ~Editing() override;

    QorErrorCode interReferences(long model, long object, long attribute, QorInterReferences& references) override;
    QorErrorCode parseInterReferences(long attribute, const SV::String& text, QorInterReferences& references) override;
    QorErrorCode saveInterReferences(long model, long object, long attribute, const QorInterReferences& references,
                                     bool raiseEvent) override;
    QorErrorCode expressionResult(long model, long object, long attribute, SV::String& result) override;
    // What QorRepositoryBuilder::pasteObject remembered.
    QorErrorCode sourceNameOfPastedObject(long model, long object, SV::String& name) override;
    // The attributes of instances in the order in which they were added, the topmost ancestor's first. Those whose
    // names begin with two underscores serve the system and are not shown.
    bool notebookAttribute(long cls, unsigned long position, SV::String& name) override;
    // Nothing is executed automatically here but what listeners do upon changed values; these are told.
    void stopAutomaticExecutions() override { _announcements.hold(); }
    void startAutomaticExecutions() override { _announcements.release(); }

private:
    [[nodiscard]] const AttributeRow* referenceAttribute(long attribute) const;
    QorErrorCode read(const AttributeRow& attribute, std::string_view text, QorInterReferences& references) const;

    const Repository& _repository;
    ModelingManager& _manager;
    Announcements& _announcements;
};

}  // namespace qor::embedded
