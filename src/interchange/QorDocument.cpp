// SPDX-License-Identifier: Apache-2.0
#include "interchange/QorDocument.h"

#include <iterator>

#include "interchange/Document.h"
#include "interchange/Findings.h"
#include "interchange/Input.h"
#include "interchange/Tree.h"

using namespace qor::interchange;

namespace {

/// False when the file is not to be used.
bool readTree(const std::string& path, Tree& tree, Findings& findings) {
    Inputs inputs;
    Input input = inputs.open(path);
    const bool isRead = input.problem.empty() && input.readAll();
    if (!isRead) {
        findings.error({}, input.problem);
        return false;
    }
    const Notation notation = notationOf(input.text);
    if (notation == Notation::Nothing || notation == Notation::Xml) {
        findings.error({}, notation == Notation::Xml ? "this is XML; YAML or JSON is expected" : "the file is empty");
        return false;
    }
    return readDocument(input.text, tree, findings) && !findings.hasErrors();
}

}  // namespace

bool QorDocumentNode::isText() const { return _tree != nullptr && _tree->isText(_node); }
bool QorDocumentNode::isList() const { return _tree != nullptr && _tree->kind(_node) == NodeKind::Sequence; }
bool QorDocumentNode::isMapping() const { return _tree != nullptr && _tree->kind(_node) == NodeKind::Mapping; }

std::string_view QorDocumentNode::text() const { return _tree == nullptr ? std::string_view() : _tree->text(_node); }

std::uint32_t QorDocumentNode::line() const { return _tree == nullptr ? 0 : _tree->mark(_node).line; }
std::uint32_t QorDocumentNode::column() const { return _tree == nullptr ? 0 : _tree->mark(_node).column; }

std::vector<QorDocumentNode> QorDocumentNode::items() const {
    std::vector<QorDocumentNode> items;
    if (!isList()) return items;
    for (NodeId node = _tree->first(_node); node != _tree->next(_node); node = _tree->next(node))
        items.push_back({_tree, node});
    return items;
}

std::vector<QorDocumentNode> QorDocumentNode::keysAndValues() const {
    std::vector<QorDocumentNode> nodes;
    if (!isMapping()) return nodes;
    for (NodeId node = _tree->first(_node); node != _tree->next(_node); node = _tree->next(node))
        nodes.push_back({_tree, node});
    return nodes;
}

QorDocument::QorDocument(const std::string& path, std::vector<QorDiagnostic>& diagnostics)
    : _tree(std::make_unique<Tree>()) {
    Places nowhere;
    Findings findings(path, nowhere);
    if (!readTree(path, *_tree, findings)) _tree = std::make_unique<Tree>();
    auto found = findings.takeDiagnostics();
    diagnostics.insert(diagnostics.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
}

QorDocument::~QorDocument() = default;

QorDocumentNode QorDocument::root() const {
    return _tree->empty() ? QorDocumentNode() : QorDocumentNode(_tree.get(), 0);
}
