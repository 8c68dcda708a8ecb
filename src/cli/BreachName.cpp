// SPDX-License-Identifier: Apache-2.0
#include "cli/BreachName.h"

namespace qor::cli {

std::string BreachName::joined() const {
    std::string text;
    for (const auto part : {model, version, cls, object, sourceId, ruleClass, key, relation, otherClass}) {
        text += std::to_string(part.size());
        text += ':';
        text += part;
    }
    return text;
}

BreachName nameOf(const CheckedModel& model, const QorCardinalityBreach& breach) {
    const auto& reader = model.reader;
    const auto name = [&reader](long id) { return reader.nameOf(static_cast<QorIdentifier>(id)); };
    const auto nameOrNone = [&name](long id) { return id < 1 ? std::string_view() : name(id); };
    const auto subject = static_cast<QorIdentifier>(breach.subject);
    BreachName result;
    result.model = model.info.name;
    result.version = model.info.version;
    result.cls = name(breach.subjectIsClass ? subject : reader.classOfObject(subject));
    if (!breach.subjectIsClass) {
        result.object = name(subject);
        result.sourceId = model.importer.sourceIdOf(subject);
    }
    result.ruleClass = name(breach.rule.cls);
    result.key = breach.rule.key;
    result.relation = nameOrNone(breach.rule.relationClass);
    result.otherClass = nameOrNone(breach.rule.otherClass);
    return result;
}

}  // namespace qor::cli
