// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "interchange/bpmn/BpmnDocument.h"
#include "interchange/bpmn/BpmnFindings.h"
#include "interchange/bpmn/BpmnXml.h"

namespace qor::interchange::bpmn {

/// Writes down what the file's elements say; makes nothing of it yet.
class Collector final : public XmlHandler {
public:
    Collector(Document& document, Findings& findings) : _document(document), _findings(findings) {}

    void open(const XmlElement& element) override;
    void close() override;
    void text(std::string_view text) override;
    void failed(Place place, std::string text) override;
    /// To be called when the whole file was read.
    void finish();

private:
    /// How the contents of an open element are read.
    enum class Reading : std::uint8_t {
        Normal,
        Text,
        Nothing,    ///< only extensions are counted
        Extension,  ///< everything is counted as an extension
        Diagram,
        Refused
    };
    struct Open {
        const ElementRow* row = nullptr;
        NodeIndex owner = kNoNode;  ///< itself when it is a node, else the nearest node around it
        Reading reading = Reading::Normal;
        bool isForeign = false;  ///< or stands inside an element that is
        Place place = {};
    };

    void openAny(const XmlElement& element);
    void openRoot(const XmlElement& element);
    void openForeign(const XmlElement& element);
    void openDiagram(const XmlElement& element);
    void openBpmn(const XmlElement& element);
    void openNode(const ElementRow& row, const XmlElement& element);
    void openText(const ElementRow& row, const XmlElement& element);
    void closeText(const Open& open);
    NodeIndex addNode(const ElementRow& row, const XmlElement& element);
    void takeAttributes(NodeIndex node, const XmlElement& element);
    void takeAttribute(NodeIndex node, const XmlAttribute& attribute);
    void merge(const ElementRow& row, const XmlElement& element);
    void takeInnerAttributes(const ElementRow& row, const XmlElement& element);
    void noteContents(NodeIndex node);
    void countForeign(const XmlElement& element);
    void countForeignAttributes(const XmlElement& element);
    void tellStrayText();
    [[nodiscard]] std::string ownerWords() const;
    void skip(const XmlElement& element, FindingKind kind, std::string_view why);
    [[nodiscard]] bool hasPlaceFor(const ElementRow& row) const;
    [[nodiscard]] NodeIndex owner() const { return _open.back().owner; }
    void push(const ElementRow* row, NodeIndex owner, Reading reading) { _open.push_back({row, owner, reading}); }

    Document& _document;
    Findings& _findings;
    std::vector<Open> _open;
    std::string _text;       // of the innermost element that is read as text
    std::string _strayText;  // since the last tag, where BPMN has none
    std::string _shapeOf;    // the element whose shape is open in the diagram
    std::size_t _shapeDepth = 0;
    std::vector<std::pair<std::string_view, std::string_view>> _bounds;  // by identifier
};

}  // namespace qor::interchange::bpmn
