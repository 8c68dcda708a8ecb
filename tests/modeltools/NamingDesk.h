// SPDX-License-Identifier: Apache-2.0
// A workshop with orders that get their names from their titles, references or profiles; loaded.
#pragma once
#include <algorithm>
#include <string>
#include <vector>

#include "modeltools/QorNameGenerator.h"
#include "modeltools/QorNamePlan.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "support/Workshop.h"

class NamingDesk : public Workshop {
public:
    static constexpr const char* kByTitle = "NAMEGEN srcattr: \"Title\"";

    explicit NamingDesk(std::string_view rule = kByTitle, std::string_view rushRule = {}) {
        using enum QorCoreAttributeType;
        cls("Kind");
        attribute("Kind", "Label", Text);
        setClassText("Kind", "Label", "of no kind");
        cls("Order");
        attribute("Order", "__NameGeneration__", LongText);
        attribute("Order", "Title", Text, "untitled");
        references("Order", "Models");
        references("Order", "Objects", false);
        QorAttributeSpec profile;
        profile.name = "Profile";
        profile.type = AttributeProfile;
        profile.target = idOf("Kind");
        attribute("Order", profile);
        cls("Rush", "Order");
        cls("Plain");
        modelType("Shop", {"Order", "Plain", "Kind", "Rush"});
        modelType("Other", {"Plain"});
        setClassText("Order", "__NameGeneration__", rule);
        setClassText("Rush", "__NameGeneration__", rushRule);
        shop = model("Shop", "Monday");
        if (load() != QorErrorCode::Ok) throw std::runtime_error("the desk cannot be loaded");
    }
    ~NamingDesk() { (void)discard(); }

    QorIdentifier shop = QorNoIdentifier;

    void setClassText(std::string_view cls, std::string_view attribute, std::string_view text) {
        if (!builder().setClassValue(idOf(cls), attributeOf(idOf(cls), attribute), text).ok())
            throw std::runtime_error("the class takes no such text");
    }
    QorIdentifier order(std::string_view name, std::string_view title = {}, std::string_view cls = "Order") {
        const QorIdentifier id = object(cls, name);
        if (!title.empty()) value(id, "Title", title);
        return id;
    }
    [[nodiscard]] std::string nameOf(long object) const { return textAt(object, QorAttributeId::Name); }
    [[nodiscard]] std::string remembered(QorIdentifier object) const {
        return textAt(object, attributeOf(object, "__NameGeneration__"));
    }
    /// The names of the model's objects, in the order in which they were made.
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const QorIdentifier object : reader().objectsOf(shop)) all.push_back(nameOf(object));
        return all;
    }
    /// Names the model's objects; how many changed.
    int run() const {
        QorNameGenerator generator(shop);
        generator.Execute();
        return generator.GetChangesCount();
    }
};
