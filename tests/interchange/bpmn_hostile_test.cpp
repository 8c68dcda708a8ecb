// SPDX-License-Identifier: Apache-2.0
#include <chrono>

#include "interchange/BpmnDesk.h"
#include "interchange/Files.h"

using qor::test::repeated;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::string wide(std::string_view text) {
    std::string result = "\xFF\xFE";
    for (const char c : text) result.append({c, '\0'});
    return result;
}

TEST(HostileBpmn, IsRefusedWithItsPlaceAndLeavesNothingBehind) {
    using namespace std::string_literals;
    const std::string open = "<definitions xmlns=\"http://www.omg.org/spec/BPMN/20100524/MODEL\">";
    const struct {
        std::string text, expected;
    } kCases[] = {
        {"<!DOCTYPE a [<!ENTITY b \"bbbbbbbb\"><!ENTITY c \"&b;&b;&b;\">]>\n<a>&c;</a>",
         "1:13 a document type is not accepted"},
        {"<!DOCTYPE a [<!ENTITY b SYSTEM \"/etc/passwd\">]><a>&b;</a>", "1:13 a document type"},
        {"\n<!DOCTYPE a SYSTEM \"http://example.org/a.dtd\"><a/>", "2:46 a document type"},
        {open + "&b;", "1:66 this is not well-formed XML: undefined entity"},
        {repeated("<a>", 257), "1:769 elements are nested more than 256 deep"},
        {open + "\n" + repeated("<process>", 2000000), "2:2296 elements are nested"},
        {"<a b='" + std::string(40U << 20, 'x') + "'/>", "1:1 a tag or comment of more than 4 MB"},
        {"<!--" + std::string(40U << 20, '\n') + "-->", "1:1 a tag or comment"},
        {open + "\n  <process name='\xC3\x28'/>", "2:18 the byte 0xC3 is not valid here"},
        {open + "<process name='\xC0\xAF'/>", "the byte 0xC0 is not valid here"},
        {open + "<process name='\xED\xA0\x80'/>", "the byte 0xED is not valid here"},
        {open + "\0"s, "1:66 the byte 0x00 is not valid here"},
        {"<?xml version='1.0' encoding='EBCDIC-X'?><a/>", "1:31 the encoding is not known"},
        {open + "<process ", "1:66 the file ends inside <definitions>, which was opened in line 1"},
        {wide(open), "the file ends inside <definitions>"},
        {open + "\n<process>\n</definitions>", "3:3 the end tag does not close <process>, which was opened in line 2"},
        {bpmnFile("") + "<a/>", "not well-formed XML: junk after document element"},
        {"<html xmlns='urn:x'/>", "1:1 this is no BPMN 2.0 file: it begins with <html> of the namespace"},
        {open + "<process id='a' id='b'/>", "duplicate attribute"},
        {open + "<process id=p/>", "1:78 this is not well-formed XML"},
        {open + "<q:process/>", "unbound prefix"},
    };
    BpmnDesk desk;
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.text.substr(0, 200));
        const auto start = std::chrono::steady_clock::now();
        desk.read(row.text);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
        EXPECT_TRUE(desk.hasErrors());
        ASSERT_FALSE(desk.diagnostics().empty());
        EXPECT_THAT(desk.diagnostics().back(), HasSubstr(row.expected));
        EXPECT_THAT(desk.modelNames(), ElementsAre());
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

TEST(BpmnEncodings, AreReadAsDeclared) {
    const std::string start = "<definitions xmlns='http://www.omg.org/spec/BPMN/20100524/MODEL'><process id='p'>";
    const struct {
        const char* declared;
        std::string text;
    } kCases[] = {
        {"UTF-8", start + "<task id='a' name='\xE2\x82\xAC \xC3\xA4'/></process></definitions>"},
        {"windows-1252", start + "<task id='a' name='\x80 \xE4'/></process></definitions>"},
        {"ISO-8859-1", start + "<task id='a' name='&#x20AC; \xE4'/></process></definitions>"},
    };
    BpmnDesk desk;
    for (const auto& row : kCases) {
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
