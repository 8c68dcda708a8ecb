// SPDX-License-Identifier: Apache-2.0
#include "cli/HierarchyView.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "cli/Text.h"
#include "platform/QorCoreInterReferenceHandler.h"

namespace qor::cli {

namespace {

bool isSame(const QorInterModRefTarget& a, const QorInterModRefTarget& b) {
    return a.attribute == b.attribute && a.modelName == b.modelName && a.modelTypeName == b.modelTypeName &&
           a.objectName == b.objectName && a.className == b.className;
}

bool holds(long model, QorIdentifier object, const QorBadReference& bad) {
    QorCoreInterReferenceHandler references(model, object, bad.target.attribute);
    if (references.initHandler() != QorErrorCode::Ok) return false;
    for (unsigned long at = 0; at < references.getInterReferenceCount(); ++at)
        if (isSame(references.getInterReference(at), bad.target)) return true;
    return false;
}

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
    for (std::size_t first = 0; first < bad.size();) {
        std::size_t last = first;
        while (last < bad.size() && bad[last].reference.source == bad[first].reference.source) ++last;
        const QorIdentifier model = bad[first].reference.source;
        const std::size_t before = held.size();
        for (const QorIdentifier object : _set.workspace()->reader().objectsOf(model))
            for (std::size_t at = first; at < last; ++at)
                if (holds(model, object, bad[at])) held.push_back({&bad[at], object});
        // What no object holds stands in a row of one.
        for (std::size_t at = first; at < last; ++at) {
            const auto isIt = [&](const HeldReference& one) { return isSame(one.bad->target, bad[at].target); };
            if (std::none_of(held.begin() + static_cast<std::ptrdiff_t>(before), held.end(), isIt))
                held.push_back({&bad[at], -1});
        }
        first = last;
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
