// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "embedded/QorRepositoryBuilder.h"
#include "interchange/ImportSink.h"
#include "interchange/bpmn/BpmnDocument.h"
#include "interchange/bpmn/BpmnFindings.h"
#include "interchange/bpmn/BpmnLibrary.h"
#include "interchange/bpmn/BpmnLinks.h"
#include "interchange/bpmn/BpmnValues.h"

namespace qor::interchange::bpmn {

/// What a file is being made into.
struct Target {
    const Library& library;
    QorRepositoryBuilder& builder;
    ImportSink& sink;
};

/// Thrown when the repository is full: nothing more can be made.
struct RepositoryFull {};

/// The models of a file: one for each collaboration, with the processes of its pools, and one for each other process.
class Models {
public:
    Models(const Document& document, const Links& links, const std::string& fileName, Target target);

    /// The model that an element belongs to; none for elements outside of every model.
    [[nodiscard]] QorIdentifier modelOf(NodeIndex node) const;
    [[nodiscard]] std::string_view nameOf(QorIdentifier model) const;
    [[nodiscard]] bool empty() const { return _names.empty(); }

private:
    void make(NodeIndex scope, const std::string& base, Target target);

    const Document& _document;
    const Links& _links;
    std::vector<QorIdentifier> _models;  // by node, of scopes only
    std::unordered_map<QorIdentifier, std::string> _names;
    std::unordered_map<std::string, std::uint32_t> _lastNumbers;  // by name
};

/// The objects of a file, by element.
class Objects {
public:
    Objects(const Document& document, const Links& links, const Models& models, Findings& findings, Target target);

    /// The object that an element became; none when it became none.
    [[nodiscard]] QorIdentifier objectOf(NodeIndex node) const { return _objects[static_cast<std::size_t>(node)]; }
    [[nodiscard]] ObjectClass classOf(NodeIndex node) const { return _classes[static_cast<std::size_t>(node)]; }

private:
    void make(NodeIndex node, QorIdentifier model);
    QorIdentifier makeNamed(QorIdentifier model, ObjectClass cls, std::string_view name, std::string& nameGiven);
    void setValues(NodeIndex node, std::string_view nameGiven);
    void addItem(NodeIndex reference, NodeIndex item);
    void setCalled(NodeIndex node, std::string_view reference);

    const Document& _document;
    const Links& _links;
    const Models& _models;
    Findings& _findings;
    Target _target;
    std::vector<QorIdentifier> _objects;
    std::vector<ObjectClass> _classes;
    std::unordered_map<std::string, std::uint32_t> _lastNumbers;  // by model, class and name
    Values _values;
};

/// The relations of a file: what contains what, and the flows.
void makeRelations(const Document& document, const Links& links, const Models& models, const Objects& objects,
                   Findings& findings, Target target);

}  // namespace qor::interchange::bpmn
