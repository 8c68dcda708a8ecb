// SPDX-License-Identifier: Apache-2.0
// The small services: numbered settings, message texts, class patterns, attribute profiles.
#pragma once
#include <span>
#include <string>
#include <vector>

#include "embedded/LibrarySession.h"
#include "embedded/MessageTable.h"
#include "embedded/Repository.h"
#include "platform/QorCoreMM_AttributeProfiles.h"
#include "platform/QorCoreVar.h"
#include "platform/QorGrObjAttrHandler.h"
#include "platform/QorInternational.h"

namespace qor::embedded {

class CoreVars final : public QorCoreVarService {
public:
    CoreVars(const Repository& repository, const LibrarySession& session)
        : _repository(repository), _session(session) {}
    ~CoreVars() override;
    long coreVar(QorCoreVarType variable) override;

private:
    // The relation class whose relations a conversion leaves behind; -1 when the part names none.
    [[nodiscard]] long unmovedRelationClass(QorIdentifier part) const;

    const Repository& _repository;
    const LibrarySession& _session;
};

class MessageTexts final : public QorMessageTexts {
public:
    explicit MessageTexts(const std::string& language);
    ~MessageTexts() override;
    const char* text(unsigned short number) const override;
    const char* language() const override { return _language.c_str(); }

private:
    std::string _language;
    std::span<const MessageRow> _rows;
};

class ClassPatterns final : public QorGrObjService {
public:
    ClassPatterns(const Repository& repository, const LibrarySession& session)
        : _repository(repository), _session(session) {}
    ~ClassPatterns() override;
    // Every class is offered under its own name; an abstract one is unusable.
    QorErrorCode findPattern(const SV::String& name, bool businessProcess, QorGrObjPattern& pattern) override;
    QorErrorCode patterns(bool businessProcess, std::vector<QorGrObjPattern>& patterns) override;

private:
    [[nodiscard]] QorGrObjPattern patternOf(const ClassRow& row) const;

    const Repository& _repository;
    const LibrarySession& _session;
};

class AttributeProfiles final : public QorAttributeProfileService {
public:
    explicit AttributeProfiles(const Repository& repository) : _repository(repository) {}
    ~AttributeProfiles() override;
    QorErrorCode allowedProfileClass(long attribute, long& profileClass) override;

private:
    const Repository& _repository;
};

}  // namespace qor::embedded
