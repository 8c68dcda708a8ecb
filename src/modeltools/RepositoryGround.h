// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "modeltools/NamingGround.h"
#include "platform/QorEventListener.h"

namespace qor::modeltools {

/// The repository itself. While it renames an object it listens: a handler of the event may rename further ones.
class RepositoryGround final : public NamingGround, public QorEventListener {
public:
    explicit RepositoryGround(long model);
    ~RepositoryGround() override;

    std::optional<SV::String> textOf(long object, long attribute) override;
    std::optional<SV::String> valueOf(long object, long attribute) override;
    QorErrorCode holderOf(const ISortedSet<long>& classes, const std::string& name, QorIdentifier& holder) override;
    QorErrorCode rename(long object, const std::string& name, NumberSearch& numbers) override;
    QorErrorCode setText(long object, long attribute, const std::string& text) override;

private:
    void onValueChanged(const QorAttributeEvent& event);
    void onReferencesChanged(const QorModelEvent& event);

    long _model;
    NumberSearch* _numbers = nullptr;  ///< of the renaming that runs; null while none does
    long _renamed = QorNoIdentifier;   ///< whose own event is still to come
};

}  // namespace qor::modeltools
