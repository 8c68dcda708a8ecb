// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"
#include "platform/SvString.h"

/// What a host offers for its language.
class QOR_API QorMessageTexts {
public:
    virtual ~QorMessageTexts();
    /// The text of a message resource, living as long as the host; null (also by default) when there is none.
    virtual const char* text(unsigned short number) const;
    /// ISO 639 code of the current language; "en" by default.
    virtual const char* language() const;
};

class QOR_API QorInternational {
public:
    /// ISO 639 code of the current language.
    static SV::String GetCurrentISOID();
};
