// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>
#include <vector>

#include "embedded/QorRepositoryReader.h"

namespace qor::cli {

/// A class with its depth in the tree of its library part.
struct OutlinedClass {
    QorClassInfo info;
    std::size_t depth = 0;
};

/// The classes of a part without its record classes, each class behind its superclass.
[[nodiscard]] std::vector<OutlinedClass> classTree(const QorRepositoryReader& reader, QorIdentifier part);
[[nodiscard]] std::vector<QorClassInfo> recordClasses(const QorRepositoryReader& reader, QorIdentifier part);
[[nodiscard]] std::vector<QorModelTypeInfo> modelTypes(const QorRepositoryReader& reader, QorIdentifier part);

// The words of library files for what is in a library.
[[nodiscard]] std::string_view typeName(QorCoreAttributeType type);
/// Texts that a class, or an application library or a part of one, has.
[[nodiscard]] std::vector<std::string_view> textsOfClass(const QorRepositoryReader& reader, QorIdentifier cls);
[[nodiscard]] std::vector<std::string_view> textsOfLibrary(const QorRepositoryReader& reader, QorIdentifier library);

}  // namespace qor::cli
