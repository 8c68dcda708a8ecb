// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorRepositoryBuilder.h"
#include "interchange/bpmn/BpmnDocument.h"
#include "interchange/bpmn/BpmnFindings.h"
#include "interchange/bpmn/BpmnLibrary.h"
#include "interchange/bpmn/BpmnLinks.h"

namespace qor::interchange::bpmn {

/// Gathers the values of one object or relation and sets them. What the class has no attribute for goes to the further
/// details, one line each.
class Values {
public:
    void add(Attribute attribute, std::string_view text);
    /// A value with the name that BPMN has for it.
    void addFurther(std::string_view key, std::string_view text);
    /// Everything that the element itself says, except the references that become relations.
    void addAllOf(const Document& document, const Links& links, NodeIndex node);

    /// The details of elements that have no object of their own.
    void addCarried(const Document& document, const std::vector<NodeIndex>& carried);

    /// Sets what was gathered, and forgets it. `attributeOf` gives the identifier that an attribute has here.
    template <class AttributeOf>
    void set(QorRepositoryBuilder& builder, QorIdentifier instance, const AttributeOf& attributeOf, Findings& findings,
             const Node& node) {
        for (std::size_t i = 0; i < _texts.size(); ++i) {
            const auto attribute = static_cast<Attribute>(i);
            if (_texts[i].empty()) continue;
            const QorIdentifier id = attributeOf(attribute);
            if (id < 1 && attribute != Attribute::Further)
                addFurther(nameOf(attribute), _texts[i]);
            else if (!builder.setValue(instance, id, _texts[i]).ok())
                tellLost(findings, node, attribute);
            _texts[i].clear();
        }
    }

private:
    static void tellLost(Findings& findings, const Node& node, Attribute attribute);

    std::array<std::string, static_cast<std::size_t>(Attribute::Count)> _texts;
};

}  // namespace qor::interchange::bpmn
