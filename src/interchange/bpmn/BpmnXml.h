// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "interchange/ImportSink.h"
#include "interchange/bpmn/BpmnPlace.h"

namespace qor::interchange::bpmn {

/// A name with the address of its namespace; no address for a name without one.
struct XmlName {
    std::string_view space;
    std::string_view local;
};

struct XmlAttribute {
    XmlName name;
    std::string_view value;
};

/// A start tag. All views hold during the call only.
struct XmlElement {
    XmlName name;
    std::span<const XmlAttribute> attributes;
    Place place;
};

/// Takes what an XML file holds, in its order.
class XmlHandler {
public:
    virtual ~XmlHandler();
    virtual void open(const XmlElement& element) = 0;
    virtual void close() = 0;
    virtual void text(std::string_view text) = 0;
    /// The file is no well-formed XML, or is beyond a bound; nothing comes after this.
    virtual void failed(Place place, std::string text) = 0;
};

// Bounds that honest files stay far away from.
inline constexpr std::size_t kMaxDepth = 256;
inline constexpr std::size_t kMaxTagBytes = std::size_t{4} << 20;  ///< one tag, comment or processing instruction

/// Reads XML with namespaces in one pass; document types are refused, and with them entities of the file's own.
/// True when the whole file was well-formed. Memory: a few times the longest tag.
bool readXml(ByteSource& source, XmlHandler& handler);

}  // namespace qor::interchange::bpmn
