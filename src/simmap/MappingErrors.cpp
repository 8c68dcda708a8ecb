// SPDX-License-Identifier: Apache-2.0
#include "simmap/MappingErrors.h"

#include "platform/QorAttributeIds.h"
#include "platform/QorMessage.h"
#include "simmap/messages.h"

namespace qor::simmap {

SV::String unknownName(std::string_view name) { return Qor_Message(message::unknownName, {{"%s", name}}); }

SV::String missingKey(std::string_view key) { return Qor_Message(message::keyMissing, {{"%s", key}}); }

int MappingErrors::add(int code, QorKexPosition position, const SV::String& message) const {
    text += message.view();
    list.push_back({library, QorAttributeId::SimulationMapping, code, position, message});
    return code;
}

}  // namespace qor::simmap
