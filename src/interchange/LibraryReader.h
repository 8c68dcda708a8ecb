// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "interchange/Building.h"
#include "interchange/Format.h"
#include "interchange/KeywordTexts.h"

namespace qor::interchange {

/// Makes an application library of a document. Everything is made in a fixed order, whatever the file's: classes above
/// those that extend them, then attributes, relation classes, values, model types. What cannot be made under its own
/// name is made under another one, so that reading can go on and find what else is wrong; whoever calls removes the
/// library when there were errors.
class LibraryReader {
public:
    explicit LibraryReader(Building& building) : _building(building), _tree(building.tree()) {}

    /// `library` becomes the library as soon as there is one, also when there are errors. Syntax errors of keyword
    /// texts are reported beside other errors; alone they are left to those who read the texts.
    void read(NodeId root, QorIdentifier& library);

private:
    enum PartKey {
        kPartName,
        kPartTexts,
        kRecordClasses,
        kClasses,
        kRelationClasses,
        kUnmoved,
        kModelTypes,
        kPartKeyCount
    };
    enum ClassKey { kClassName, kExtends, kAbstract, kAttributes, kValues, kFirstClassText };
    static constexpr std::size_t kClassKeyCount = kFirstClassText + kClassTexts.size();

    using TextFields = std::optional<Fields<kLibraryTexts.size()>>;

    struct Part {
        QorLibraryPart part;
        QorIdentifier id = QorNoIdentifier;
        std::optional<Fields<kPartKeyCount>> fields;
        TextFields texts;
        std::unordered_map<std::string_view, std::uint32_t> classes;  // into _classes
    };
    enum class State : std::uint8_t { Written, InHand, Made };
    struct Class {
        NodeId node;
        std::uint8_t part;
        bool isRecord;
        State state = State::Written;
        bool doubtful = false;    // it, or a class above it, is not what was written
        std::uint16_t depth = 0;  // classes above it
        std::uint32_t superclass = 0xFFFFFFFF;
        QorIdentifier id = QorNoIdentifier;
        Fields<kClassKeyCount> fields;
    };
    /// Every look at a class's attributes goes through those above it.
    static constexpr std::uint16_t kMostClassesAbove = 256;
    /// Every class above an attribute's own remembers its name: what may have to be remembered, in all.
    static constexpr std::uint64_t kMostAttributesTimesClassesAbove = 1000000;
    static constexpr std::uint32_t kNoClass = 0xFFFFFFFF;

    void make(NodeId root, QorIdentifier& library);
    void readTexts(NodeId texts, TextFields& fields);
    bool makeLibrary(NodeId root, std::string_view name, NodeId nameNode);
    void declareClasses(std::size_t part);
    void declareClass(std::size_t part, NodeId node, bool isRecord);
    void rememberRules(const Class& cls);
    void resolveSuperclass(Class& cls);
    void makeClasses();
    void makeWithAncestors(std::uint32_t index);
    [[nodiscard]] bool isOfBearableSize() const;
    void reportCircle(const std::vector<std::uint32_t>& chain, std::uint32_t closing);
    void makeClass(Class& cls, std::uint32_t superclass);
    void makeAttributes(QorIdentifier owner, NodeId attributes, std::size_t part);
    bool makeAttribute(QorIdentifier owner, NodeId node, std::size_t part);
    void makeRelationClasses(std::size_t part);
    void makeRelationClass(std::size_t part, NodeId node);
    void setUnmovedRelationClass(const Part& part);
    void setClassValues(const Class& cls);
    void setValues(QorIdentifier owner, NodeId values, bool doubtful);
    void setTexts(QorIdentifier library, const TextFields& texts);
    void makeModelTypes(std::size_t part);

    std::uint32_t findClass(const Reference& reference, std::size_t ownPart) const;
    /// Reports what cannot be found, unless nothing is written there.
    std::uint32_t resolveClass(NodeId node, std::size_t ownPart, std::string_view what, bool wantRecord);
    QorIdentifier classIdAt(NodeId node, std::size_t ownPart, std::string_view what, bool wantRecord);

    Building& _building;
    const Tree& _tree;
    QorIdentifier _library = QorNoIdentifier;
    std::array<Part, kParts.size()> _parts{};
    std::vector<Class> _classes;
    std::vector<std::string_view> _classNames;
    std::unordered_set<std::string_view> _failedAttributes;             // names
    std::vector<std::pair<QorIdentifier, NodeId>> _defaultExpressions;  // whose attribute, and the default
    KeywordTexts _keywordTexts;
};

}  // namespace qor::interchange
