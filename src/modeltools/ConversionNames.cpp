// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ConversionNames.h"

#include "frame/RepositoryLookup.h"
#include "modeltools/messages.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorMessage.h"

namespace qor::modeltools {

namespace {

SV::String nameOfConvertedAttribute(long attribute) { return frame::nameOfAttribute(attribute).value_or(SV::String()); }

}  // namespace

SV::String nameOfConvertedClass(long cls) {
    return frame::readText(cls, QorAttributeId::ClassName).value_or(SV::String());
}

SV::String ConversionNames::message(std::uint16_t number) const {
    return Qor_Message(number, {{"%attr1", nameOfConvertedAttribute(_source).view()},
                                {"%class1", nameOfConvertedClass(_sourceClass).view()},
                                {"%attr2", nameOfConvertedAttribute(_target).view()},
                                {"%class2", nameOfConvertedClass(_targetClass).view()}});
}

SV::String ConversionNames::recordMessage(std::string_view sourceRecord, std::string_view targetRecord) const {
    return Qor_Message(message::recordClassesDiffer, {{"%attr1", nameOfConvertedAttribute(_source).view()},
                                                      {"%class1", nameOfConvertedClass(_sourceClass).view()},
                                                      {"%attr2", nameOfConvertedAttribute(_target).view()},
                                                      {"%class2", nameOfConvertedClass(_targetClass).view()},
                                                      {"%recclass1", sourceRecord},
                                                      {"%recclass2", targetRecord}});
}

SV::String ConversionNames::profileMessage(std::string_view sourceProfile, std::string_view targetProfile) const {
    return Qor_Message(message::profileClassesDiffer, {{"%attr1", nameOfConvertedAttribute(_source).view()},
                                                       {"%class1", nameOfConvertedClass(_sourceClass).view()},
                                                       {"%attr2", nameOfConvertedAttribute(_target).view()},
                                                       {"%class2", nameOfConvertedClass(_targetClass).view()},
                                                       {"%apclass1", sourceProfile},
                                                       {"%apclass2", targetProfile}});
}

}  // namespace qor::modeltools
