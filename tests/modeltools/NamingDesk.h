// SPDX-License-Identifier: Apache-2.0
// A workshop with orders that get their names from their titles, references or profiles; loaded.
#pragma once
#include <algorithm>
#include <string>
#include <vector>

#include "embedded/QorShownWindows.h"
#include "modeltools/QorNameGenerator.h"
#include "modeltools/QorNamePlan.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorOwnedText.h"
#include "support/Workshop.h"

class NamingDesk : public Workshop {
public:
    static constexpr const char* kByTitle = "NAMEGEN srcattr: \"Title\"";

    explicit NamingDesk(std::string_view rule = kByTitle, std::string_view rushRule = {})
        : Workshop({.language = "en", .console = false, .user = "ada"}) {
        using enum QorCoreAttributeType;
        cls("Kind");
        attribute("Kind", "Label", Text);
        setClassText("Kind", "Label", "of no kind");
        cls("Order");
        attribute("Order", "__NameGeneration__", LongText);
        attribute("Order", "Title", Text, "untitled");
        attribute("Order", references("Models", true));
        attribute("Order", references("Objects", false));
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
    [[nodiscard]] std::string nameOf(long object) const { return textOf(object, QorAttributeId::Name); }
    [[nodiscard]] std::string remembered(QorIdentifier object) const {
        return textOf(object, attributeOf(object, "__NameGeneration__"));
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
    /// What was shown since the last question, boxes by their texts, internal errors by source and line.
    std::string shown() {
        std::string all;
        for (; _seen < platform.shown().size(); ++_seen) {
            const auto& window = platform.shown()[_seen];
            if (window.kind == QorShownKind::Box) all += window.text + "; ";
            if (window.kind == QorShownKind::InternalError)
                all += window.text.substr(0, window.text.find(':', window.text.find(':') + 1)) + "; ";
        }
        return all;
    }

private:
    static QorAttributeSpec references(std::string_view name, bool toModels) {
        QorAttributeSpec spec;
        spec.name = name;
        spec.type = QorCoreAttributeType::InterReference;
        spec.refersToModels = toModels;
        return spec;
    }
    [[nodiscard]] std::string textOf(long object, long attribute) const {
        QorOwnedText text;
        (void)repository().getAttributeValueAsNewChar(object, attribute, text.out());
        return std::string(text.view());
    }

    std::size_t _seen = 0;
};
