// SPDX-License-Identifier: Apache-2.0
#include "interchange/Wording.h"
#include "interchange/bpmn/BpmnMaker.h"

namespace qor::interchange::bpmn {

namespace {

std::string stemOf(const std::string& fileName) {
    const std::size_t slash = fileName.find_last_of('/');
    std::string stem = slash == std::string::npos ? fileName : fileName.substr(slash + 1);
    const std::size_t dot = stem.find_last_of('.');
    if (dot != std::string::npos && dot > 0) stem.resize(dot);
    stem = folded(stem, kMaxBorrowedBytes);
    return stem.empty() || stem == "-" ? "BPMN" : stem;
}

/// What stands in a collaboration.
struct Contents {
    bool any = false;
    NodeIndex pool = kNoNode;
    bool hasSeveralPools = false;
};

std::vector<Contents> contentsOf(const Document& document) {
    std::vector<Contents> contents(document.nodes.size());
    for (NodeIndex node = 0; node < document.size(); ++node) {
        const Node& it = document[node];
        if (it.parent == kNoNode) continue;
        Contents& around = contents[static_cast<std::size_t>(it.parent)];
        around.any = true;
        if (it.row->role != Role::Participant) continue;
        around.hasSeveralPools = around.pool != kNoNode;
        around.pool = node;
    }
    return contents;
}

/// A collaboration without a name goes by its only pool: by the name of the process in it, or else of the pool.
std::string_view nameWritten(const Document& document, NodeIndex scope, const Contents& contents) {
    if (const Node& it = document[scope]; !it.name.empty()) return it.name;
    if (contents.pool == kNoNode || contents.hasSeveralPools) return {};
    const NodeIndex process = document.find(document.valueOf(contents.pool, Slot::ProcessRef));
    const bool hasName = process != kNoNode && !document[process].name.empty();
    return document[hasName ? process : contents.pool].name;
}

}  // namespace

Models::Models(const Document& document, const Links& links, const std::string& fileName, Target target)
    : _document(document), _links(links), _models(document.nodes.size(), QorNoIdentifier) {
    const std::vector<Contents> contents = contentsOf(document);
    const std::string stem = stemOf(fileName);
    for (NodeIndex node = 0; node < document.size(); ++node) {
        const Contents& inside = contents[static_cast<std::size_t>(node)];
        const Role role = document[node].row->role;
        const bool isCollaboration = role == Role::Collaboration && inside.any;
        const bool isLoneProcess = role == Role::Process && links.collaborationOf(node) == node;
        if (!isCollaboration && !isLoneProcess) continue;
        const std::string name = folded(nameWritten(document, node, inside), kMaxBorrowedBytes);
        make(node, name.empty() ? stem : name, target);
    }
    for (NodeIndex node = 0; node < document.size(); ++node) {
        const bool isProcess = document[node].row->role == Role::Process && !document[node].id.empty();
        const QorIdentifier model = isProcess ? modelOf(node) : QorNoIdentifier;
        if (model != QorNoIdentifier) target.sink.madeProcess(document[node].id, model);
    }
}

/// Several files of one run may hold models of the same name, so the repository is asked.
void Models::make(NodeIndex scope, const std::string& base, Target target) {
    std::string name = base;
    for (std::uint32_t& number = _lastNumbers.try_emplace(base, 1).first->second;;) {
        const QorBuildResult made = target.builder.addModel(target.library.modelType(), name, {});
        if (made.ok()) {
            target.sink.madeModel(made.id);
            _models[static_cast<std::size_t>(scope)] = made.id;
            _names.emplace(made.id, std::move(name));
            return;
        }
        if (made.error != QorBuildError::DuplicateName) throw RepositoryFull();
        name = concat({base, " (", std::to_string(++number), ")"});
    }
}

QorIdentifier Models::modelOf(NodeIndex node) const {
    NodeIndex scope = _links.scopeOf(node);
    if (scope == kNoNode) return QorNoIdentifier;
    if (_document[scope].row->role == Role::Process) scope = _links.collaborationOf(scope);
    return _models[static_cast<std::size_t>(scope)];
}

std::string_view Models::nameOf(QorIdentifier model) const {
    const auto at = _names.find(model);
    return at == _names.end() ? std::string_view() : std::string_view(at->second);
}

}  // namespace qor::interchange::bpmn
