// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"

class QorReferenceIndex;

/// What stands below an element of a tree.
enum class QorHierarchyEnd : std::int32_t {
    Inner,  ///< its models below
    Leaf,   ///< the model refers to none
    Cycle,  ///< nothing: the model stands above itself
    Cut     ///< nothing: the tree has as many elements as it may have
};

/// A model at a place in the tree.
struct QorHierarchyElement {
    long model = -1;
    std::size_t depth = 0;  ///< 0 at the root
    QorHierarchyEnd end = QorHierarchyEnd::Leaf;
    std::size_t omitted = 0;  ///< how many models right below it are left out
};

/// The tree of referenced models below a model, with a limit on its size: n layers of two models that each refer to
/// both of the next have 2^n elements. What is left out is farthest from the root.
class QOR_API QorHierarchyTree {
public:
    QorHierarchyTree() noexcept;
    QorHierarchyTree(const QorHierarchyTree&) = delete;
    QorHierarchyTree& operator=(const QorHierarchyTree&) = delete;
    ~QorHierarchyTree();

    /// Takes the place of the earlier tree. At least the root is in it. NotAModelVersion, and Broken when memory ran
    /// out, leave an empty tree. Linear in the elements, but for models that refer to each other in a circle: each of
    /// these looks at the elements above it.
    QorErrorCode build(const QorReferenceIndex& index, long root, std::size_t maxElements) noexcept;

    /// From the root down, each followed by what stands below it; siblings ascend.
    [[nodiscard]] const std::vector<QorHierarchyElement>& elements() const noexcept { return _elements; }
    /// Whether nothing was left out.
    [[nodiscard]] bool isComplete() const noexcept { return _complete; }

    // As documents in UTF-8; Broken, and the text as it was, when memory ran out. An empty tree gives an empty
    // document.

    /// A whole tree reads as QorHierarchyManager::GetHierarchyAsXML writes it; one that is cut has the attribute
    /// "omitted" at the elements below which something is missing.
    QorErrorCode asXml(SV::String& text) const noexcept;
    /// The same with the models' names and types, for readers who do not know the identifiers.
    QorErrorCode asNamedXml(SV::String& text) const noexcept;
    /// "qor.hierarchy.tree/1": the elements one after the other with depth, identifier, name and type.
    QorErrorCode asJson(SV::String& text) const noexcept;
    /// A drawing with names and types, one row an element.
    QorErrorCode asSvg(SV::String& text) const noexcept;

private:
    void clear() noexcept;

    std::vector<QorHierarchyElement> _elements;
    bool _complete = true;
};
