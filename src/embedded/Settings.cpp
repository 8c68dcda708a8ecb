// SPDX-License-Identifier: Apache-2.0
#include "embedded/Settings.h"

#include <algorithm>

#include "embedded/Answers.h"

namespace qor::embedded {

CoreVars::~CoreVars() = default;

long CoreVars::coreVar(QorCoreVarType variable) {
    switch (variable) {
        case QorCoreVarType::ApplicationLibrary:
            return _session.library;
        case QorCoreVarType::BusinessProcessLibrary:
            return _session.businessProcess;
        case QorCoreVarType::WorkingEnvironmentLibrary:
            return _session.workingEnvironment;
        // These attributes have the numbers of the settings that name them.
        case QorCoreVarType::HierarchyAttribute:
        case QorCoreVarType::CardinalityAttribute:
        case QorCoreVarType::GraphicAttribute:
        case QorCoreVarType::WorkingEnvironmentHierarchyAttribute:
        case QorCoreVarType::WorkingEnvironmentCardinalityAttribute:
        case QorCoreVarType::WorkingEnvironmentGraphicAttribute:
            return static_cast<long>(variable);
        case QorCoreVarType::UnmovedRelationClass:
            return unmovedRelationClass(_session.businessProcess);
        case QorCoreVarType::OtherUnmovedRelationClass:
            return unmovedRelationClass(_session.workingEnvironment);
    }
    return -1;
}

long CoreVars::unmovedRelationClass(QorIdentifier part) const {
    const AttributeRow* const attribute = _repository.attributeOf(part, kUnmovedRelationClass);
    const auto name = attribute ? _repository.ownValue(part, *attribute) : std::nullopt;
    return name ? _repository.meta().findRelationClass(part, *name) : QorNoIdentifier;
}

MessageTexts::MessageTexts(const std::string& language) : _rows(messageRows(language)) {
    const std::string code = language.substr(0, language.find_first_of("-_"));
    const auto languages = messageLanguages();
    _language = std::find(languages.begin(), languages.end(), code) != languages.end() ? code : "en";
}

MessageTexts::~MessageTexts() = default;

const char* MessageTexts::text(unsigned short number) const {
    const auto row = std::lower_bound(_rows.begin(), _rows.end(), number,
                                      [](const MessageRow& a, unsigned short wanted) { return a.number < wanted; });
    return row != _rows.end() && row->number == number ? row->text : nullptr;
}

ClassPatterns::~ClassPatterns() = default;

QorErrorCode ClassPatterns::findPattern(const SV::String& name, bool businessProcess, QorGrObjPattern& pattern) {
    pattern = {};
    return answered([&] {
        const QorIdentifier part = businessProcess ? _session.businessProcess : _session.workingEnvironment;
        const ClassRow* const row = _repository.meta().objectClass(_repository.meta().findClass(part, name.view()));
        if (row == nullptr) return QorErrorCode::NotFound;
        pattern = patternOf(*row);
        return QorErrorCode::Ok;
    });
}

QorErrorCode ClassPatterns::patterns(bool businessProcess, std::vector<QorGrObjPattern>& patterns) {
    patterns.clear();
    return answered([&] {
        const PartRow* const part =
            _repository.meta().part(businessProcess ? _session.businessProcess : _session.workingEnvironment);
        if (part == nullptr) return QorErrorCode::NotFound;
        std::vector<QorGrObjPattern> found;
        for (const QorIdentifier id : part->classes)
            if (const ClassRow* row = _repository.meta().objectClass(id)) found.push_back(patternOf(*row));
        patterns = std::move(found);
        return QorErrorCode::Ok;
    });
}

QorGrObjPattern ClassPatterns::patternOf(const ClassRow& row) const {
    QorGrObjPattern pattern;
    pattern.name = SV::String(_repository.text(row.name));
    pattern.cls = row.id;
    pattern.unusable = row.isAbstract;
    return pattern;
}

AttributeProfiles::~AttributeProfiles() = default;

QorErrorCode AttributeProfiles::allowedProfileClass(long attribute, long& profileClass) {
    profileClass = -1;
    const AttributeRow* const row = _repository.meta().attribute(narrow(attribute));
    const bool isReference = row != nullptr && row->type == QorCoreAttributeType::AttributeProfile;
    return giveFound(profileClass, isReference ? row->target : QorNoIdentifier);
}

}  // namespace qor::embedded
