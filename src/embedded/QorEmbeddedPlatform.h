// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <memory>
#include <string>
#include <string_view>

#include "embedded/QorRepositoryBuilder.h"
#include "embedded/QorRepositoryReader.h"
#include "embedded/QorShownWindows.h"
#include "platform/QorExport.h"
#include "platform/QorHost.h"

struct QorEmbeddedOptions {
    std::string language = "en";  ///< ISO 639; a language without texts falls back to English
    bool console = false;         ///< boxes and progress appear on standard error; without it they are only recorded
    std::string user;             ///< logon name of the current user; empty: the operating system's user
};

/// A complete platform in one process. Not installed by itself: hand `host()` to a QorHostInstallation.
class QOR_API QorEmbeddedPlatform {
public:
    explicit QorEmbeddedPlatform(const QorEmbeddedOptions& options = {});
    QorEmbeddedPlatform(const QorEmbeddedPlatform&) = delete;
    QorEmbeddedPlatform& operator=(const QorEmbeddedPlatform&) = delete;
    ~QorEmbeddedPlatform();

    /// The services, living as long as this object.
    [[nodiscard]] const QorHost& host() const;
    [[nodiscard]] QorRepositoryBuilder& builder();
    [[nodiscard]] const QorRepositoryReader& reader() const;

    /// Goes on as another user, who comes into being by being named. Locks stay with those who took them.
    void setCurrentUser(std::string_view logonName);

    /// The last things that were shown, at least 10,000 of them; stays empty with a console.
    [[nodiscard]] const QorShownWindows& shown() const;
    void forgetShown();

    /// Bytes that the repository holds in memory, without small change. For measuring.
    [[nodiscard]] std::size_t repositoryBytes() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
