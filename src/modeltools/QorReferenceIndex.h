// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"
#include "platform/QorSourceInterRefContainer.h"
#include "platform/SvString.h"

/// Whether a reference leads to what it names.
enum class QorReferenceState : std::int32_t {
    Good,
    UnknownModelType,
    UnknownModel,
    NoVersion,      ///< the model is known but has no version any more
    UnknownClass,   ///< the model is there; the object's class is not
    UnknownObject,  ///< the model is there; the object is not
    SeveralObjects  ///< ambiguous: classes of both parts of the library have that name, and an object of that name each
};

/// A reference that leaves a model. 24 bytes.
struct QorModelReference {
    QorIdentifier source = -1;     ///< the model that it leaves
    QorIdentifier attribute = -1;  ///< the attribute that it is made through
    QorIdentifier model = -1;      ///< the newest version of the model that it leads to; -1 when there is none
    QorIdentifier object = -1;     ///< the object that it leads to; -1 when the model is meant, and when there is none
    QorReferenceState state = QorReferenceState::Good;
    bool hierarchy = false;  ///< made through a hierarchy attribute
};

/// A broken or ambiguous reference, with the names that it is made of.
struct QorBadReference {
    QorModelReference reference;
    QorInterModRefTarget target;
};

/// Models that refer to each other in a circle through hierarchy attributes.
struct QorModelCycle {
    std::vector<long> path;            ///< a shortest circle through the lowest of them; the last refers to the first
    unsigned long numberOfModels = 0;  ///< how many models can reach each other in all
};

/// What a renaming or deletion does to references.
struct QorReferenceImpact {
    std::vector<QorModelReference> broken;      ///< would lead nowhere
    std::vector<QorModelReference> redirected;  ///< would lead to another model, `leadsTo`
    std::vector<QorBadReference> mended;        ///< lead nowhere now, and would lead to the renamed model
    long leadsTo = -1;  ///< deletion: the version that takes its place; renaming: who has the name already; -1: nobody
};

/// All references between models, in both directions. A picture of the moment at which it was built; no event changes
/// it. Each model's references are fetched once.
class QOR_API QorReferenceIndex {
public:
    QorReferenceIndex() noexcept;
    QorReferenceIndex(const QorReferenceIndex&) = delete;
    QorReferenceIndex& operator=(const QorReferenceIndex&) = delete;
    ~QorReferenceIndex();

    /// Reads the references that leave these models, in place of what was read before. False when memory ran out; the
    /// index is then empty. Sorting apart, linear in models and references.
    bool build(const ISortedSet<long>& models) noexcept;

    [[nodiscard]] const ISortedSet<long>& models() const noexcept;
    /// Models of which the repository did not give the references.
    [[nodiscard]] const std::vector<long>& unreadModels() const noexcept;
    [[nodiscard]] unsigned long numberOfReferences() const noexcept;

    /// References that leave the model, as the repository orders them. O(log n).
    [[nodiscard]] std::span<const QorModelReference> referencesOf(long model) const noexcept;
    /// Where the model is used: references that lead to it or to an object in it, ascending by the model that they
    /// leave. O(log n).
    [[nodiscard]] std::span<const QorModelReference> usesOf(long model) const noexcept;
    /// Models referred to through hierarchy attributes, ascending, each once. O(log n).
    [[nodiscard]] std::span<const long> childrenOf(long model) const noexcept;
    /// Those of the given models that no other one refers to through a hierarchy attribute: where trees begin.
    [[nodiscard]] std::vector<long> roots() const noexcept;

    /// Broken and ambiguous references, ascending by the model that they leave.
    [[nodiscard]] const std::vector<QorBadReference>& badReferences() const noexcept;
    /// Ascending by the lowest model of each. Linear in models and references.
    [[nodiscard]] std::vector<QorModelCycle> cycles() const noexcept;

    // What would happen. Only references that leave the given models are seen, and only versions among them.
    [[nodiscard]] QorReferenceImpact ifModelDeleted(long model) const noexcept;
    [[nodiscard]] QorReferenceImpact ifModelRenamed(long model, const SV::String& name) const noexcept;
    /// An object that is deleted or gets another name.
    [[nodiscard]] QorReferenceImpact ifObjectLost(long object) const noexcept;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;  ///< null when memory ran out
};
