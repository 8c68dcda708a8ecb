// SPDX-License-Identifier: Apache-2.0
#include "cli/HierarchyView.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "cli/HierarchyRows.h"
#include "cli/Text.h"
#include "platform/QorCoreInterReferenceHandler.h"

namespace qor::cli {

namespace {

using Key = std::tuple<long, std::string_view, std::string_view, std::string_view, std::string_view>;

Key keyOf(const QorInterModRefTarget& target) {
    return {target.attribute, target.modelTypeName.view(), target.modelName.view(), target.className.view(),
            target.objectName.view()};
}

/// The bad references of one model, each once, to be found in its objects and their rows.
class BadOfModel {
public:
    explicit BadOfModel(HierarchyRows& rows) : _rows(rows) {}

    void add(const QorRepositoryReader& reader, const QorBadReference& bad) {
        const QorIdentifier attribute = bad.reference.attribute;
        const bool isColumn = reader.classInfo(reader.attributeInfo(attribute).owner).isRecordClass;
        (isColumn ? _columns : _attributes).insert(attribute);
        _bad.try_emplace(keyOf(bad.target), &bad, false);
    }

    void find(long model, QorIdentifier object, std::vector<HeldReference>& held) {
        for (const long attribute : _attributes) findIn(model, object, attribute, object, held);
        if (_columns.empty()) return;
        for (const QorIdentifier row : _rows.of(object))
            for (const long column : _columns) findIn(model, row, column, object, held);
    }

    /// What nobody could be found to hold is told all the same.
    void takeRest(std::vector<HeldReference>& held) const {
        for (const auto& [key, bad] : _bad)
            if (!bad.second) held.push_back({bad.first, -1});
    }

private:
    void findIn(long model, QorIdentifier holder, long attribute, QorIdentifier object,
                std::vector<HeldReference>& held) {
        QorCoreInterReferenceHandler references(model, holder, attribute);
        if (references.initHandler() != QorErrorCode::Ok) return;
        for (unsigned long at = 0; at < references.getInterReferenceCount(); ++at) {
            const auto found = _bad.find(keyOf(references.getInterReference(at)));
            if (found == _bad.end()) continue;
            found->second.second = true;
            held.push_back({found->second.first, object});
        }
    }

    HierarchyRows& _rows;
    std::set<long> _attributes;
    std::set<long> _columns;
    std::map<Key, std::pair<const QorBadReference*, bool>> _bad;
};

std::string modelWords(const QorInterModRefTarget& target) {
    return fmt::format("{} ({})", quoted(target.modelName), printable(target.modelTypeName));
}

std::string objectWords(const QorInterModRefTarget& target) {
    return fmt::format("{} {}", printable(target.className), quoted(target.objectName));
}

}  // namespace

std::string HierarchyView::nameOf(long id) const {
    return std::string(_set.workspace()->reader().nameOf(static_cast<QorIdentifier>(id)));
}

std::string HierarchyView::typeOf(long model) const {
    const auto& reader = _set.workspace()->reader();
    return std::string(reader.nameOf(reader.modelInfo(static_cast<QorIdentifier>(model)).modelType));
}

std::string HierarchyView::called(long model) const {
    return fmt::format("{} ({})", quoted(nameOf(model)), printable(typeOf(model)));
}

std::vector<long> HierarchyView::chosen(const std::vector<std::string>& names) const {
    if (names.empty()) {
        std::vector<long> begins = _index.roots();
        std::set<long> reached;
        const auto reach = [&](long from) {
            std::vector<long> ahead{from};
            while (!ahead.empty()) {
                const long model = ahead.back();
                ahead.pop_back();
                if (!reached.insert(model).second) continue;
                for (const long child : _index.childrenOf(model)) ahead.push_back(child);
            }
        };
        for (const long root : begins) reach(root);
        for (const long model : _index.models()) {
            if (reached.contains(model)) continue;
            begins.push_back(model);
            reach(model);
        }
        std::sort(begins.begin(), begins.end());
        return begins;
    }
    const std::set<std::string> wanted(names.begin(), names.end());
    std::vector<long> found;
    for (const long model : _index.models())
        if (wanted.contains(nameOf(model))) found.push_back(model);
    return found;
}

std::vector<HeldReference> HierarchyView::badReferences() const {
    std::vector<HeldReference> held;
    const auto& bad = _index.badReferences();
    const auto& reader = _set.workspace()->reader();
    HierarchyRows rows(reader);
    for (std::size_t first = 0; first < bad.size();) {
        const QorIdentifier model = bad[first].reference.source;
        BadOfModel ofModel(rows);
        for (; first < bad.size() && bad[first].reference.source == model; ++first) ofModel.add(reader, bad[first]);
        for (const QorIdentifier object : reader.objectsOf(model)) ofModel.find(model, object, held);
        ofModel.takeRest(held);
    }
    return held;
}

std::string HierarchyView::reasonOf(const QorBadReference& bad) {
    switch (bad.reference.state) {
        case QorReferenceState::Good:
            return {};
        case QorReferenceState::UnknownModelType:
            return fmt::format("there is no model type {}", quoted(bad.target.modelTypeName));
        case QorReferenceState::UnknownModel:
            return fmt::format("there is no model {}", modelWords(bad.target));
        case QorReferenceState::NoVersion:
            return fmt::format("the model {} has no version", modelWords(bad.target));
        case QorReferenceState::UnknownClass:
            return fmt::format("there is no class {}", quoted(bad.target.className));
        case QorReferenceState::UnknownObject:
            return fmt::format("the model {} has no {}", modelWords(bad.target), objectWords(bad.target));
        case QorReferenceState::SeveralObjects:
            return fmt::format("the model {} has several objects {}", modelWords(bad.target), objectWords(bad.target));
    }
    return {};
}

std::string_view HierarchyView::wordOf(QorReferenceState state) {
    constexpr std::string_view kWords[] = {"good",          "unknown_model_type", "unknown_model",  "no_version",
                                           "unknown_class", "unknown_object",     "several_objects"};
    return kWords[static_cast<std::size_t>(state)];
}

}  // namespace qor::cli
