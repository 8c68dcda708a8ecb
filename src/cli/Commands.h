// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/Exit.h"

namespace qor::cli {

class Console;

struct CheckOptions {
    std::vector<std::string> files;
    std::string library;              ///< empty: the one that the file names, for BPMN the shipped one
    std::vector<std::string> models;  ///< names; empty: all
    bool first = false;               ///< one breach per model, as when a model is saved
    bool json = false;
    bool quiet = false;
    std::optional<std::uint64_t> maxBreaches;  ///< to show; none: all
    std::string group;                         ///< "object" (also when empty), "rule" or "class"
    std::string sarif;                         ///< file to write; empty: none
    std::string junit;
    std::string baseline;       ///< file of known breaches; empty: none
    std::string writeBaseline;  ///< file to write the breaches to
    std::string settings;       ///< empty: those beside the models
    std::string failOn;         ///< "error", "warning" or "never"; empty: as the settings say
    std::string language = "en";
};

struct LibraryOptions {
    std::string file;
    bool json = false;
};

struct RulesOptions {
    std::string file;
    std::string cls;  ///< empty: all
    bool json = false;
    std::string language = "en";
    bool doctor = false;              ///< look for contradictions and for rules without effect
    std::vector<std::string> models;  ///< files to examine the rules with
    std::string against;              ///< library to compare with over the models; empty: none
};

struct ConnectOptions {
    std::string library;
    std::string relation;
    std::string source;  ///< a class, or with a file an object
    std::string target;
    std::string file;   ///< holds the model that the objects are in; empty: classes are asked about
    std::string model;  ///< its name; empty: the file's only one
    bool json = false;
    std::string language = "en";
};

[[nodiscard]] Exit runCheck(const CheckOptions& options, Console& console);
[[nodiscard]] Exit runLibrary(const LibraryOptions& options, Console& console);
[[nodiscard]] Exit runLibraryCheck(const LibraryOptions& options, Console& console);
[[nodiscard]] Exit runRules(const RulesOptions& options, Console& console);
[[nodiscard]] Exit runMayConnect(const ConnectOptions& options, Console& console);
[[nodiscard]] Exit runDoctor(const RulesOptions& options, Console& console);

}  // namespace qor::cli
