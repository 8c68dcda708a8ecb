// SPDX-License-Identifier: Apache-2.0
// A workshop with tasks that can become checks, and what hangs on them; loaded.
#pragma once
#include <string>
#include <vector>

#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorGrObjAttrHandler.h"
#include "platform/QorMessage.h"
#include "support/Workshop.h"

class ConversionDesk : public Workshop {
public:
    static constexpr const char* kInto =
        "CLASS \"Check\"\nATTR \"Count\"\nATTR \"Cost\"\nATTR \"Note\" from: \"Info\"\nATTR \"Kind\"\nATTR \"Calls\"\n"
        "ATTR \"Table\"\nATTR \"Sum\"\nATTR \"Result\" from: \"Sum\"";

    explicit ConversionDesk(std::string_view conversion = kInto) {
        using enum QorCoreAttributeType;
        for (const char* rowClass : {"Row", "Other row"}) {
            recordClass(rowClass);
            attribute(rowClass, "Item", Text);
            attribute(rowClass, "Pieces", Integer);
            attribute(rowClass, "__Hidden__", Text);
        }
        abstractClass("Thing");
        cls("Kinds");
        cls("Other kinds");
        for (const char* owner : {"Task", "Check"}) {
            cls(owner, "Thing");
            attribute(owner, "Count", Integer);
            attribute(owner, "Cost", Floating);
            references(owner, "Calls");
            special(owner, "Table", Record, {}, "Row");
            attribute(owner, "Sum", Expression);
            special(owner, "Profile", AttributeProfile, {}, "Kinds");
            attribute(owner, "__Variants__", LongText);
        }
        special("Task", "Kind", Enumeration, {"a", "b", "c"});
        attribute("Task", "Info", Text);
        attribute("Task", "__Conversion__", LongText);
        special("Check", "Kind", Enumeration, {"a", "b"});
        attribute("Check", "Note", Text);
        attribute("Check", "Result", Integer);
        special("Check", "Other table", Record, {}, "Other row");
        special("Check", "Other profile", AttributeProfile, {}, "Other kinds");
        cls("Plain", "Thing");
        references("Plain", "Uses", false);
        relationClass("then", "Task", "Task");
        relationClass("and", "Thing", "Thing");
        relationClass("at", "Thing", "Thing");
        (void)builder().setUnmovedRelationClass(processes, "at");
        modelType("Shop", {"Task", "Check", "Plain"});
        modelType("Notes", {"Plain"});
        text(conversion);
        shop = model("Shop", "Monday");
        if (load() != QorErrorCode::Ok) throw std::runtime_error("the desk cannot be loaded");
    }
    ~ConversionDesk() { (void)discard(); }

    QorIdentifier shop = QorNoIdentifier;

    void special(std::string_view owner, std::string_view name, QorCoreAttributeType type,
                 std::vector<std::string_view> values, std::string_view target = {}) {
        QorAttributeSpec spec;
        spec.name = name;
        spec.type = type;
        spec.enumeration = values;
        if (!target.empty()) spec.target = idOf(target);
        attribute(owner, spec);
    }
    void text(std::string_view conversion) {
        (void)builder().setClassValue(idOf("Task"), attributeOf(idOf("Task"), "__Conversion__"), conversion);
    }
    [[nodiscard]] std::string valueOf(long object, std::string_view name) const {
        return textAt(object, attributeOf(static_cast<QorIdentifier>(object), name));
    }
    /// A row with an item and a number of pieces.
    void row(QorIdentifier object, std::string_view item, std::string_view pieces, std::string_view table = "Table") {
        const QorIdentifier made = builder().addRecordRow(object, attributeOf(object, table)).id;
        const QorIdentifier cls = idOf("Row");
        (void)builder().setValue(made, attributeOf(cls, "Item"), item);
        (void)builder().setValue(made, attributeOf(cls, "Pieces"), pieces);
        (void)builder().setValue(made, attributeOf(cls, "__Hidden__"), "secret");
    }
    /// The rows as "item/pieces/hidden; ".
    [[nodiscard]] std::string rowsOf(long object, std::string_view table = "Table") const {
        ISequence<long> rows;
        (void)repository().getRecordInstances(object, attributeOf(static_cast<QorIdentifier>(object), table), rows);
        std::string all;
        for (const long row : rows) {
            for (const char* column : {"Item", "Pieces", "__Hidden__"})
                all += textAt(row, attributeOf(idOf("Row"), column)) + "/";
            all.back() = ';';
        }
        return all;
    }
    [[nodiscard]] std::string ends(long relation) const {
        long from = -1;
        long to = -1;
        (void)repository().getEndpointsOfRelationInstance(relation, from, to);
        return std::to_string(from) + ">" + std::to_string(to);
    }
    [[nodiscard]] bool isThere(long object) const {
        return reader().classOfObject(static_cast<QorIdentifier>(object)) > 0;
    }
};
