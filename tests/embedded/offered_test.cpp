// SPDX-License-Identifier: Apache-2.0
// Which operations of the contracts the embedded platform leaves at their refusing defaults. Read from the headers, so
// that no new operation is forgotten.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using Operations = std::map<std::string, std::multiset<std::string>>;  // by class

std::string withoutComments(const fs::path& file) {
    std::ifstream lines(file);
    std::string text;
    for (std::string line; std::getline(lines, line);) text += line.substr(0, line.find("//")) + "\n";
    return text;
}

bool isWordCharacter(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

// The word that ends directly before the position.
std::string wordBefore(const std::string& text, std::size_t at) {
    std::size_t first = at;
    while (first > 0 && isWordCharacter(text[first - 1])) --first;
    return text.substr(first, at - first);
}

struct ClassText {
    std::string name;
    std::string bases;
    std::string body;
};

// The classes of a folder's headers.
std::vector<ClassText> classesIn(const char* folder) {
    std::vector<ClassText> found;
    for (const auto& entry : fs::directory_iterator(fs::path(QOR_SOURCE_DIR) / "src" / folder)) {
        if (entry.path().extension() != ".h") continue;
        const std::string text = withoutComments(entry.path());
        for (std::size_t at = text.find("\nclass "); at != std::string::npos; at = text.find("\nclass ", at + 1)) {
            const std::size_t begin = text.find_first_of("{;", at);
            if (text[begin] == ';') continue;
            const std::string head = text.substr(at, begin - at);
            const std::size_t colon = std::min(head.find(" : "), head.size());
            std::size_t nameEnd = head.find_last_not_of(" \n", colon - 1) + 1;
            if (wordBefore(head, nameEnd) == "final") nameEnd -= std::string_view(" final").size();
            found.push_back(
                {wordBefore(head, nameEnd), head.substr(colon), text.substr(begin, text.find("\n};", begin) - begin)});
        }
    }
    return found;
}

// The operations whose declarations hold the word ("virtual", "override"); destructors are left out.
std::multiset<std::string> operations(const std::string& body, std::string_view word) {
    std::multiset<std::string> names;
    for (std::size_t at = body.find(word); at != std::string::npos; at = body.find(word, at + 1)) {
        std::size_t begin = body.find_last_of(";{}", at) + 1;
        const std::size_t label = body.find(":\n", begin);  // "public:"
        if (label < at) begin = label + 1;
        const std::size_t open = body.find('(', begin);
        if (body[open - wordBefore(body, open).size() - 1] != '~') names.insert(wordBefore(body, open));
    }
    return names;
}

TEST(EmbeddedPlatform, OffersAllOperationsOfTheContractsButThese) {
    // What a host puts into QorHost, and what its repository hands out.
    const std::set<std::string> helpers{"QorEvent",           "QorEventListener", "QorObject",
                                        "QorRandomGenerator", "Window",           "QorGrObjAttrHandler"};
    Operations wanted;
    for (const ClassText& its : classesIn("platform")) {
        auto names = operations(its.body, "virtual ");
        if (helpers.count(its.name) == 0 && !names.empty()) wanted[its.name] = std::move(names);
    }
    Operations offered;
    for (const ClassText& its : classesIn("embedded")) {
        constexpr std::string_view kPublic = "public ";
        for (std::size_t at = its.bases.find(kPublic); at != std::string::npos; at = its.bases.find(kPublic, at + 1)) {
            const std::size_t base = at + kPublic.size();
            const auto end = its.bases.find_first_of(", \n", base);
            offered[its.bases.substr(base, end - base)] = operations(its.body, " override");
        }
    }
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
