// SPDX-License-Identifier: Apache-2.0
// What is reported of a check, as what, and in which form.
#include <expat.h>

#include <nlohmann/json.hpp>

#include "cli/samples.h"

namespace {

using nlohmann::json;
using qor::test::Outcome;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

struct CliFindings : qor::test::OnSamples {
    void settings(std::string_view text) {
        qor.write("qor-check.yaml", "format: qor.check-settings/1\n" + std::string(text));
    }
};

TEST_F(CliFindings, SettingsBaselineAndLimitsDecideWhatIsShownAndHowItEnds) {
    struct Row {
        const char *settings, *arguments;
        int exit;
        const char* out;
    };
    constexpr const char* kShelfIsFine = "objects:\n  - {object: Shelf, class: Store, reason: \"kept for show\"}\n";
    constexpr const char* kAllWarnings = "rules:\n  - {severity: warning}\n";
    constexpr Row rows[] = {
        {"", "orders.yaml", 1, ": 5 breaches (shown as 3) in "},
        {"", "--fail-on never orders.yaml", 0, ": 5 breaches"},
        {kAllWarnings, "orders.yaml", 0, "    warning: Too few objects"},
        {kAllWarnings, "--fail-on warning orders.yaml", 1, ", 5 of them only warned of in "},
        {"fail_on: warning\nrules:\n  - {severity: warning}\n", "orders.yaml", 1, ""},
        {"rules:\n  - {severity: off}\n  - {class: Store, key: min-incoming, relation: uses, severity: error}\n",
         "orders.yaml", 1, ": 1 breach, 4 more accepted in "},
        {"rules:\n  - {class: Store, relation: then, severity: off}\n", "orders.yaml", 1, ": 5 breaches"},
        {kShelfIsFine, "orders.yaml", 1, ": 4 breaches (shown as 2), 1 more accepted in "},
        {"objects:\n  - {object: t1, model: Orders, severity: warning, reason: \"split on purpose\"}\n", "orders.yaml",
         1, ", 3 of them only warned of in "},
        {"objects:\n  - {object: t1, model: Idle, reason: \"elsewhere\"}\n", "orders.yaml", 1, ": 5 breaches"},
        {kAllWarnings, "--settings none.yaml orders.yaml", 1, ": 5 breaches"},
        {kAllWarnings, "qor-check.yaml orders.yaml", 0, "\n1 file, "},
        {"", "--max-breaches 0 orders.yaml", 1,
         "0 relations, 1 breach not shown\n1 file, 2 models, 4 objects, "
         "2 relations: 5 breaches, 5 of them not shown in "},
        {"", "--group rule orders.yaml", 1,
         "       3  rule max-outgoing: 1, in the text of class \"Task\" (workshop.yaml:9:9)\n"},
        {"", "--group class orders.yaml", 1, "       4  class \"Task\"\n       1  class \"Store\"\n\nclass \"Task\"\n"},
        {"", "--group rule --max-breaches 3 orders.yaml", 1, "       1  rule min-objects: 1, in the text"},
    };
    qor.write("none.yaml", "format: qor.check-settings/1\n");
    for (const Row& row : rows) {
        settings(row.settings);
        qor.expect("check ", {{row.arguments, row.exit, row.out}});
    }
}

TEST_F(CliFindings, FaultsOfSettingsAndBaselinesHaveTheirPlaces) {
    struct Row {
        const char *text, *error;
    };
    constexpr Row rows[] = {
        {"fail_on: sometimes\n", "qor-check.yaml:2:10: error: the value of \"fail_on\" is error, warning or never"},
        {"rules:\n  - {severety: off}\n",
         "qor-check.yaml:3:6: error: a rule has no key \"severety\"; did you mean severity?"},
        {"rules:\n  - {severity: none}\n", "qor-check.yaml:3:16: error: "},
        {"rules: 3\n", "qor-check.yaml:2:8: error: the value of \"rules\" is a list"},
        {"objects:\n  - {object: Shelf}\n",
         "qor-check.yaml:3:5: error: an object needs the key \"reason\" with a text"},
        {"rules: [\n", "qor-check.yaml:3:1: error: "},
    };
    for (const Row& row : rows) {
        settings(row.text);
        // Checked all the same, told once.
        qor.expect("check ", {{"orders.yaml clean.yaml", 3, ": 5 breaches", row.error}});
    }
    settings("");
    qor.write("bad.json", R"({"format": "qor.check-baseline/1", "entries": [{"file": "x", "count": -1}]})");
    for (const std::string baseline : {"bad.json", "gone.json", "orders.yaml"})
        qor.expect("check --baseline ", {{baseline + " orders.yaml", 3, "", baseline + " ... : error: "}});
}

TEST_F(CliFindings, ABaselineHidesWhatIsKnownAndNamesWhatIsGone) {
    EXPECT_EQ(qor.run("check --write-baseline known.json orders.yaml order.bpmn").exit, 0);
    EXPECT_THAT(qor.run("check --baseline known.json orders.yaml order.bpmn").out,
                HasSubstr(": 0 breaches, 6 more known in "));
    EXPECT_EQ(qor.run("check --baseline ../in/known.json \"$PWD/orders.yaml\"").exit, 0);

    // A third successor is a worse count; the shelf is used now; the second model is gone.
    std::string orders(qor::test::kOrders);
    orders.erase(orders.find("  - name: Idle"));
    orders += "      - {class: then, from: t1, to: t1}\n      - {class: uses, from: Pack, to: Shelf}\n";
    qor.write("orders.yaml", "# moved by a line\n" + orders);
    const Outcome worse = qor.run("check --baseline known.json orders.yaml");
    EXPECT_EQ(worse.exit, 1);
    EXPECT_THAT(worse.out, AllOf(HasSubstr("found 3, in 3 counts"), HasSubstr(": 3 breaches (shown as 1)")));
    EXPECT_THAT(worse.err,
                AllOf(HasSubstr("no longer there: orders.yaml: model \"Orders\": Store \"Shelf\": min-incoming "
                                "for relation \"uses\", known 1 time, found 0 times"),
                      HasSubstr("model \"Idle\": Task: min-objects"), Not(HasSubstr("order.bpmn"))));
    EXPECT_THAT(qor.run("check --baseline known.json --model Orders orders.yaml").err, Not(HasSubstr("Idle")));
    std::filesystem::remove(qor.folder() / "in" / "order.bpmn");
    EXPECT_THAT(qor.run("check --baseline known.json clean.yaml").err, HasSubstr("order.bpmn"));
}

TEST_F(CliFindings, FilesComeWholeOrNotAtAll) {
    qor.write("report.xml", "earlier");
    EXPECT_EQ(qor.run("check --junit gone/report.xml --sarif /dev/full orders.yaml").exit, 5);
    EXPECT_THAT(qor.run("check --junit gone/report.xml orders.yaml").err,
                HasSubstr("gone/report.xml: error: cannot be"));
    EXPECT_EQ(qor.run("check --junit report.xml clean.yaml").exit, 0);
    EXPECT_THAT(qor.content("report.xml"), HasSubstr("<testcase classname=\"clean.yaml/Clean\" name=\"all rules\"/>"));
    EXPECT_EQ(qor.run("check --sarif - --junit - clean.yaml").exit, 2);
    EXPECT_EQ(qor.run("check --sarif - --json clean.yaml").exit, 2);
    EXPECT_THAT(qor.run("check --junit - clean.yaml").out, testing::StartsWith("<?xml"));
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(qor.folder() / "in")) files += entry.exists() ? 1 : 0;
    EXPECT_EQ(files, 5) << "no temporary file stays";
}

TEST_F(CliFindings, AFileIsReplacedThroughALinkAndKeepsWhatItWasWhenNothingCanBeWritten) {
    namespace fs = std::filesystem;
    const auto folder = qor.folder() / "in";
    qor.write("real.xml", "earlier");
    fs::create_symlink("real.xml", folder / "link.xml");
    EXPECT_EQ(qor.run("check --junit link.xml clean.yaml").exit, 0);
    EXPECT_TRUE(fs::is_symlink(folder / "link.xml"));
    EXPECT_THAT(qor.content("real.xml"), testing::StartsWith("<?xml"));
    EXPECT_EQ(qor.run("check --write-baseline orders.yaml/known.json orders.yaml").exit, 5);
    EXPECT_EQ(qor.content("orders.yaml"), qor::test::kOrders);
    EXPECT_EQ(qor.run("check --junit /dev/stdout --quiet clean.yaml | grep -c testsuite").out, "4\n");
}

TEST_F(CliFindings, JunitHasACaseForEachObjectAndFailsOnlyForErrors) {
    settings("rules:\n  - {class: Store, severity: warning}\n");
    qor.write("bad.yaml", "format: qor.model/1\nlibrary: workshop.yaml\nmodels: [\n");
    const std::string xml = qor.run("check --junit - orders.yaml clean.yaml bad.yaml").out;
    for (const char* part : {"<testsuite name=\"orders.yaml\" tests=\"3\" failures=\"2\" errors=\"0\" skipped=\"0\">",
                             "name=\"Task &quot;Check&quot; (id t1)\"><failure message=\"Too many relations",
                             "name=\"Store &quot;Shelf&quot;\"><system-out>orders.yaml:10:9: Too few incoming",
                             "name=\"class &quot;Task&quot;\"><failure message=\"Too few objects",
                             "<testsuite name=\"clean.yaml\" tests=\"1\" failures=\"0\" errors=\"0\" skipped=\"0\">",
                             "<testsuite name=\"bad.yaml\" tests=\"1\" failures=\"0\" errors=\"1\" skipped=\"0\">"})
        EXPECT_THAT(xml, HasSubstr(part));
}

TEST_F(CliFindings, SettingsComeFromTheNearestFolderAndMayBeJson) {
    std::filesystem::create_directories(qor.folder() / "in" / "deep" / "er");
    settings("rules:\n  - {severity: off}\n");
    qor.write("deep/qor-check.yaml", R"({"format": "qor.check-settings/1", "rules": [{"severity": "warning"}]})");
    std::string orders(qor::test::kOrders);
    orders.replace(orders.find("workshop.yaml"), 13, "../../workshop.yaml");
    qor.write("deep/er/orders.yaml", orders);
    EXPECT_THAT(qor.run("check orders.yaml").out, HasSubstr(": 0 breaches, 5 more accepted"));
    EXPECT_THAT(qor.run("check deep/er/orders.yaml").out,
                HasSubstr(": 5 breaches (shown as 3), 5 of them only warned"));
    EXPECT_THAT(qor.run("check -", "cat orders.yaml |").out, HasSubstr(": 0 breaches, 5 more accepted"));
    EXPECT_THAT(qor.run("check --json deep/er/orders.yaml").out, HasSubstr("\"severity\": \"warning\""));
}

// ---- SARIF ----

/// The properties that the schema allows below each one used, and those that it demands ("!").
const std::map<std::string, std::string>& sarifProperties() {
    static const std::map<std::string, std::string> properties = {
        {"", "$schema !version !runs"},
        {"runs", "columnKind results !tool invocations"},
        {"tool", "!driver"},
        {"driver", "!name semanticVersion rules"},
        {"rules", "!id shortDescription"},
        {"shortDescription", "!text"},
        {"results", "ruleId ruleIndex level !message locations relatedLocations partialFingerprints suppressions"},
        {"message", "!text"},
        {"locations", "physicalLocation logicalLocations"},
        {"relatedLocations", "id physicalLocation message"},
        {"physicalLocation", "!artifactLocation region"},
        {"artifactLocation", "!uri"},
        {"region", "!startLine startColumn"},
        {"logicalLocations", "name fullyQualifiedName kind"},
        {"suppressions", "!kind justification"},
        {"invocations", "!executionSuccessful toolExecutionNotifications"},
        {"toolExecutionNotifications", "level !message locations"},
    };
    return properties;
}

void expectSarif(const json& value, const std::string& name) {
    if (value.is_array()) {
        for (const auto& item : value) expectSarif(item, name);
        return;
    }
    const auto known = sarifProperties().find(name);
    if (!value.is_object() || known == sarifProperties().end()) return;
    std::set<std::string> allowed;
    std::istringstream words(known->second);
    for (std::string word; words >> word;) {
        const bool isNeeded = word[0] == '!';
        if (isNeeded) word.erase(0, 1);
        EXPECT_TRUE(!isNeeded || value.contains(word)) << name << " lacks " << word;
        allowed.insert(word);
    }
    for (const auto& [key, inner] : value.items()) {
        EXPECT_TRUE(allowed.contains(key)) << name << " has " << key;
        expectSarif(inner, key);
    }
    if (value.contains("level")) {
        EXPECT_TRUE(std::set<json>({"error", "warning", "note"}).contains(value["level"]));
    }
    if (value.contains("uri")) {
        EXPECT_EQ(value["uri"].get<std::string>().find_first_of(" <>\"\\^`{|}"), std::string::npos);
    }
    for (const auto* key : {"startLine", "startColumn"}) EXPECT_GE(value.value(key, 1), 1);
}

TEST_F(CliFindings, SarifNamesRuleObjectAndPlace) {
    settings("rules:\n  - {class: Store, severity: warning}\nobjects:\n  - {object: lost, reason: \"a draft\"}\n");
    qor.write("bad one.yaml", "format: qor.model/1\nlibrary: workshop.yaml\nmodels: [\n");
    EXPECT_EQ(qor.run("check --max-breaches 1 --sarif o.sarif orders.yaml order.bpmn 'bad one.yaml'").exit, 3);
    const json document = json::parse(qor.content("o.sarif"));
    expectSarif(document, "");
    EXPECT_EQ(document["version"], "2.1.0");
    const json& run = document["runs"][0];
    ASSERT_EQ(run["results"].size(), 4U) << "three of one rule and one object are one";
    const json& shelf = run["results"][1];
    EXPECT_EQ(shelf["level"], "warning");
    EXPECT_EQ(run["tool"]["driver"]["rules"][shelf["ruleIndex"].get<std::size_t>()]["id"], shelf["ruleId"]);
    EXPECT_EQ(shelf["ruleId"], "Store/uses/min-incoming");
    const json& place = shelf["locations"][0]["physicalLocation"];
    EXPECT_EQ(place["artifactLocation"]["uri"], "orders.yaml");
    EXPECT_EQ(place["region"], json({{"startLine", 10}, {"startColumn", 9}}));
    EXPECT_EQ(shelf["relatedLocations"][0]["physicalLocation"]["region"]["startLine"], 14);
    EXPECT_EQ(run["results"][3]["suppressions"][0]["justification"], "a draft");
    EXPECT_EQ(run["invocations"][0]["executionSuccessful"], false);
    EXPECT_EQ(run["invocations"][0]["toolExecutionNotifications"][0]["locations"][0]["physicalLocation"]
                 ["artifactLocation"]["uri"],
              "bad%20one.yaml");
}

TEST_F(CliFindings, SarifCountsColumnsInCharacters) {
    qor.write("wide.yaml",
              "format: qor.model/1\nlibrary: workshop.yaml\nmodels:\n  - name: W\n    type: Process\n"
              "    objects: [{class: Task, name: \"Prüfen €\"}, {class: Store, name: Lager}]\n");
    EXPECT_EQ(qor.run("check --sarif w.sarif wide.yaml").exit, 1);
    const json result = json::parse(qor.content("w.sarif"))["runs"][0]["results"][0];
    EXPECT_EQ(result["locations"][0]["physicalLocation"]["region"]["startColumn"], 48);
}

// ---- Names of ill will ----

std::string parsedXml(const std::string& text) {
    XML_Parser parser = XML_ParserCreate(nullptr);
    const bool isRead = XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK;
    std::string error = isRead ? "" : XML_ErrorString(XML_GetErrorCode(parser));
    XML_ParserFree(parser);
    return error;
}

TEST_F(CliFindings, NamesDoNotBreakAnyOutput) {
    qor.write("evil.yaml",
              "format: qor.model/1\nlibrary: workshop.yaml\nmodels:\n  - name: \"]]><b>&\\u202E\"\n"
              "    type: Process\n    objects:\n"
              "      - {class: Store, name: \"</failure>'\\\"\\uFFFE [x](http://e) \\\\ {0}%s\"}\n");
    EXPECT_EQ(qor.run("check --sarif e.sarif --junit e.xml --write-baseline e.json evil.yaml").exit, 0);
    for (const char* name : {"e.sarif", "e.xml", "e.json"})
        EXPECT_THAT(qor.content(name), AllOf(HasSubstr("failure"), Not(HasSubstr("\u202E")))) << name;
    EXPECT_EQ(parsedXml(qor.content("e.xml")), "");
    const json sarif = json::parse(qor.content("e.sarif"));
    expectSarif(sarif, "");
    EXPECT_THAT(sarif["runs"][0]["results"][0]["message"]["text"].get<std::string>(), HasSubstr("\\[x\\](http://e)"));
    EXPECT_EQ(qor.run("check --baseline e.json evil.yaml").exit, 0) << "known by its very name";
    for (const char* group : {"rule", "class", "object"})
        EXPECT_THAT(qor.run(std::string("check --group ") + group + " evil.yaml").out,
                    AllOf(HasSubstr("failure"), Not(HasSubstr("\x1B"))));
}

}  // namespace
