// SPDX-License-Identifier: Apache-2.0
#include "cli/LibraryOutline.h"

#include <algorithm>
#include <map>

#include "interchange/Format.h"

namespace qor::cli {

namespace format = qor::interchange;

std::vector<OutlinedClass> classTree(const QorRepositoryReader& reader, QorIdentifier part) {
    std::map<QorIdentifier, std::vector<QorClassInfo>> subclasses;
    std::vector<OutlinedClass> open;  // the next class is the last one
    for (const QorClassInfo& cls : reader.classesOf(part)) {
        if (cls.isRecordClass) continue;
        const bool isRoot = reader.classInfo(cls.superclass).part != part;
        if (isRoot)
            open.push_back({cls, 0});
        else
            subclasses[cls.superclass].push_back(cls);
    }
    std::reverse(open.begin(), open.end());

    std::vector<OutlinedClass> tree;
    while (!open.empty()) {
        const OutlinedClass cls = open.back();
        open.pop_back();
        tree.push_back(cls);
        const std::vector<QorClassInfo>& below = subclasses[cls.info.id];
        for (auto sub = below.rbegin(); sub != below.rend(); ++sub) open.push_back({*sub, cls.depth + 1});
    }
    return tree;
}

std::vector<QorClassInfo> recordClasses(const QorRepositoryReader& reader, QorIdentifier part) {
    std::vector<QorClassInfo> classes = reader.classesOf(part);
    std::erase_if(classes, [](const QorClassInfo& cls) { return !cls.isRecordClass; });
    return classes;
}

std::vector<QorModelTypeInfo> modelTypes(const QorRepositoryReader& reader, QorIdentifier part) {
    std::vector<QorModelTypeInfo> types = reader.modelTypesOf(reader.applicationLibraryOf(part));
    std::erase_if(types, [part](const QorModelTypeInfo& type) { return type.part != part; });
    return types;
}

std::string_view typeName(QorCoreAttributeType type) {
    for (const auto& row : format::kAttributeTypes)
        if (row.type == type) return row.name;
    return "unknown";
}

std::vector<std::string_view> textsOfClass(const QorRepositoryReader& reader, QorIdentifier cls) {
    std::vector<std::string_view> texts;
    for (const auto& row : format::kClassTexts)
        if (!reader.classValue(cls, row.businessProcess).empty() ||
            !reader.classValue(cls, row.workingEnvironment).empty())
            texts.push_back(row.key);
    return texts;
}

std::vector<std::string_view> textsOfLibrary(const QorRepositoryReader& reader, QorIdentifier library) {
    std::vector<std::string_view> texts;
    for (const auto& row : format::kLibraryTexts)
        if (!reader.libraryValue(library, row.attribute).empty()) texts.push_back(row.key);
    return texts;
}

}  // namespace qor::cli
