// SPDX-License-Identifier: Apache-2.0
// A workshop whose models call each other; loaded.
#pragma once
#include <string>
#include <vector>

#include "modeltools/QorHierarchyManager.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "support/Workshop.h"

class HierarchyDesk : public Workshop {
public:
    HierarchyDesk() {
        call = cls("Call");
        references("Call", "Calls");
        references("Call", "Mentions");
        references("Call", "Uses", false);
        hierarchyAttribute("Call", QorAttributeId::HierarchyAttribute, "Calls");
        cls("Urgent call", "Call");  // inherits the attributes, not the class's own text
        cls("Link");
        references("Link", "Referenced model");
        references("Link", "Note");
        environmentClass("Room");
        references("Room", "Plan");
        hierarchyAttribute("Room", QorAttributeId::WorkingEnvironmentHierarchyAttribute, "Plan");
        cls("Wrong");
        attribute("Wrong", "Called", QorCoreAttributeType::Text);
        hierarchyAttribute("Wrong", QorAttributeId::HierarchyAttribute, "Called");
        modelType("Process", {"Call", "Urgent call", "Link", "Wrong"});
        modelType("House", {"Room"});
        if (load() != QorErrorCode::Ok) throw std::runtime_error("the desk cannot be loaded");
    }
    ~HierarchyDesk() { (void)discard(); }

    QorIdentifier call = QorNoIdentifier;

    /// `count` empty models of type "Process", named "M0", "M1" ...
    std::vector<QorIdentifier> models(int count) {
        std::vector<QorIdentifier> made;
        for (int number = 0; number < count; ++number) made.push_back(process("M" + std::to_string(number)));
        return made;
    }
    QorIdentifier process(const std::string& name, std::string_view version = {}) {
        return model("Process", name, version);
    }
    /// A new object of the model whose attribute has the value.
    QorIdentifier refer(QorIdentifier from, std::string_view cls, std::string_view attribute, const std::string& text) {
        const QorBuildResult made = builder().addObject(from, idOf(cls), "object " + std::to_string(++_objects));
        value(made.id, attribute, text);
        return made.id;
    }
    /// A new call in the model of the processes of these names.
    QorIdentifier callTo(QorIdentifier from, std::initializer_list<std::string> names) {
        std::string value;
        for (const std::string& name : names) value += to(name);
        return refer(from, "Call", "Calls", value);
    }
    static std::string to(const std::string& name, const std::string& type = "Process") {
        return "MODEL \"" + name + "\" type: \"" + type + "\" ";
    }
    static std::string toObject(const std::string& object, const std::string& cls, const std::string& name) {
        return "OBJECT \"" + object + "\" class: \"" + cls + "\" model: \"" + name + "\" type: \"Process\" ";
    }

private:
    void hierarchyAttribute(std::string_view cls, QorIdentifier attribute, std::string_view name) {
        if (!builder().setClassValue(idOf(cls), attribute, name).ok()) throw std::runtime_error("no such class text");
    }

    int _objects = 0;
};
