// SPDX-License-Identifier: Apache-2.0
// Which operations of the contracts the embedded platform leaves at their refusing defaults. Read from the headers, so
// that no new operation is forgotten.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using Operations = std::map<std::string, std::multiset<std::string>>;  // by class

std::string withoutComments(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return std::regex_replace(text.str(), std::regex("//[^\n]*"), "");
}

// Classes of a folder's headers with the text of their bodies and bases.
void forEachClass(const char* folder,
                  const std::function<void(std::string name, std::string bases, std::string body)>& take) {
    static const std::regex kClass(R"(\nclass\s+(?:QOR_API\s+)?(\w+)(?:\s+final)?\s*(:[^{;]*)?\{([\s\S]*?)\n\};)");
    for (const auto& entry : fs::directory_iterator(fs::path(QOR_SOURCE_DIR) / "src" / folder)) {
        if (entry.path().extension() != ".h") continue;
        const std::string text = withoutComments(entry.path());
        for (std::sregex_iterator at(text.begin(), text.end(), kClass), end; at != end; ++at)
            take((*at)[1], (*at)[2], (*at)[3]);
    }
}

std::multiset<std::string> operations(const std::string& body, const char* pattern) {
    std::multiset<std::string> found;
    const std::regex operation(pattern);
    for (std::sregex_iterator at(body.begin(), body.end(), operation), end; at != end; ++at) found.insert((*at)[1]);
    return found;
}

TEST(EmbeddedPlatform, OffersAllOperationsOfTheContractsButThese) {
    // What a host puts into QorHost, and what its repository hands out.
    const std::set<std::string> helpers{"QorEvent",           "QorEventListener", "QorObject",
                                        "QorRandomGenerator", "Window",           "QorGrObjAttrHandler"};
    Operations wanted;
    forEachClass("platform", [&](const std::string& name, const std::string&, const std::string& body) {
        if (helpers.count(name) != 0) return;
        auto found = operations(body, R"(virtual\s+[^~;()]*?[&*\s](\w+)\()");
        if (!found.empty()) wanted[name].merge(found);
    });
    Operations offered;
    forEachClass("embedded", [&](const std::string&, const std::string& bases, const std::string& body) {
        const auto own = operations(body, R"((\w+)\([^;{}]*\)(?:\s+const)?\s+override)");
        static const std::regex kBase(R"(public\s+(Qor\w+))");
        for (std::sregex_iterator at(bases.begin(), bases.end(), kBase), end; at != end; ++at) offered[(*at)[1]] = own;
    });
    for (const char* part : {"QorCoreMM_Basic", "QorCoreMM_Enhanced", "QorCoreMM_LoadSave", "QorCoreMM_InterRef"})
        offered[part] = offered.at("QorCoreModelingManager");

    std::set<std::string> missing;
    for (const auto& [service, names] : wanted)
        for (const std::string& name : names)
            if (offered[service].count(name) < names.count(name)) missing.insert(service + "::" + name);
    EXPECT_EQ(wanted["QorCoreMM_Enhanced"].count("setAttributeValue"), 3U) << "the headers are read well";
    EXPECT_EQ(missing, (std::set<std::string>{
                           // These defaults are answers of their own: this computer's clock, the current syntax, no
                           // windows to stand on.
                           "QorClockService::localDateAndTime",
                           "QorCoreVarService::syntaxChecksLevel",
                           "QorWindows::appWindow",
                           "QorWindows::topWindow",
                           // What is written in memory is written at once.
                           "QorCoreModelingManager::unitsOfWork",
                           "QorCoreUnitsOfWork::begin",
                           "QorCoreUnitsOfWork::commit",
                           "QorCoreUnitsOfWork::rollBack",
                           // There is no clipboard, ...
                           "QorEditingService::sourceNameOfPastedObject",
                           // ... no ciphering, no file area, no model groups, and one user manager without groups.
                           "QorEncryption::Decrypt",
                           "QorEncryption::Encrypt",
                           "QorFileService::close",
                           "QorFileService::exists",
                           "QorFileService::isFolder",
                           "QorFileService::open",
                           "QorFileService::read",
                           "QorFileService::write",
                           "QorModelGroupService::setUserGroupPermission",
                           "QorModelGroupService::subGroups",
                           "QorUserService::allowedApplicationLibrary",
                           "QorUserService::modelGroupsAccessibleByUserGroup",
                           "QorUserService::pop",
                           "QorUserService::push",
                           "QorUserService::singleSignOnMode",
                           "QorUserService::systemUserGroupsOfUser",
                           "QorUserService::userGroupName",
                           "QorUserService::userGroupsOfUser",
                           "QorUserService::userProfile",
                       }));
}

}  // namespace
