// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "interchange/QorImport.h"
#include "platform/QorExport.h"

namespace qor::interchange {
class Tree;
}

/// A place of a QorDocument with what is written there. Small, to be copied; holds as long as the document.
class QOR_API QorDocumentNode {
public:
    /// Nothing.
    QorDocumentNode() = default;

    [[nodiscard]] explicit operator bool() const noexcept { return _tree != nullptr; }
    [[nodiscard]] bool isText() const;
    [[nodiscard]] bool isList() const;
    [[nodiscard]] bool isMapping() const;

    /// Plain scalars are texts, too: `off` and `3` as they are written. Empty for what is no text.
    [[nodiscard]] std::string_view text() const;
    /// From 1, the column in bytes; 0 for nothing.
    [[nodiscard]] std::uint32_t line() const;
    [[nodiscard]] std::uint32_t column() const;

    /// Entries of a list.
    [[nodiscard]] std::vector<QorDocumentNode> items() const;
    /// Keys of a mapping, each followed by its value. No key stands twice.
    [[nodiscard]] std::vector<QorDocumentNode> keysAndValues() const;

private:
    friend class QorDocument;
    QorDocumentNode(const qor::interchange::Tree* tree, std::uint32_t node) : _tree(tree), _node(node) {}

    const qor::interchange::Tree* _tree = nullptr;
    std::uint32_t _node = 0;
};

/// A small YAML or JSON file for a purpose of its own, read with the same strictness as libraries and models: no
/// anchors, tags or double keys, UTF-8, bounded nesting.
class QOR_API QorDocument {
public:
    /// Reads a file ("-" is standard input). What is wrong with it is appended to `diagnostics`; the root is then
    /// nothing. Throws when memory runs out.
    QorDocument(const std::string& path, std::vector<QorDiagnostic>& diagnostics);
    QorDocument(const QorDocument&) = delete;
    QorDocument& operator=(const QorDocument&) = delete;
    ~QorDocument();

    [[nodiscard]] QorDocumentNode root() const;

private:
    std::unique_ptr<qor::interchange::Tree> _tree;
};
