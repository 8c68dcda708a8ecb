// SPDX-License-Identifier: Apache-2.0
#include "modeltools/QorHierarchyTree.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "modeltools/HierarchyDocuments.h"
#include "modeltools/QorReferenceIndex.h"
#include "modeltools/internalErrors.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorGuard.h"

using namespace qor::modeltools;

namespace {

/// Grows the tree layer by layer, so that a limit takes away the lowest ones.
class Growth {
public:
    Growth(const QorReferenceIndex& index, std::size_t maxElements) : _index(index), _max(maxElements) {
        collectCircular();
    }

    std::vector<QorHierarchyElement> grow(long root) {
        _nodes.push_back({{root, 0, QorHierarchyEnd::Leaf, 0}, kNone, 0, 0});
        for (std::size_t at = 0; at < _nodes.size(); ++at) expand(at);
        return inOrder();
    }

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    struct Node {
        QorHierarchyElement element;
        std::size_t parent;
        std::size_t firstChild;
        std::size_t childCount;
    };

    /// Only models that can reach themselves can stand above themselves.
    void collectCircular() {
        std::vector<long> front;
        for (const QorModelCycle& cycle : _index.cycles()) front.push_back(cycle.path.front());
        _circular.insert(front.begin(), front.end());
        if (front.empty()) return;
        // Every model below a circle may be in one; walking up from it then decides.
        for (std::size_t at = 0; at < front.size(); ++at)
            for (const long child : _index.childrenOf(front[at]))
                if (_circular.insert(child).second) front.push_back(child);
    }

    [[nodiscard]] bool standsAboveItself(std::size_t at) const {
        const long model = _nodes[at].element.model;
        if (!_circular.contains(model)) return false;
        for (std::size_t above = _nodes[at].parent; above != kNone; above = _nodes[above].parent)
            if (_nodes[above].element.model == model) return true;
        return false;
    }

    void expand(std::size_t at) {
        const auto children = _index.childrenOf(_nodes[at].element.model);
        if (children.empty()) return;
        if (standsAboveItself(at)) {
            _nodes[at].element.end = QorHierarchyEnd::Cycle;
            return;
        }
        const std::size_t room = _max > _nodes.size() ? _max - _nodes.size() : 0;
        const std::size_t taken = std::min(children.size(), room);
        _nodes[at].element.end = taken == 0 ? QorHierarchyEnd::Cut : QorHierarchyEnd::Inner;
        _nodes[at].element.omitted = children.size() - taken;
        _nodes[at].firstChild = _nodes.size();
        _nodes[at].childCount = taken;
        const std::size_t depth = _nodes[at].element.depth + 1;
        for (const long child : children.first(taken))
            _nodes.push_back({{child, depth, QorHierarchyEnd::Leaf, 0}, at, 0, 0});
    }

    [[nodiscard]] std::vector<QorHierarchyElement> inOrder() const {
        std::vector<QorHierarchyElement> elements;
        elements.reserve(_nodes.size());
        std::vector<std::size_t> ahead{0};
        while (!ahead.empty()) {
            const Node& node = _nodes[ahead.back()];
            ahead.pop_back();
            elements.push_back(node.element);
            for (std::size_t left = node.childCount; left > 0; --left) ahead.push_back(node.firstChild + left - 1);
        }
        return elements;
    }

    const QorReferenceIndex& _index;
    std::size_t _max;
    std::vector<Node> _nodes;
    std::unordered_set<long> _circular;
};

template <class Write>
QorErrorCode written(SV::String& text, Write write) noexcept {
    return Qor_Guarded(kHierarchySource, QorErrorCode::Broken, [&] {
        text = SV::String(write());
        return QorErrorCode::Ok;
    });
}

}  // namespace

QorHierarchyTree::QorHierarchyTree() noexcept = default;
QorHierarchyTree::~QorHierarchyTree() = default;

void QorHierarchyTree::clear() noexcept {
    _elements.clear();
    _complete = true;
}

QorErrorCode QorHierarchyTree::build(const QorReferenceIndex& index, long root, std::size_t maxElements) noexcept {
    clear();
    return Qor_Guarded(kHierarchySource, QorErrorCode::Broken, [&] {
        if (!QorCoreModelingManager::GetGlobal()->isModelVersion(root)) return QorErrorCode::NotAModelVersion;
        _elements = Growth(index, maxElements).grow(root);
        _complete = std::all_of(_elements.begin(), _elements.end(),
                                [](const QorHierarchyElement& element) { return element.omitted == 0; });
        return QorErrorCode::Ok;
    });
}

QorErrorCode QorHierarchyTree::asXml(SV::String& text) const noexcept {
    return written(text, [this] { return hierarchyXml(_elements, false); });
}

QorErrorCode QorHierarchyTree::asNamedXml(SV::String& text) const noexcept {
    return written(text, [this] { return hierarchyXml(_elements, true); });
}

QorErrorCode QorHierarchyTree::asJson(SV::String& text) const noexcept {
    return written(text, [this] { return hierarchyJson(_elements, _complete); });
}

QorErrorCode QorHierarchyTree::asSvg(SV::String& text) const noexcept {
    return written(text, [this] { return hierarchySvg(_elements); });
}
