// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "platform/QorExport.h"
#include "platform/SvString.h"

/// Where an inter-model reference leads: a model by name and model type, or an object in it.
struct QOR_API QorInterModRefTarget {
    long attribute = -1;  ///< the attribute that the reference was made through
    SV::String modelTypeName;
    SV::String modelName;
    SV::String objectName;  ///< empty when the model itself is meant
    SV::String className;   ///< of the object; empty when the model itself is meant
};

/// The inter-model references that leave one model, as the repository fills them: by object, attribute and position.
class QOR_API QorSourceInterRefContainer {
public:
    QorSourceInterRefContainer();
    ~QorSourceInterRefContainer();
    void add(QorInterModRefTarget target) { _targets.push_back(std::move(target)); }
    void removeAll() { _targets.clear(); }
    [[nodiscard]] unsigned long numberOfElements() const { return _targets.size(); }
    [[nodiscard]] const QorInterModRefTarget& elementAtIndex(unsigned long index) const { return _targets[index]; }

private:
    std::vector<QorInterModRefTarget> _targets;
};
