// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "embedded/QorRepositoryBuilder.h"
#include "embedded/QorRepositoryReader.h"
#include "interchange/Fields.h"

namespace qor::interchange {

/// What turning a document into repository content needs at every step: the two sides, and where things were written.
class Building {
public:
    Building(const Tree& tree, Findings& findings, QorRepositoryBuilder& builderToUse,
             const QorRepositoryReader& readerToUse)
        : reading{tree, findings, {}}, builder(builderToUse), reader(readerToUse) {}

    Reading reading;
    QorRepositoryBuilder& builder;
    const QorRepositoryReader& reader;

    [[nodiscard]] const Tree& tree() const { return reading.tree; }
    void error(NodeId node, std::string text) { reading.error(node, std::move(text)); }
    void missing(NodeId node, std::string text) { reading.missing(node, std::move(text)); }
    void warn(NodeId node, std::string text) {
        const Mark mark = tree().mark(node);
        reading.findings.report(QorSeverity::Warning, mark.line, mark.column, std::move(text));
    }

    /// Remembers where a thing of the method library was written.
    void wrote(QorIdentifier thing, NodeId node) { _nodes[thing] = node; }
    /// Why a thing of that name could not be made.
    [[nodiscard]] std::string whyNotMade(const QorBuildResult& result, std::string_view name) const;
    /// "class "Task" at line 12", or without the line when it was not written in this file.
    [[nodiscard]] std::string described(QorIdentifier thing) const;

    /// What is asked of an attribute for each of its values.
    struct Attribute {
        QorIdentifier id = QorNoIdentifier;  ///< none when there is no attribute of that name
        QorCoreAttributeType type = QorCoreAttributeType::None;
        QorAttributeLevel level = QorAttributeLevel::Instance;
        QorIdentifier target = QorNoIdentifier;
    };
    /// An attribute of a class or relation class by name, kept for the next time.
    [[nodiscard]] const Attribute& findAttribute(QorIdentifier owner, std::string_view name);
    /// "class "Task" has no attribute ...", with a guess.
    [[nodiscard]] std::string unknownAttribute(QorIdentifier owner, std::string_view name);
    /// The text of a value for an attribute. A list is the value of an enumeration list. Nothing, after the error was
    /// reported, when it is neither.
    [[nodiscard]] std::optional<std::string_view> valueText(NodeId value, QorIdentifier attribute);
    /// Why an attribute did not take a text.
    [[nodiscard]] std::string whyNotTaken(const QorBuildResult& result, QorIdentifier attribute,
                                          std::string_view text) const;

private:
    std::unordered_map<QorIdentifier, NodeId> _nodes;
    std::unordered_map<QorIdentifier, std::unordered_map<std::string_view, Attribute>> _attributes;
    std::string _joined;  // the last list
};

/// A class or relation class as a file names it: by its name, or with the library part when both parts have one.
struct Reference {
    NodeId node = kNoNode;
    std::string_view name;
    int part = -1;  ///< index into kParts; -1 for whichever part has it
};
/// Nothing, after the error was reported, when it does not name anything.
[[nodiscard]] std::optional<Reference> readReference(Reading& reading, NodeId node, std::string_view what);

}  // namespace qor::interchange
