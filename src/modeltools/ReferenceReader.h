// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <vector>

#include "modeltools/HierarchyAttributes.h"
#include "modeltools/ModelByName.h"
#include "modeltools/QorReferenceIndex.h"

namespace qor::modeltools {

/// Fetches the references of models and follows them.
class ReferenceReader {
public:
    /// `models`: about how many will be read.
    ReferenceReader(std::size_t models, std::vector<QorModelReference>& references, std::vector<QorBadReference>& bad);

    /// False when the repository does not give the model's references.
    bool read(long model);

private:
    [[nodiscard]] QorModelReference follow(QorIdentifier source, const QorInterModRefTarget& target);
    void findObject(const QorInterModRefTarget& target, QorModelReference& reference);
    [[nodiscard]] const std::vector<long>& classesNamed(const SV::String& name);

    std::vector<QorModelReference>& _references;
    std::vector<QorBadReference>& _bad;
    HierarchyAttributes _hierarchy;
    KnownModels _models;
    std::map<SV::String, std::vector<long>> _classes;  ///< of both parts, by name
};

}  // namespace qor::modeltools
