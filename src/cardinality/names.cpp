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

std::optional<SV::String> nameOfClass(long cls) {
    QorOwnedText name;
    return named(succeeded(Request::ClassName, repository().getClassName(cls, name.out())), name);
}

std::optional<SV::String> nameOfAttribute(long attribute) {
    QorOwnedText name;
    return named(succeeded(Request::AttributeName, repository().getAttributeName(attribute, name.out())), name);
}

std::optional<SV::String> nameOfRelationClass(long relationClass) {
    QorOwnedText name;
    return named(succeeded(Request::RelationClassName, repository().getRelationClassName(relationClass, name.out())),
                 name);
}

std::optional<SV::String> nameOfObject(long object) {
    QorOwnedText name;
    return named(readOrMissing(Request::ObjectName,
                               repository().getAttributeValue(object, QorAttributeId::Name, name.out(), false)),
                 name);
}

}  // namespace qor::cardinality
