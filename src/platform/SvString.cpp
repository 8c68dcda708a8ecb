// SPDX-License-Identifier: Apache-2.0
#include "platform/SvString.h"

#include "platform/InstalledService.h"
#include "platform/QorInternational.h"

namespace SV {

String::String(const char* text) : _text(text == nullptr ? "" : text) {}

String::String(unsigned long resource) {
    constexpr unsigned long kNumberMask = 0xFFFF;
    const unsigned long number = resource & kNumberMask;
    const char* text = nullptr;
    if ((resource & ~kNumberMask) == QorTextResourceType)
        text = qor::platform::installed(&QorHost::texts).text(static_cast<unsigned short>(number));
    _text = text != nullptr ? text : "#" + std::to_string(number);
}

}  // namespace SV
