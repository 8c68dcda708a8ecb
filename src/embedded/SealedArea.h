// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/QorFileArea.h"
#include "embedded/Vault.h"

namespace qor::embedded {

class SealedArea final : public QorFileArea {
public:
    explicit SealedArea(Vault& vault) : _vault(vault) {}
    ~SealedArea() override;

    [[nodiscard]] std::string keyFile() override;
    QorRepositoryResult prepare() override;
    [[nodiscard]] std::string takeVerificationKey() override;
    QorRepositoryResult readHead(std::string& head) override;
    [[nodiscard]] QorSealReport verify(std::string_view verificationKey, std::string_view notedHead) override;
    QorRepositoryResult rename(std::string_view name, std::string_view newName) override;
    [[nodiscard]] std::int64_t lostWrites() const override { return _vault.lostWrites(); }
    [[nodiscard]] const QorRepositoryResult& lastProblem() const override { return _vault.problem(); }

private:
    Vault& _vault;
};

}  // namespace qor::embedded
