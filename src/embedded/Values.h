// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string_view>

#include "embedded/MetaModel.h"
#include "embedded/Store.h"

namespace qor::embedded {

// The values of attributes: of instances, of classes and of libraries. Whether a thing has an attribute is not asked
// here.
class Values {
public:
    Values(Store& store, const MetaModel& meta) : _store(store), _meta(meta) {}

    // ValueRefused when the attribute's type does not take the text. The empty text takes the value away, except from
    // an attribute of free text, which can well be empty. Throws std::bad_alloc, and has then changed nothing.
    // `scope` is the model, class or library whose content the value is.
    [[nodiscard]] QorBuildError set(QorIdentifier thing, const AttributeRow& attribute, std::string_view text,
                                    QorIdentifier scope);
    // The thing's own value; nothing when it has none.
    [[nodiscard]] std::optional<std::string_view> own(QorIdentifier thing, QorIdentifier attribute) const;

    void clear(QorIdentifier thing, const AttributeRow& attribute, QorIdentifier scope);
    // All values of an instance, or of a class or library; `owner` says whose attributes they are.
    void clearAll(QorIdentifier thing, QorIdentifier owner, QorIdentifier scope);

    // Takes back a step of the journal that set a value, as the last one that was taken.
    void takeBack(const Step& step) noexcept;
    // Gives up what a step kept for the way back.
    void bury(const Step& step) noexcept;
    // Takes in a value from a repository file. False when the attribute's enumeration does not have it.
    [[nodiscard]] bool adopt(QorIdentifier thing, const AttributeRow& attribute, std::string_view text);

private:
    [[nodiscard]] Step stepFor(QorIdentifier thing, const AttributeRow& attribute, QorIdentifier scope) const;
    [[nodiscard]] TextRef enumerationValue(const AttributeRow& attribute, std::string_view text) const;

    Store& _store;
    const MetaModel& _meta;
};

}  // namespace qor::embedded
