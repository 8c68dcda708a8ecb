// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "cli/ModelSet.h"
#include "modeltools/QorHierarchyTree.h"
#include "modeltools/QorReferenceIndex.h"

namespace qor::cli {

/// A broken or ambiguous reference with the object that holds it.
struct HeldReference {
    const QorBadReference* bad;
    long object;  ///< itself or in a row of its tables; -1 when nobody could be found to hold it
};

/// What a run of `qor hierarchy` found, and how it is called.
class HierarchyView {
public:
    HierarchyView(const ModelSet& set, const QorReferenceIndex& index) : _set(set), _index(index) {}

    [[nodiscard]] const ModelSet& set() const { return _set; }
    [[nodiscard]] const QorReferenceIndex& index() const { return _index; }

    [[nodiscard]] std::string nameOf(long id) const;
    [[nodiscard]] std::string typeOf(long model) const;
    /// `"Order" (Process)`
    [[nodiscard]] std::string called(long model) const;
    /// The models of these names; none given: those that trees begin with, which are the lowest of their circle where
    /// models only refer to each other.
    [[nodiscard]] std::vector<long> chosen(const std::vector<std::string>& names) const;
    /// Every broken or ambiguous reference, by model and object.
    [[nodiscard]] std::vector<HeldReference> badReferences() const;
    /// `there is no model "Pack" (Process)`
    [[nodiscard]] static std::string reasonOf(const QorBadReference& bad);
    /// The word for programs.
    [[nodiscard]] static std::string_view wordOf(QorReferenceState state);

private:
    const ModelSet& _set;
    const QorReferenceIndex& _index;
};

/// The two forms of a report.
struct HierarchyReport {
    const HierarchyView& view;
    const std::vector<long>& chosen;
    bool whereUsed;
    bool broken;
    std::size_t maxElements;
};

class Console;

// How many broken or ambiguous references were told.
[[nodiscard]] std::size_t writeHierarchyText(const HierarchyReport& report, Console& console);
[[nodiscard]] std::size_t writeHierarchyJson(const HierarchyReport& report, Console& console);

}  // namespace qor::cli
