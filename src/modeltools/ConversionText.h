// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>
#include <vector>

#include "modeltools/QorClassConversion.h"
#include "platform/QorErrorCode.h"
#include "platform/QorKexParser.h"

namespace qor::modeltools {

/// Reads a conversion text, element by element.
class ConversionText {
public:
    /// `conversions` receives what is read, up to the first error.
    ConversionText(long cls, bool businessProcess, std::vector<QorClassConversion>& conversions)
        : _cls(cls), _businessProcess(businessProcess), _conversions(conversions) {}

    /// ValueRefused for an error in the text, which the reason tells; any other code is the repository's.
    QorErrorCode read(QorKexParser& parser);
    /// The error without its place; the parser stands at the element.
    [[nodiscard]] const SV::String& reason() const noexcept { return _reason; }

private:
    QorErrorCode readClass(const QorKexParser& parser);
    QorErrorCode readAttribute(const QorKexParser& parser);
    QorErrorCode lookUp(long cls, const SV::String& name, long& attribute, QorCoreAttributeType& type);
    QorErrorCode compare(const QorAttributeMapping& mapping);
    QorErrorCode compareDomains(const QorAttributeMapping& mapping);
    QorErrorCode refuse(SV::String reason);

    long _cls;
    bool _businessProcess;
    std::vector<QorClassConversion>& _conversions;
    SV::String _reason;
};

}  // namespace qor::modeltools
