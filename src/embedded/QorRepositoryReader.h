// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>
#include <vector>

#include "embedded/QorRepositoryBuilder.h"
#include "platform/QorCoreAttributeType.h"
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"

/// What stands behind an identifier.
enum class QorThingKind : std::int32_t {
    None = 0,
    Attribute,
    ApplicationLibrary,
    LibraryPart,
    LibraryClass,  ///< the class of a library part itself (42, 39)
    Class,
    RecordClass,
    RelationClass,
    ModelType,
    ModelThread,
    Model,
    Object,
    Relation,
    RecordRow,
    ModelGroup,
    User,
    UserGroup,
};

struct QorClassInfo {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier part = QorNoIdentifier;
    QorIdentifier superclass = QorNoIdentifier;
    bool isAbstract = false;
    bool isRecordClass = false;
    std::string_view name;
};

struct QorRelationClassInfo {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier part = QorNoIdentifier;
    QorIdentifier fromClass = QorNoIdentifier;
    QorIdentifier toClass = QorNoIdentifier;
    std::string_view name;
};

struct QorAttributeInfo {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier owner = QorNoIdentifier;
    QorCoreAttributeType type = QorCoreAttributeType::None;
    QorAttributeLevel level = QorAttributeLevel::Instance;
    std::string_view name;
    std::string_view defaultText;
    std::vector<std::string_view> enumeration;
    QorIdentifier target = QorNoIdentifier;
    bool refersToModels = false;
    QorCoreAttributeType shownAs = QorCoreAttributeType::None;  ///< None: its own type
};

struct QorModelTypeInfo {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier part = QorNoIdentifier;
    std::string_view name;
};

struct QorModelInfo {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier modelType = QorNoIdentifier;
    QorIdentifier thread = QorNoIdentifier;
    std::string_view name;
    std::string_view version;
};

struct QorModelGroupInfo {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier library = QorNoIdentifier;
    QorIdentifier parent = QorNoIdentifier;  ///< none at the top
    std::string_view name;
};

struct QorRelationInfo {
    QorIdentifier id = QorNoIdentifier;
    QorIdentifier relationClass = QorNoIdentifier;
    QorIdentifier from = QorNoIdentifier;
    QorIdentifier to = QorNoIdentifier;
};

/// A value that names what does not exist: a model, an object in it, or an attribute profile.
struct QorMissingTarget {
    QorIdentifier instance = QorNoIdentifier;  ///< object or relation, also when a record row of it has the value
    QorIdentifier attribute = QorNoIdentifier;
    std::string what;  ///< in words: 'the model "Order" of type "Process"'
};

/// Everything that export and listings need and the contracts do not offer. Texts are views that hold until the
/// repository next changes; lists come in order of adding. Unknown identifiers give empty results; so does a lack of
/// memory, after an internal error was shown.
class QOR_API QorRepositoryReader {
public:
    virtual ~QorRepositoryReader();

    [[nodiscard]] virtual QorThingKind kindOf(QorIdentifier id) const = 0;
    /// Name of anything that has one.
    [[nodiscard]] virtual std::string_view nameOf(QorIdentifier id) const = 0;

    [[nodiscard]] virtual std::vector<QorIdentifier> applicationLibraries() const = 0;
    /// The application library that a part, class, model type, model ... belongs to.
    [[nodiscard]] virtual QorIdentifier applicationLibraryOf(QorIdentifier id) const = 0;
    [[nodiscard]] virtual QorIdentifier libraryPart(QorIdentifier applicationLibrary, QorLibraryPart part) const = 0;
    [[nodiscard]] virtual std::vector<QorClassInfo> classesOf(QorIdentifier part) const = 0;
    [[nodiscard]] virtual QorClassInfo classInfo(QorIdentifier cls) const = 0;
    [[nodiscard]] virtual std::vector<QorRelationClassInfo> relationClassesOf(QorIdentifier part) const = 0;
    [[nodiscard]] virtual QorRelationClassInfo relationClassInfo(QorIdentifier relationClass) const = 0;
    /// Own attributes, without inherited and fixed ones.
    [[nodiscard]] virtual std::vector<QorAttributeInfo> attributesOf(QorIdentifier owner) const = 0;
    [[nodiscard]] virtual QorAttributeInfo attributeInfo(QorIdentifier attribute) const = 0;
    /// Attribute of a class or relation class by name, inherited and fixed ones included; none when there is none.
    [[nodiscard]] virtual QorIdentifier findAttribute(QorIdentifier owner, std::string_view name) const = 0;
    [[nodiscard]] virtual QorIdentifier findClass(QorIdentifier library, std::string_view name) const = 0;
    [[nodiscard]] virtual QorIdentifier findRelationClass(QorIdentifier library, std::string_view name) const = 0;
    [[nodiscard]] virtual QorIdentifier findModelType(QorIdentifier library, std::string_view name) const = 0;
    /// Class-level or library-level value of an attribute; empty when there is none.
    [[nodiscard]] virtual std::string_view classValue(QorIdentifier cls, QorIdentifier attribute) const = 0;
    [[nodiscard]] virtual std::string_view libraryValue(QorIdentifier library, QorIdentifier attribute) const = 0;
    /// Name of the part's unmoved relation class; empty when there is none.
    [[nodiscard]] virtual std::string_view unmovedRelationClass(QorIdentifier part) const = 0;
    [[nodiscard]] virtual std::vector<QorModelTypeInfo> modelTypesOf(QorIdentifier applicationLibrary) const = 0;
    [[nodiscard]] virtual std::vector<QorIdentifier> visibleClasses(QorIdentifier modelType) const = 0;

    [[nodiscard]] virtual std::vector<QorModelInfo> modelsOf(QorIdentifier applicationLibrary) const = 0;
    [[nodiscard]] virtual QorModelInfo modelInfo(QorIdentifier model) const = 0;
    [[nodiscard]] virtual QorIdentifier modelOf(QorIdentifier objectOrRelation) const = 0;
    [[nodiscard]] virtual std::vector<QorIdentifier> objectsOf(QorIdentifier model) const = 0;
    [[nodiscard]] virtual QorIdentifier classOfObject(QorIdentifier object) const = 0;
    [[nodiscard]] virtual std::vector<QorRelationInfo> relationsOf(QorIdentifier model) const = 0;
    [[nodiscard]] virtual QorRelationInfo relationInfo(QorIdentifier relation) const = 0;
    /// The instance's own value in its text form; empty when it has none.
    [[nodiscard]] virtual std::string_view valueOf(QorIdentifier instance, QorIdentifier attribute) const = 0;
    /// Tells an own value that is the empty text from none at all; with a default behind it, that is a difference.
    [[nodiscard]] virtual bool hasValue(QorIdentifier instance, QorIdentifier attribute) const = 0;
    /// What the references and profile references in a model name and what does not exist, defaults included. O(model),
    /// and for each profile that does not lie in the model itself O(models).
    [[nodiscard]] virtual std::vector<QorMissingTarget> missingTargets(QorIdentifier model) const = 0;
    /// Rows of a record attribute, in their order.
    [[nodiscard]] virtual std::vector<QorIdentifier> recordRows(QorIdentifier instance,
                                                                QorIdentifier attribute) const = 0;

    /// All groups of the library; none comes before the one that it lies in.
    [[nodiscard]] virtual std::vector<QorModelGroupInfo> modelGroupsOf(QorIdentifier applicationLibrary) const = 0;
    [[nodiscard]] virtual QorModelGroupInfo modelGroupInfo(QorIdentifier group) const = 0;
    /// A group by name, within another one or at the top of an application library.
    [[nodiscard]] virtual QorIdentifier findModelGroup(QorIdentifier parent, std::string_view name) const = 0;
    /// None for a model that lies in no group.
    [[nodiscard]] virtual QorIdentifier groupOfModel(QorIdentifier model) const = 0;
};
