// SPDX-License-Identifier: Apache-2.0
// What benchmarks of work on one model share.
#pragma once
#include <ctime>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorHost.h"

/// Of the processor: the machine may have more to do.
inline double secondsOf(const auto& work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / static_cast<double>(CLOCKS_PER_SEC);
}

/// An installed platform in memory, with a library that is loaded once it is filled.
class Works {
public:
    Works(const Works&) = delete;
    Works& operator=(const Works&) = delete;

protected:
    Works() : _installation(platform.host()) {}
    ~Works() { (void)repository().discardCompleteLibrary(_library); }

    [[nodiscard]] QorRepositoryBuilder& builder() { return platform.builder(); }
    [[nodiscard]] QorCoreModelingManager& repository() { return *platform.host().repository; }
    QorIdentifier textAttribute(QorIdentifier cls, std::string_view name) {
        QorAttributeSpec attribute;
        attribute.name = name;
        return builder().addAttribute(cls, attribute).id;
    }
    void load() {
        (void)repository().LoadApplicationLibrary(_library, false);
        (void)repository().initLibraryHandlers(true);
    }

    QorEmbeddedPlatform platform;

private:
    QorHostInstallation _installation;
    QorIdentifier _library = builder().addApplicationLibrary("Works", {}, {}).id;

protected:
    QorIdentifier part = builder().libraryPart(_library, QorLibraryPart::BusinessProcess);
};
