// SPDX-License-Identifier: Apache-2.0
#include "cardinality/names.h"

#include "cardinality/repository.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorOwnedText.h"

namespace qor::cardinality {

namespace {

std::optional<SV::String> named(bool known, const QorOwnedText& name) {
    if (!known) return std::nullopt;
    return SV::String(name.view());
}

}  // namespace

// The buffer is taken over at the end of the statement that asks for it: not a moment earlier is the name there.

std::optional<SV::String> nameOfClass(long cls) {
    QorOwnedText name;
    const bool known = succeeded(Request::ClassName, repository().getClassName(cls, name.out()));
    return named(known, name);
}

std::optional<SV::String> nameOfAttribute(long attribute) {
    QorOwnedText name;
    const bool known = succeeded(Request::AttributeName, repository().getAttributeName(attribute, name.out()));
    return named(known, name);
}

std::optional<SV::String> nameOfRelationClass(long relationClass) {
    QorOwnedText name;
    const bool known =
        succeeded(Request::RelationClassName, repository().getRelationClassName(relationClass, name.out()));
    return named(known, name);
}

std::optional<SV::String> nameOfObject(long object) {
    QorOwnedText name;
    const bool known = readOrMissing(Request::ObjectName,
                                     repository().getAttributeValue(object, QorAttributeId::Name, name.out(), false));
    return named(known, name);
}

}  // namespace qor::cardinality
