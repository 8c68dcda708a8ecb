// SPDX-License-Identifier: Apache-2.0
#include "embedded/QorRepositoryBuilder.h"

#include "embedded/QorRepositoryReader.h"

QorRepositoryBuilder::~QorRepositoryBuilder() = default;
QorRepositoryReader::~QorRepositoryReader() = default;

const char* Qor_BuildErrorText(QorBuildError error) {
    switch (error) {
        case QorBuildError::None:
            return "no error";
        case QorBuildError::UnknownIdentifier:
            return "there is no such thing";
        case QorBuildError::EmptyName:
            return "the name is empty";
        case QorBuildError::NameRefused:
            return "the name is longer than 65535 bytes, or holds a line break or control character";
        case QorBuildError::DuplicateName:
            return "the name is taken";
        case QorBuildError::CyclicInheritance:
            return "the class would inherit from itself";
        case QorBuildError::ForeignLibrary:
            return "it belongs to another library";
        case QorBuildError::AbstractClass:
            return "the class is abstract and has no objects";
        case QorBuildError::ClassNotInModelType:
            return "models of this type do not hold objects of this class";
        case QorBuildError::SourceDoesNotFit:
            return "the relation class does not leave objects of this class";
        case QorBuildError::TargetDoesNotFit:
            return "the relation class does not arrive at objects of this class";
        case QorBuildError::ForeignModel:
            return "the objects lie in different models";
        case QorBuildError::AttributeDoesNotBelong:
            return "the class has no such attribute";
        case QorBuildError::ValueRefused:
            return "the attribute's type does not take this value";
        case QorBuildError::HasInstances:
            return "it is in use and cannot be changed any more";
        case QorBuildError::GroupInItself:
            return "the group would lie in itself";
        case QorBuildError::NestedTooDeeply:
            return "it would be nested too deeply: 64 model groups and 16 record rows lie within one another at most";
        case QorBuildError::NoIdentifiersLeft:
            return "the repository is full";
        case QorBuildError::NotStored:
            return "the repository file could not be written";
        case QorBuildError::NotAllowed:
            return "only an administrator may change that";
        case QorBuildError::LastAdministrator:
            return "nobody else is an administrator";
        case QorBuildError::MixedGroups:
            return "a user group and a system user group cannot lie in one another";
    }
    return "unknown error";
}
