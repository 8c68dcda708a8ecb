// SPDX-License-Identifier: Apache-2.0
#include "embedded/SealedArea.h"

#include "embedded/Answers.h"
#include "embedded/ByteText.h"
#include "embedded/FileArea.h"
#include "embedded/SealCheck.h"
#include "embedded/store/RepositoryStore.h"
#include "platform/QorGuard.h"

QorFileArea::~QorFileArea() = default;

namespace qor::embedded {

SealedArea::~SealedArea() = default;

std::string SealedArea::keyFile() {
    return Qor_Guarded("files", std::string(), [this] { return _vault.keyPlace(); });
}

QorRepositoryResult SealedArea::prepare() {
    return onFile([this] { return _vault.seals(true) == nullptr ? _vault.problem() : QorRepositoryResult{}; });
}

std::string SealedArea::takeVerificationKey() {
    return Qor_Guarded("files", std::string(), [this] {
        const auto key = _vault.takeFirstSealKey();
        return key ? toDigits(key->data(), key->size()) : std::string();
    });
}

QorRepositoryResult SealedArea::readHead(std::string& head) {
    return onFile([&] {
        head.clear();
        const Seals* const seals = _vault.seals(false);
        if (seals == nullptr) return _vault.problem();
        SealHead stored;
        const QorRepositoryStatus status = _vault.files()->readHead(stored);
        if (status != QorRepositoryStatus::Ok) return _vault.fail(failure(status));
        if (!isEqual(stored.mac, seals->macOf(stored)))
            return _vault.fail(failure(QorRepositoryStatus::Damaged, "the end of the chain is not what was written"));
        head = headText({stored.sequence, stored.chain});
        return QorRepositoryResult{};
    });
}

QorSealReport SealedArea::verify(std::string_view verificationKey, std::string_view notedHead) {
    QorSealReport report;
    report.result = onFile([&] {
        std::optional<SealDigest> firstKey;
        std::optional<NotedHead> noted;
        if (!verificationKey.empty() && !fromDigits(verificationKey, firstKey.emplace()))
            return failure(QorRepositoryStatus::NoKey, "that is not a verification key");
        if (!notedHead.empty() && !(noted = readHeadText(notedHead)))
            return failure(QorRepositoryStatus::NoKey, "that is not a head as it is noted");
        const Seals* const seals = _vault.seals(false);
        if (seals == nullptr) return _vault.problem();
        report = SealCheck(*_vault.files(), *seals, firstKey, noted).run();
        return report.result;
    });
    return report;
}

QorRepositoryResult SealedArea::rename(std::string_view name, std::string_view newName) {
    return onFile([&] {
        if (!isFileAreaName(name) || !isFileAreaName(newName))
            return _vault.fail(failure(QorRepositoryStatus::NotARepository, "that is not a name for a file"));
        return _vault.write({FileEntryKind::Renamed, name, newName});
    });
}

}  // namespace qor::embedded
