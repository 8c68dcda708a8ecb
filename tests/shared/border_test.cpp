// SPDX-License-Identifier: Apache-2.0
// What only a program that links the shared libraries can see: watchers that the linker kept, typed events that cross
// the border between libraries, and exceptions that do not.
#include <cstdlib>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/QorCardinalityHandler.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "frame/QorLibLoad.h"
#include "interchange/QorImport.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorEventListener.h"

namespace {

constexpr const char* kLibrary = QOR_SOURCE_DIR "/examples/order-handling/library.yaml";
constexpr const char* kModels = QOR_SOURCE_DIR "/examples/order-handling/models.yaml";

class Listener final : public QorEventListener {
public:
    Listener() { setEventHandler(QorEventType::LibraryLoadedCardinality, &Listener::heard, 700); }
    long businessProcess = -1;

private:
    void heard(const QorLibraryEvent& event) { businessProcess = event.first(); }
};

/// Goes after everything that is made from `main` on.
struct AtEnd {
    ~AtEnd() {
        if (installed == nullptr) return;
        (void)Qor_DiscardLibrary();
        delete installed;
        delete platform;
    }
    QorEmbeddedPlatform* platform = nullptr;
    QorHostInstallation* installed = nullptr;
} g_atEnd;

void endWithALibraryLoaded() {
    auto* const platform = g_atEnd.platform = new QorEmbeddedPlatform;
    g_atEnd.installed = new QorHostInstallation(platform->host());
    QorImporter importer(platform->builder(), platform->reader());
    const auto library = importer.readFile(kLibrary, QorNoIdentifier);
    (void)Qor_LoadLibrary(nullptr, library.library, QorLibLoad_InitHandler::Wanted, QorLibLoad_UpdateFacets::Declined,
                          QorLibLoad_AccessMode::Shared, QorLibLoad_SilentMode::Silent);
    std::exit(QorCardinalityHandler::Instance().getClassCardinalities().numberOfElements() != 0 ? 0 : 1);
}

class Throwing final : public QorCoreModelingManager {
public:
    bool IsLibraryLoaded(long) override { throw 1; }
};

}  // namespace

TEST(Border, AHostOutsideSeesRulesReadEventsTypedAndBreachesFound) {
    QorEmbeddedPlatform platform;
    const QorHostInstallation installed(platform.host());
    Listener listener;
    QorImporter importer(platform.builder(), platform.reader());
    const auto library = importer.readFile(kLibrary, QorNoIdentifier);
    ASSERT_FALSE(library.hasErrors());
    const auto models = importer.readFile(kModels, library.library);
    ASSERT_FALSE(models.models.empty());

    ASSERT_EQ(Qor_LoadLibrary(nullptr, library.library, QorLibLoad_InitHandler::Wanted, QorLibLoad_UpdateFacets::Wanted,
                              QorLibLoad_AccessMode::Exclusive, QorLibLoad_SilentMode::Silent),
              QorErrorCode::Ok);
    EXPECT_EQ(listener.businessProcess,
              platform.builder().libraryPart(library.library, QorLibraryPart::BusinessProcess));
    const auto& handler = QorCardinalityHandler::Instance();
    const auto task = platform.reader().findClass(library.library, "Task");
    EXPECT_NE(handler.getClassCardinality(task), nullptr) << "the watcher read the rules";

    int breaches = 0;
    QorCardinalityCompleteCheck check(handler);
    for (const auto model : models.models)
        EXPECT_TRUE(check.checkModel(model, [&breaches](const QorCardinalityBreach&) { return ++breaches > 0; }));
    EXPECT_GT(breaches, 0);

    EXPECT_EQ(Qor_DiscardLibrary(), QorErrorCode::Ok);
    EXPECT_EQ(handler.getClassCardinality(task), nullptr) << "the watcher gave the rules up";
}

TEST(Border, AHostThatGoesAfterMainDiscardsItsLibraryInPeace) {
    EXPECT_EXIT(endWithALibraryLoaded(), testing::ExitedWithCode(0), testing::IsEmpty());
}

TEST(Border, WhatAHostThrowsBecomesACode) {
    Throwing repository;
    QorHost host;
    host.repository = &repository;
    const QorHostInstallation installed(host);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Qor_LoadLibrary(nullptr, 1, QorLibLoad_InitHandler::Wanted, QorLibLoad_UpdateFacets::Wanted,
                              QorLibLoad_AccessMode::Shared, QorLibLoad_SilentMode::Silent),
              QorErrorCode::Broken);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}
