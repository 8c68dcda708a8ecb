// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ConversionNames.h"

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorMessage.h"

namespace qor::modeltools {

namespace {

SV::String nameOfConvertedAttribute(long attribute) { return frame::nameOfAttribute(attribute).value_or(SV::String()); }

}  // namespace

SV::String nameOfConvertedClass(long cls) {
    return frame::readText(cls, QorAttributeId::ClassName).value_or(SV::String());
}

SV::String ConversionNames::message(std::uint16_t number, std::string_view source, std::string_view target) const {
    return Qor_Message(number, {{"%attr1", nameOfConvertedAttribute(_source).view()},
                                {"%class1", nameOfConvertedClass(_sourceClass).view()},
                                {"%attr2", nameOfConvertedAttribute(_target).view()},
                                {"%class2", nameOfConvertedClass(_targetClass).view()},
                                {"%recclass1", source},
                                {"%recclass2", target},
                                {"%apclass1", source},
                                {"%apclass2", target}});
}

}  // namespace qor::modeltools
