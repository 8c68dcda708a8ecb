// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstdint>
#include <string_view>

#include "embedded/QorRepositoryBuilder.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreAttributeType.h"

/// The words of library and model files that reading and writing share.
namespace qor::interchange {

inline constexpr std::string_view kLibraryFormat = "qor.library/1";
inline constexpr std::string_view kModelFormat = "qor.model/1";

struct PartRow {
    std::string_view key;
    QorLibraryPart part;
};
inline constexpr std::array kParts = {
    PartRow{"business_process", QorLibraryPart::BusinessProcess},
    PartRow{"working_environment", QorLibraryPart::WorkingEnvironment},
};

/// Keyword texts of a library or one of its parts.
struct LibraryTextRow {
    std::string_view key;
    QorIdentifier attribute;
};
inline constexpr std::array kLibraryTexts = {
    LibraryTextRow{"automatic_checks", QorAttributeId::AutomaticChecks},
    LibraryTextRow{"simulation_mapping", QorAttributeId::SimulationMapping},
    LibraryTextRow{"simulation_text", QorAttributeId::SimulationText},
    LibraryTextRow{"simulation_result", QorAttributeId::SimulationResult},
};

/// Class-level values with a key of their own; each part of a library keeps them in attributes of its own.
struct ClassTextRow {
    std::string_view key;
    QorIdentifier businessProcess;
    QorIdentifier workingEnvironment;
    bool isKeywordText;

    [[nodiscard]] constexpr QorIdentifier attribute(QorLibraryPart part) const {
        return part == QorLibraryPart::BusinessProcess ? businessProcess : workingEnvironment;
    }
};
inline constexpr std::array kClassTexts = {
    ClassTextRow{"cardinalities", QorAttributeId::Cardinality, QorAttributeId::WorkingEnvironmentCardinality, true},
    ClassTextRow{"hierarchy_attribute", QorAttributeId::HierarchyAttribute,
                 QorAttributeId::WorkingEnvironmentHierarchyAttribute, false},
};

/// Attribute types by name, with what their values look like and the key that only attributes of such a type have.
struct AttributeTypeRow {
    std::string_view name;
    QorCoreAttributeType type;
    std::string_view form = "a text without zero bytes";
    std::string_view companion = {};
    bool companionRequired = false;
};
inline constexpr std::array kAttributeTypes = {
    AttributeTypeRow{"integer", QorCoreAttributeType::Integer, "a whole number from -2147483648 to 2147483647"},
    AttributeTypeRow{"floating", QorCoreAttributeType::Floating, "a number such as 2.5 or 1e6"},
    AttributeTypeRow{"text", QorCoreAttributeType::Text},
    AttributeTypeRow{"long text", QorCoreAttributeType::LongText},
    AttributeTypeRow{"time", QorCoreAttributeType::Time, "a time in the form YY:DDD:HH:MM:SS"},
    AttributeTypeRow{"enumeration", QorCoreAttributeType::Enumeration, "one of", "values", true},
    AttributeTypeRow{"enumeration list", QorCoreAttributeType::EnumerationList, "a list, nothing twice, of", "values",
                     true},
    AttributeTypeRow{"date", QorCoreAttributeType::Date, "a date in the form YYYY-MM-DD"},
    AttributeTypeRow{"simulation action", QorCoreAttributeType::SimulationAction},
    AttributeTypeRow{"reference", QorCoreAttributeType::InterReference,
                     "references such as OBJECT \"name\" class: \"...\" model: \"...\" type: \"...\", or "
                     "MODEL \"name\" type: \"...\" to models",
                     "refers_to"},
    AttributeTypeRow{"expression", QorCoreAttributeType::Expression, "an expression"},
    AttributeTypeRow{"record", QorCoreAttributeType::Record, "a list of rows, each a mapping of columns to values",
                     "record_class", true},
    AttributeTypeRow{"attribute profile", QorCoreAttributeType::AttributeProfile, "the name of a profile",
                     "profile_class", true},
    AttributeTypeRow{"date and time", QorCoreAttributeType::DateTime, "a time in the form YYYY-MM-DD HH:MM:SS"},
    AttributeTypeRow{"distribution", QorCoreAttributeType::Distribution},
    AttributeTypeRow{"calendar", QorCoreAttributeType::Calendar},
};
[[nodiscard]] constexpr const AttributeTypeRow* attributeTypeRow(QorCoreAttributeType type) {
    for (const AttributeTypeRow& row : kAttributeTypes)
        if (row.type == type) return &row;
    return nullptr;
}

/// Longest line of a YAML file, and longest text, in bytes.
inline constexpr std::size_t kMaxStretch = std::size_t{16} << 20;

}  // namespace qor::interchange
