// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"
#include "platform/SvString.h"

/// Gives the objects of one model names made from one of their attributes and a number (docs/naming.md). Which classes
/// take part, and how, is written in their attribute "__NameGeneration__". Names that somebody typed are left alone.
class QOR_API QorNameGenerator {
public:
    /// For any identifier; of one that is no model of the loaded library nothing will be named.
    explicit QorNameGenerator(long model) noexcept;
    QorNameGenerator(const QorNameGenerator&) noexcept;
    QorNameGenerator& operator=(const QorNameGenerator&) noexcept;
    ~QorNameGenerator();

    /// Whether a class that models of this type show has the attribute, be it inherited, empty or wrong.
    [[nodiscard]] bool IsNameGenDefined() const noexcept;
    /// Names the objects, class by class in ascending order of identifiers. An error in a class's text is shown and
    /// leaves that class out. Renamings raise events. Linear in the objects.
    void Execute() noexcept;
    /// How many objects the latest `Execute` gave a new name, those included whose renaming the repository refused.
    [[nodiscard]] std::int32_t GetChangesCount() const noexcept { return _changes; }

    /// Tells of objects that were pasted into the model: those that are copies of an object with a generated name will
    /// be named anew by the next `Execute`. Objects whose source is not known are left as they are.
    static void UpdatePastedObjects(long model, const ISortedSet<long>& objects) noexcept;

    /// "__NameGeneration__".
    [[nodiscard]] static const char* GetNameGenAttrName() noexcept;
    /// Whether the text may stand in the attribute of that class; the empty text may. When not, `errorText` tells why.
    /// The attribute is of no importance.
    [[nodiscard]] static bool IsCorrectNameGenAttr(const SV::String& text, long cls, long attribute,
                                                   SV::String& errorText) noexcept;

private:
    void DoNaming(long cls, long attribute, const ISortedSet<long>& objects);

    QorIdentifier _model;
    QorIdentifier _modelClass = QorNoIdentifier;
    std::uint32_t _modelType = 0xFFFFFFFF;
    std::int32_t _changes = 0;
};
