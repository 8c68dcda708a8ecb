// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

#include "modeltools/NamingGround.h"
#include "modeltools/RepositoryGround.h"

namespace qor::modeltools {

/// The repository as it would be after the renamings so far, which are only written down here.
class PlannedGround final : public NamingGround {
public:
    explicit PlannedGround(long model) : _repository(model) {}
    ~PlannedGround() override;

    std::optional<SV::String> textOf(long object, long attribute) override;
    std::optional<SV::String> valueOf(long object, long attribute) override;
    QorErrorCode holderOf(const ISortedSet<long>& classes, const std::string& name, QorIdentifier& holder) override;
    QorErrorCode rename(long object, const std::string& name, NumberSearch& numbers) override;
    QorErrorCode setText(long object, long attribute, const std::string& text) override;

private:
    [[nodiscard]] const std::string* planned(long object, long attribute) const;

    RepositoryGround _repository;
    std::map<std::pair<long, long>, std::string> _texts;  ///< by object and attribute; names are among them
    std::unordered_map<std::string, std::vector<QorIdentifier>> _holders;  ///< of planned names
};

}  // namespace qor::modeltools
