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
    return stem.empty() || stem == "-" ? "BPMN" : stem;
}

}  // namespace

Models::Models(const Document& document, const Links& links, const std::string& fileName, Target target)
    : _document(document), _links(links), _models(document.nodes.size(), QorNoIdentifier) {
    std::vector<bool> hasContents(document.nodes.size(), false);
    for (const Node& it : document.nodes)
        if (it.parent != kNoNode) hasContents[static_cast<std::size_t>(it.parent)] = true;

    const std::string stem = stemOf(fileName);
    for (NodeIndex node = 0; node < document.size(); ++node) {
        const Role role = document[node].row->role;
        const bool isCollaboration = role == Role::Collaboration && hasContents[static_cast<std::size_t>(node)];
        const bool isLoneProcess = role == Role::Process && links.collaborationOf(node) == node;
        if (isCollaboration || isLoneProcess) make(node, stem, target);
    }
}

/// Several files of one run may hold models of the same name, so the repository is asked.
void Models::make(NodeIndex scope, std::string_view stem, Target target) {
    const std::string written = folded(_document[scope].name, kMaxBorrowedBytes);
    const std::string base = written.empty() ? std::string(stem) : written;
    std::string name = base;
    for (std::uint32_t number = 2;; ++number) {
        const QorBuildResult made = target.builder.addModel(target.library.modelType(), name, {});
        if (made.ok()) {
            target.sink.madeModel(made.id);
            _models[static_cast<std::size_t>(scope)] = made.id;
            _names.emplace(made.id, std::move(name));
            return;
        }
        if (made.error != QorBuildError::DuplicateName) throw RepositoryFull();
        name = concat({base, " (", std::to_string(number), ")"});
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
