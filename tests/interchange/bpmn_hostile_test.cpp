// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "interchange/BpmnDesk.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) result += text;
    return result;
}

std::string wide(std::string_view text) {
    std::string result = "\xFF\xFE";
    for (const char c : text) result.append({c, '\0'});
    return result;
}

struct RefusedCase {
    const char* what;
    std::string text;
    const char* expected;
};

std::vector<RefusedCase> refusedCases() {
    using namespace std::string_literals;
    const std::string open = "<definitions xmlns=\"http://www.omg.org/spec/BPMN/20100524/MODEL\">";
    return {
        {"entity bomb", "<!DOCTYPE a [<!ENTITY b \"bbbbbbbb\"><!ENTITY c \"&b;&b;&b;\">]>\n<a>&c;</a>",
         "1:13 a document type is not accepted"},
        {"external entity", "<!DOCTYPE a [<!ENTITY b SYSTEM \"/etc/passwd\">]><a>&b;</a>", "1:13 a document type"},
        {"external document type", "\n<!DOCTYPE a SYSTEM \"http://example.org/a.dtd\"><a/>", "2:46 a document type"},
        {"unknown entity", open + "&b;", "1:66 this is not well-formed XML: undefined entity"},
        {"depth 257", repeated("<a>", 257), "1:769 elements are nested more than 256 deep"},
        {"depth 2 million", open + "\n" + repeated("<process>", 2000000), "2:2296 elements are nested"},
        {"40 MB attribute", "<a b='" + std::string(40U << 20, 'x') + "'/>", "1:1 a tag or comment of more than 4 MB"},
        {"40 MB comment of lines", "<!--" + std::string(40U << 20, '\n') + "-->", "1:1 a tag or comment"},
        {"invalid UTF-8", open + "\n  <process name='\xC3\x28'/>", "2:18 the byte 0xC3 is not valid here"},
        {"overlong UTF-8", open + "<process name='\xC0\xAF'/>", "the byte 0xC0 is not valid here"},
        {"surrogate in UTF-8", open + "<process name='\xED\xA0\x80'/>", "the byte 0xED is not valid here"},
        {"zero byte", open + "\0"s, "1:66 the byte 0x00 is not valid here"},
        {"unknown encoding", "<?xml version='1.0' encoding='EBCDIC-X'?><a/>", "1:31 the encoding is not known"},
        {"cut in a tag", open + "<process ", "1:66 the file ends inside <definitions>, which was opened in line 1"},
        {"cut in UTF-16", wide(open), "the file ends inside <definitions>"},
        {"wrong end tag", open + "\n<process>\n</definitions>",
         "3:3 the end tag does not close <process>, which was "
         "opened in line 2"},
        {"two roots", bpmnFile("") + "<a/>", "not well-formed XML: junk after document element"},
        {"no BPMN", "<html xmlns='urn:x'/>", "1:1 this is no BPMN 2.0 file: it begins with <html> of the namespace"},
        {"attribute twice", open + "<process id='a' id='b'/>", "duplicate attribute"},
        {"attribute without quotes", open + "<process id=p/>", "1:78 this is not well-formed XML"},
        {"prefix of nothing", open + "<q:process/>", "unbound prefix"},
    };
}

TEST(HostileBpmn, IsRefusedWithItsPlaceAndLeavesNothingBehind) {
    BpmnDesk desk;
    for (const RefusedCase& row : refusedCases()) {
        const auto start = std::chrono::steady_clock::now();
        desk.read(row.text);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10)) << row.what;
        EXPECT_TRUE(desk.hasErrors()) << row.what;
        ASSERT_FALSE(desk.diagnostics().empty()) << row.what;
        EXPECT_THAT(desk.diagnostics().back(), HasSubstr(row.expected)) << row.what;
        EXPECT_THAT(desk.modelNames(), ElementsAre()) << row.what;
    }
}

TEST(HostileBpmn, EveryCutOfAFileIsAnErrorAndNeverACrash) {
    const std::string whole = textOfFile(QOR_SOURCE_DIR "/examples/bpmn/claim.bpmn");
    const std::size_t end = whole.rfind('>');
    BpmnDesk desk;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        desk.read(std::string_view(whole).substr(0, size));
        ASSERT_EQ(desk.hasErrors(), size <= end) << size;
    }
}

TEST(HostileBpmn, ManyAttributesAndPrefixesAreTakenInLinearTime) {
    std::string attributes;
    std::string prefixes;
    for (int i = 0; i < 80000; ++i) {
        attributes += " a" + std::to_string(i) + "=''";
        prefixes += " xmlns:n" + std::to_string(i) + "='urn:" + std::to_string(i) + "'";
    }
    BpmnDesk desk;
    EXPECT_FALSE(desk.readProcess("<task id='a'" + attributes + prefixes + "/>").hasErrors());
    EXPECT_THAT(desk.value("a", "Further details"), HasSubstr("a79999 = "));
}

TEST(HostileBpmn, TextsThatManyElementsReferToDoNotMultiply) {
    const std::string name(1 << 20, 'x');
    std::string process;
    for (int i = 0; i < 2000; ++i) process += "<receiveTask messageRef='m'/>";
    BpmnDesk desk;
    desk.readDefinitions("<message id='m' name='" + name + "'/><process id='p'>" + process +
                         "<receiveTask id='r' messageRef='m'/></process>");
    EXPECT_LT(desk.value("r", "Message").size(), 250U);
}

struct EncodingCase {
    const char* declared;
    std::string text;
};

TEST(BpmnEncodings, AreReadAsDeclared) {
    const std::string start = "<definitions xmlns='http://www.omg.org/spec/BPMN/20100524/MODEL'><process id='p'>";
    const EncodingCase kCases[] = {
        {"UTF-8", start + "<task id='a' name='\xE2\x82\xAC \xC3\xA4'/></process></definitions>"},
        {"windows-1252", start + "<task id='a' name='\x80 \xE4'/></process></definitions>"},
        {"ISO-8859-1", start + "<task id='a' name='&#x20AC; \xE4'/></process></definitions>"},
    };
    BpmnDesk desk;
    for (const EncodingCase& row : kCases) {
        desk.read("<?xml version='1.0' encoding='" + std::string(row.declared) + "'?>" + row.text);
        EXPECT_THAT(desk.objects(), ElementsAre("Task \"\xE2\x82\xAC \xC3\xA4\"")) << row.declared;
    }
    desk.read(wide("<?xml version='1.0' encoding='UTF-16'?>\n" + start +
                   "\n <task id='a' name='&#x20AC; &#xE4;'/></process></definitions>"));
    EXPECT_THAT(desk.objects(), ElementsAre("Task \"\xE2\x82\xAC \xC3\xA4\""));
    EXPECT_EQ(desk.importer.placeOf(desk.made("a")).line, 3U);
    EXPECT_EQ(desk.importer.placeOf(desk.made("a")).column, 2U);
}

TEST(BpmnLibraries, OneThatLacksAClassIsNamedInTheError) {
    BpmnDesk desk;
    const QorImportResult other = desk.importer.readText(
        "other.yaml", "format: qor.library/1\nname: Other\nbusiness_process:\n  classes:\n    - {name: Process}\n",
        QorNoIdentifier);
    ASSERT_FALSE(other.hasErrors());
    const QorImportResult result = desk.importer.readText("test.bpmn", bpmnFile("<process/>"), other.library);
    ASSERT_TRUE(result.hasErrors());
    EXPECT_THAT(result.diagnostics.front().text, HasSubstr("no class \"Black-box process\""));
}

}  // namespace
