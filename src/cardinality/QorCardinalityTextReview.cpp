// SPDX-License-Identifier: Apache-2.0
#include "cardinality/QorCardinalityTextReview.h"

#include <algorithm>
#include <utility>

#include "cardinality/repository.h"
#include "cardinality/ruleKeys.h"
#include "platform/QorGuard.h"

using namespace qor::cardinality;

namespace {

using Oversight = QorCardinalityOversight;
using Remarks = std::vector<QorCardinalityTextRemark>;
using Names = std::vector<std::string_view>;

/// An element that is read, with its keys.
struct KnownElement {
    std::string_view name;
    Names keys;
};

template <class Rows>
Names keysOf(const Rows& rows) {
    Names keys;
    for (const auto& row : rows) keys.push_back(row.key);
    return keys;
}

std::vector<KnownElement> elementsOfClassText() {
    std::vector<KnownElement> elements{{kClassElement, keysOf(classKeys())},
                                       {kRelationElement, keysOf(relationKeys())}};
    for (const auto& row : targetElements()) elements.push_back({row.element, {row.maxKey, row.minKey}});
    return elements;
}

std::vector<KnownElement> elementsOfAutomaticChecks() {
    return {{kAutomaticChecksElement, {kBeforeSaveKey, kAfterModelingActionKey}}};
}

enum class UnknownElements { Told, LeftToTheReader };

class Review {
public:
    Review(std::string_view text, std::vector<KnownElement> elements)
        : _parser(SV::String(text), SV::String()), _elements(std::move(elements)) {}

    bool parses() { return _parser.Parse() == 0; }

    Remarks syntaxError() {
        QorCardinalityTextRemark& remark = add(Oversight::SyntaxError, _parser.GetErrorPosition());
        remark.reason = _parser.GetErrorReason();
        return std::move(_remarks);
    }

    Remarks keys(UnknownElements unknownElements) {
        for (unsigned long index = 0; _parser.SetCurElemIndex(index); ++index) {
            if (const KnownElement* const element = currentElement())
                reviewKeys(*element);
            else if (unknownElements == UnknownElements::Told)
                tellUnknownElement();
        }
        return std::move(_remarks);
    }

private:
    [[nodiscard]] const KnownElement* currentElement() const {
        const auto found = std::find_if(_elements.begin(), _elements.end(), [this](const KnownElement& element) {
            return element.name == _parser.GetCurElemNameView();
        });
        return found == _elements.end() ? nullptr : &*found;
    }

    void tellUnknownElement() {
        QorCardinalityTextRemark& remark = add(Oversight::UnknownElement, _parser.GetCurElemPosition());
        for (const KnownElement& known : _elements) remark.known.push_back(known.name);
    }

    void reviewKeys(const KnownElement& element) {
        for (unsigned long index = 0; !_parser.GetKeyView(index).empty(); ++index)
            reviewKey(element, _parser.GetKeyView(index));
    }

    void reviewKey(const KnownElement& element, std::string_view key) {
        if (std::find(element.keys.begin(), element.keys.end(), key) == element.keys.end()) {
            addForKey(Oversight::UnknownKey, key).known = element.keys;
            return;
        }
        const QorKexValueKind kind = _parser.GetValueKind(key);
        if (kind != QorKexValueKind::Integer)
            addForKey(kind == QorKexValueKind::None ? Oversight::NoValue : Oversight::NoNumber, key);
    }

    QorCardinalityTextRemark& addForKey(Oversight oversight, std::string_view key) {
        QorCardinalityTextRemark& remark = add(oversight, _parser.GetKeyPosition(key));
        remark.key = key;
        return remark;
    }

    QorCardinalityTextRemark& add(Oversight oversight, QorKexPosition position) {
        QorCardinalityTextRemark& remark = _remarks.emplace_back();
        remark.oversight = oversight;
        remark.position = position;
        remark.element = _parser.GetCurElemNameView();
        return remark;
    }

    QorKexParser _parser;
    std::vector<KnownElement> _elements;
    Remarks _remarks;
};

}  // namespace

Remarks QorCardinalityTextReview::ofClassText(std::string_view text) noexcept {
    return Qor_Guarded(kSource, Remarks(), [text] {
        Review review(text, elementsOfClassText());
        return review.parses() ? review.keys(UnknownElements::LeftToTheReader) : Remarks();
    });
}

Remarks QorCardinalityTextReview::ofAutomaticChecks(std::string_view text) noexcept {
    return Qor_Guarded(kSource, Remarks(), [text] {
        Review review(text, elementsOfAutomaticChecks());
        return review.parses() ? review.keys(UnknownElements::Told) : review.syntaxError();
    });
}
