// SPDX-License-Identifier: Apache-2.0
#include "cardinality/breachText.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "cardinality/messages.h"
#include "cardinality/names.h"
#include "cardinality/repository.h"
#include "platform/QorMessage.h"

namespace qor::cardinality {

namespace {

struct Wordings {
    std::uint16_t several;
    std::uint16_t one;
};

constexpr Wordings kWordings[] = {
    {message::tooManyRelations, message::tooManyRelationsOne},
    {message::tooManyOfRelationClass, message::tooManyOfRelationClassOne},
    {message::tooManyObjects, message::tooManyObjectsOne},
    {message::tooFewObjects, message::tooFewObjectsOne},
    {message::tooFewRelations, message::tooFewRelationsOne},
    {message::tooFewOfRelationClass, message::tooFewOfRelationClassOne},
};

/// An object or a class, as messages name it.
struct Party {
    explicit Party(long identifier)
        : isClass(repository().isClass(identifier)),
          name((isClass ? nameOfClass(identifier) : nameOfObject(identifier)).value_or(SV::String())) {}

    bool isClass;
    SV::String name;
};

SV::String sourceText(const Party& subject) {
    if (subject.isClass) return Qor_Message(message::subjectIsClass, {{"%c", subject.name.view()}});
    return SV::String(" \"") + subject.name.view() + "\"";
}

SV::String sourceText(const Party& subject, const Party& other) {
    if (subject.isClass && !other.isClass)
        return Qor_Message(message::fromClassToObject,
                           {{"%class", subject.name.view()}, {"%instance", other.name.view()}});
    if (!subject.isClass && other.isClass)
        return Qor_Message(message::fromObjectToClass,
                           {{"%instance", subject.name.view()}, {"%class", other.name.view()}});
    return Qor_Message(message::betweenObjects,
                       {{"%instance1", subject.name.view()}, {"%instance2", other.name.view()}});
}

}  // namespace

std::uint16_t wordedFor(std::uint16_t message, std::uint32_t limit) {
    if (limit != 1) return message;
    const auto* const found = std::find_if(std::begin(kWordings), std::end(kWordings),
                                           [message](const Wordings& row) { return row.several == message; });
    return found == std::end(kWordings) ? message : found->one;
}

SV::String textOf(const RelationMessage& message) {
    const auto pattern = Qor_Message(wordedFor(message.message, message.limit));
    const Party subject(message.subject);
    SV::String source;
    SV::String direction;
    std::string_view directionName = "%direction";
    if (message.other >= 1) {
        source = sourceText(subject, Party(message.other));
        // The ends tell the direction: the word goes, together with its blank where it has one.
        if (pattern.view().find(" %direction") != std::string_view::npos) directionName = " %direction";
    } else {
        source = sourceText(subject);
        direction = Qor_Message(message.direction);
    }
    const auto number = std::to_string(message.limit);
    if (message.relationClass < 1)
        return Qor_FillPlaceholders(
            pattern.view(), {{"%source", source.view()}, {directionName, direction.view()}, {"%number", number}});
    const auto type = nameOfRelationClass(message.relationClass).value_or(SV::String());
    return Qor_FillPlaceholders(
        pattern.view(),
        {{"%source", source.view()}, {directionName, direction.view()}, {"%number", number}, {"%type", type.view()}});
}

SV::String objectCountText(std::uint16_t message, long cls, std::uint32_t found, std::uint32_t limit) {
    const auto name = nameOfClass(cls).value_or(SV::String());
    return Qor_Message(wordedFor(message, limit),
                       {{"%n1", std::to_string(found)}, {"%n2", std::to_string(limit)}, {"%c", name.view()}});
}

}  // namespace qor::cardinality
