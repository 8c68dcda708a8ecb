// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/QorIdentifier.h"
#include "platform/SvString.h"

namespace qor::modeltools {

/// What came of looking for the model that a reference names.
enum class ModelSearch : std::int32_t { Found, UnknownType, UnknownModel, NoVersion };

/// The newest version of the model of that name and type.
[[nodiscard]] ModelSearch findModel(const SV::String& typeName, const SV::String& modelName, long& model);

/// Finds models as `findModel` does, and remembers what it found: most references lead where others lead. Names lie
/// side by side, and a table of small slots leads to them, so that a known name costs two looks into memory.
class KnownModels {
public:
    /// About how many models there are.
    explicit KnownModels(std::size_t expected) { makeSlots(expected); }

    [[nodiscard]] ModelSearch find(const SV::String& typeName, const SV::String& modelName, long& model);

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t name = kFree;  ///< where in `_names`, behind the bytes of the type
        std::uint32_t length = 0;
        QorIdentifier answer = QorNoIdentifier;  ///< the model; below 0: why there is none
    };
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;

    [[nodiscard]] bool findType(const SV::String& typeName);
    [[nodiscard]] Slot& slotFor(std::uint32_t hash, std::string_view name);
    void remember(Slot& slot, std::uint32_t hash, std::string_view name, QorIdentifier answer);
    void makeSlots(std::size_t names);

    SV::String _typeName;  ///< of `_type`, the last one that was asked for
    std::uint32_t _type = 0;
    bool _typeKnown = false;
    std::string _names;
    std::vector<Slot> _slots;
    std::size_t _used = 0;
};

}  // namespace qor::modeltools
