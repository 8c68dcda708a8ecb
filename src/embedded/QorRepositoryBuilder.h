// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/QorCoreAttributeType.h"
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"

/// Why something could not be added.
enum class QorBuildError : std::int32_t {
    None = 0,
    UnknownIdentifier,  ///< no such thing, or not of the kind that is needed here
    EmptyName,
    NameRefused,        ///< holds a control character or line break, or is longer than 65535 bytes
    DuplicateName,      ///< `id` names who has it
    CyclicInheritance,  ///< for readers of files; a class that is added has no subclasses yet
    ForeignLibrary,     ///< the things belong to different application libraries
    AbstractClass,      ///< has no instances
    ClassNotInModelType,
    SourceDoesNotFit,        ///< the relation class does not leave objects of this class
    TargetDoesNotFit,        ///< the relation class does not arrive at objects of this class
    ForeignModel,            ///< the objects lie in different models
    AttributeDoesNotBelong,  ///< the class has no such attribute
    ValueRefused,            ///< the attribute's type does not take this text
    HasInstances,            ///< cannot be changed any more
    GroupInItself,           ///< a model group, or user group, would lie in itself
    NestedTooDeeply,         ///< more than 64 model groups, or 16 record rows, within one another
    NoIdentifiersLeft,       ///< neither identifiers nor memory
    NotStored,               ///< the repository file did not take it
    NotAllowed,              ///< only administrators change users, groups and permissions
    LastAdministrator,       ///< nobody would be left who may change users
    MixedGroups,             ///< a user group and a system user group cannot lie in one another
};

/// The identifier of what was added, or why it was not.
struct [[nodiscard]] QorBuildResult {
    QorIdentifier id = QorNoIdentifier;
    QorBuildError error = QorBuildError::None;
    [[nodiscard]] bool ok() const { return error == QorBuildError::None; }
};

/// Where the values of an attribute stand: with each instance, or once with the class.
enum class QorAttributeLevel : std::int32_t { Instance, Class };

/// An attribute to be added to a class, relation class or record class.
struct QorAttributeSpec {
    std::string_view name;
    QorCoreAttributeType type = QorCoreAttributeType::Text;
    QorAttributeLevel level = QorAttributeLevel::Instance;
    std::span<const std::string_view> enumeration;  ///< the values of an enumeration (list)
    std::string_view defaultText;                   ///< value of an instance without one of its own
    QorIdentifier target = QorNoIdentifier;         ///< record class of a record, profile class of a profile reference
    bool refersToModels = false;                    ///< an inter-model reference to whole models
    QorCoreAttributeType shownAs = QorCoreAttributeType::None;  ///< the type that users see; None: its own
};

enum class QorLibraryPart : std::int32_t { BusinessProcess, WorkingEnvironment };

/// The narrow door through which files become repository content. Adding is amortised O(1) unless said otherwise;
/// nothing is changed when an operation fails. Identifiers ascend in the order of adding.
class QOR_API QorRepositoryBuilder {
public:
    virtual ~QorRepositoryBuilder();

    // ---- Method libraries ----

    /// With its two parts; the application library's name must be free. Empty part names are made from the library's.
    virtual QorBuildResult addApplicationLibrary(std::string_view name, std::string_view businessProcessName,
                                                 std::string_view workingEnvironmentName) = 0;
    [[nodiscard]] virtual QorIdentifier libraryPart(QorIdentifier applicationLibrary, QorLibraryPart part) const = 0;
    /// `superclass` (of either part of the same application library) or none. Names of classes are unique within the
    /// application library's part.
    virtual QorBuildResult addClass(QorIdentifier part, std::string_view name, QorIdentifier superclass,
                                    bool abstract) = 0;
    /// A class whose instances are the rows of record attributes; its attributes are the columns.
    virtual QorBuildResult addRecordClass(QorIdentifier part, std::string_view name) = 0;
    virtual QorBuildResult addRelationClass(QorIdentifier part, std::string_view name, QorIdentifier fromClass,
                                            QorIdentifier toClass) = 0;
    /// `owner` must not have or inherit an attribute of that name, nor any of its subclasses. Refused (HasInstances)
    /// once the class has instances.
    virtual QorBuildResult addAttribute(QorIdentifier owner, const QorAttributeSpec& attribute) = 0;
    /// Value that the class itself has: of a class-level attribute, also of the fixed ones such as the cardinality
    /// text, or of an attribute of its objects, which is then a value apart from theirs.
    virtual QorBuildResult setClassValue(QorIdentifier cls, QorIdentifier attribute, std::string_view text) = 0;
    /// Value of a library's attribute (QorAttributeIds.h); `library` is an application library or a part.
    virtual QorBuildResult setLibraryValue(QorIdentifier library, QorIdentifier attribute, std::string_view text) = 0;
    /// The relation class, by name, whose relations stay behind when an object is converted: the core variable 33 names
    /// it for the business-process part, 40 for the other one. The empty name takes it away.
    virtual QorBuildResult setUnmovedRelationClass(QorIdentifier part, std::string_view relationClass) = 0;
    /// A kind of models and the classes whose objects such models hold, relation classes excluded; an abstract class
    /// stands for the count of its subclasses' objects. Names are unique within the application library.
    virtual QorBuildResult addModelType(QorIdentifier part, std::string_view name,
                                        std::span<const QorIdentifier> classes) = 0;
    /// Takes back a whole application library, for a reader that met errors on the way. HasInstances while it has
    /// models or is loaded.
    virtual QorBuildResult removeApplicationLibrary(QorIdentifier applicationLibrary) = 0;

    // ---- Models ----

    /// The first, or a further, version of the model of that name and type. Refused when the thread has that version.
    virtual QorBuildResult addModel(QorIdentifier modelType, std::string_view name, std::string_view version) = 0;
    /// Names of objects are unique within their class in the model.
    virtual QorBuildResult addObject(QorIdentifier model, QorIdentifier cls, std::string_view name) = 0;
    virtual QorBuildResult addRelation(QorIdentifier relationClass, QorIdentifier from, QorIdentifier to) = 0;
    /// Value of an attribute of an object, relation instance or record row, in its text form:
    /// Integer (32 bits), Floating ("-1.5e3", finite), Time ("YY:DDD:HH:MM:SS", days to 364, hours to 23),
    /// Date ("2024-02-29"), DateTime ("2024-02-29 23:59:59"), Enumeration (one of its values), EnumerationList
    /// (several, each once, joined by ";"), Expression (docs/expressions.md), InterReference (`MODEL "name" type:
    /// "model type"`, or `OBJECT "name" class: "class" model: "name" type: "model type"`, one after the other),
    /// anything else: any text. Record attributes take no text. The empty text takes the value away, except from free
    /// texts (Text, LongText, Expression, SimulationAction), which it makes empty. The value of an object's name
    /// renames the object.
    virtual QorBuildResult setValue(QorIdentifier instance, QorIdentifier attribute, std::string_view text) = 0;
    /// A row of a record attribute of an object or relation instance, without values yet; its cells are set as values
    /// of the row. `position` counts from 0; -1 puts the row at the end.
    virtual QorBuildResult addRecordRow(QorIdentifier instance, QorIdentifier attribute, long position = -1) = 0;
    /// A copy of an object, in the same or another model of its library, with its values and record rows, without
    /// relations. The copy remembers the name of its source.
    virtual QorBuildResult pasteObject(QorIdentifier model, QorIdentifier source, std::string_view name) = 0;
    /// With all its versions; no other model of the type may have the name.
    virtual QorBuildResult renameModel(QorIdentifier model, std::string_view name) = 0;
    /// Deletes the model with everything in it. O(its content).
    virtual QorBuildResult removeModel(QorIdentifier model) = 0;

    // ---- Model groups ----

    /// A group in another one, or at the top of an application library. Names are unique among the groups of one group.
    virtual QorBuildResult addModelGroup(QorIdentifier parent, std::string_view name) = 0;
    virtual QorBuildResult renameModelGroup(QorIdentifier group, std::string_view name) = 0;
    /// Into another group, or to the top of the application library, with everything in it.
    virtual QorBuildResult moveModelGroup(QorIdentifier group, QorIdentifier parent) = 0;
    /// HasInstances while it holds a group or a model.
    virtual QorBuildResult removeModelGroup(QorIdentifier group) = 0;
    /// Puts the model, with all its versions, into a group of its library; none takes it out of its group.
    virtual QorBuildResult moveModel(QorIdentifier model, QorIdentifier group) = 0;

    /// Tells how much is to come, so that room is made once.
    virtual void reserve(std::size_t objects, std::size_t relations) = 0;
    /// Lays out what was added for fast reading; done anyway on the first reading that needs it.
    virtual void layOut() = 0;
};

/// A build error in words, without names ("the name is taken").
[[nodiscard]] QOR_API const char* Qor_BuildErrorText(QorBuildError error);
