// SPDX-License-Identifier: Apache-2.0
#include "platform/QorInternational.h"

#include "platform/InstalledService.h"

QorMessageTexts::~QorMessageTexts() = default;
const char* QorMessageTexts::text(unsigned short) const { return nullptr; }
const char* QorMessageTexts::language() const { return "en"; }

SV::String QorInternational::GetCurrentISOID() { return qor::platform::installed(&QorHost::texts).language(); }
