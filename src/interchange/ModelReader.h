// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "interchange/Building.h"
#include "interchange/Format.h"
#include "interchange/GroupPaths.h"
#include "interchange/ObjectNames.h"

namespace qor::interchange {

/// Makes models of a document with the classes of an application library. What cannot be made is left out, and what
/// stands on it is passed over in silence; whoever calls removes the models when there were errors.
class ModelReader {
public:
    ModelReader(Building& building, QorIdentifier library);

    void read(NodeId root);

private:
    using Cache = std::unordered_map<std::string_view, QorIdentifier>;

    void reserve(NodeId models);
    void readModel(NodeId node);
    QorIdentifier makeModel(NodeId name, NodeId type, std::string_view version);
    void readObject(NodeId node);
    void readRelation(NodeId node);

    QorIdentifier classAt(NodeId node, std::string_view what, bool wantRelationClass);
    QorIdentifier findClass(const Reference& reference, bool wantRelationClass);
    /// The object's number; kNoObject after a report, or when the object could not be made.
    std::uint32_t endAt(NodeId node, std::string_view key);
    std::uint32_t endByText(NodeId node, std::string_view key);
    std::uint32_t endByClassAndName(NodeId node);
    bool isLost(std::string_view name);
    std::string whyNotRelated(const QorBuildResult& result, QorIdentifier relationClass, std::uint32_t from,
                              std::uint32_t to) const;
    std::string describedObject(std::uint32_t object) const;
    std::string unknownObject(NodeId node, std::string_view key);

    Building& _building;
    const Tree& _tree;
    QorIdentifier _library;
    GroupPaths _groups;
    QorIdentifier _parts[kParts.size()]{};
    Cache _classes;
    Cache _relationClasses;
    QorIdentifier _model = QorNoIdentifier;
    bool _typeIsUnknown = false;
    ObjectNames _objects;  // of the model
};

}  // namespace qor::interchange
