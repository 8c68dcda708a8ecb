// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "modeltools/EscapedText.h"
#include "modeltools/HierarchyDocuments.h"
#include "modeltools/ModelNames.h"

namespace qor::modeltools {

namespace {

// In the drawing's units, which are pixels when it is shown at its own size.
constexpr std::size_t kMargin = 12;
constexpr std::size_t kRow = 26;
constexpr std::size_t kBoxHeight = 20;
constexpr std::size_t kStep = 24;      // from one depth to the next
constexpr std::size_t kElbow = 10;     // where the line to the next depth begins
constexpr std::size_t kCharacter = 8;  // no font is wider on average
constexpr std::size_t kPadding = 8;

constexpr const char* kStyle =
    "<style>text{font:13px sans-serif;fill:#1a1a1a}rect{fill:#eef3fa;stroke:#4a6fa5}.cycle rect{fill:#fdf0e6;stroke:"
    "#b35c00}.cut rect{fill:#f2f2f2;stroke:#777;stroke-dasharray:4 3}path{fill:none;stroke:#888}</style>\n";

std::string labelOf(const QorHierarchyElement& element, const ModelNames::Names& names) {
    std::string label = names.name.empty() ? "#" + std::to_string(element.model) : names.name;
    if (!names.type.empty()) label += " (" + names.type + ")";
    if (element.end == QorHierarchyEnd::Cycle) label += " \u21BA";
    if (element.omitted != 0) label += " + " + std::to_string(element.omitted);
    return label;
}

const char* groupOf(QorHierarchyEnd end) {
    if (end == QorHierarchyEnd::Cycle) return "<g class=\"cycle\">";
    return end == QorHierarchyEnd::Cut ? "<g class=\"cut\">" : "<g>";
}

class Drawing {
public:
    void add(const QorHierarchyElement& element) {
        const std::size_t x = kMargin + element.depth * kStep;
        const std::size_t y = kMargin + _rows * kRow;
        if (element.depth > 0) line(element.depth, x, y);
        box(element, x, y);
        _middles.resize(element.depth + 1);
        _middles[element.depth] = y + kBoxHeight;
        ++_rows;
    }

    [[nodiscard]] std::string finished() const {
        const std::string width = std::to_string(_width + kMargin);
        const std::string height = std::to_string(2 * kMargin + _rows * kRow);
        return kXmlDeclaration +
               ("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
                "\" viewBox=\"0 0 " + width + " " + height + "\">\n") +
               kStyle + _body + "</svg>\n";
    }

private:
    /// From the box above, down and to the right.
    void line(std::size_t depth, std::size_t x, std::size_t y) {
        std::size_t& from = _middles[depth - 1];
        const std::size_t to = y + kBoxHeight / 2;
        put("<path d=\"M").number(x - kStep + kElbow).put(" ").number(from).put("V").number(to).put("H").number(x);
        put("\"/>\n");
        from = to;  // the next sibling's line goes on from here
    }

    void box(const QorHierarchyElement& element, std::size_t x, std::size_t y) {
        const std::string label = labelOf(element, _names.of(element.model));
        const std::size_t width = characters(label) * kCharacter + 2 * kPadding;
        _width = std::max(_width, x + width);
        put(groupOf(element.end)).put("<rect x=\"").number(x).put("\" y=\"").number(y).put("\" width=\"");
        number(width).put("\" height=\"").number(kBoxHeight).put("\" rx=\"4\"/><text x=\"").number(x + kPadding);
        put("\" y=\"").number(y + 14).put("\">");
        appendMarkup(_body, label);
        put("</text></g>\n");
    }

    Drawing& put(std::string_view text) {
        _body += text;
        return *this;
    }
    Drawing& number(std::size_t value) { return put(std::to_string(value)); }

    ModelNames _names;
    std::string _body;
    std::vector<std::size_t> _middles;  ///< by depth, where the line to the next child begins
    std::size_t _rows = 0;
    std::size_t _width = 0;
};

}  // namespace

std::string hierarchySvg(const std::vector<QorHierarchyElement>& elements) {
    if (elements.empty()) return {};
    Drawing drawing;
    for (const QorHierarchyElement& element : elements) drawing.add(element);
    return drawing.finished();
}

}  // namespace qor::modeltools
