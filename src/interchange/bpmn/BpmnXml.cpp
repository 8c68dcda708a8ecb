// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnXml.h"

#include <expat.h>
#include <array>
#include <exception>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

#include "interchange/Wording.h"
#include "interchange/bpmn/BpmnXmlLines.h"

namespace qor::interchange::bpmn {

XmlHandler::~XmlHandler() = default;

namespace {

constexpr char kSeparator = '\x01';  // cannot occur in XML, so in no namespace address
constexpr std::size_t kMaxNameInWords = 80;
constexpr std::size_t kChunkBytes = std::size_t{128} << 10;

XmlName splitName(std::string_view qualified) {
    const std::size_t at = qualified.rfind(kSeparator);
    if (at == std::string_view::npos) return {{}, qualified};
    return {qualified.substr(0, at), qualified.substr(at + 1)};
}

/// The characters of windows-1252 from 0x80 to 0x9F; elsewhere it agrees with ISO-8859-1. -1: not in use.
constexpr std::array<int, 32> kWindows1252 = {0x20AC, -1,     0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                              0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, -1,     0x017D, -1,
                                              -1,     0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                              0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, -1,     0x017E, 0x0178};

bool sameIgnoringCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (lower(a[i]) != lower(b[i])) return false;
    return true;
}

std::string inHex(unsigned char byte) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    return {'0', 'x', kDigits[byte >> 4], kDigits[byte & 0xF]};
}

class Reading {
public:
    Reading(ByteSource& source, XmlHandler& handler)
        : _source(source), _handler(handler), _parser(XML_ParserCreateNS(nullptr, kSeparator)) {
        if (!_parser) throw std::bad_alloc();
        XML_SetUserData(_parser.get(), this);
        XML_SetElementHandler(_parser.get(), onOpen, onClose);
        XML_SetCharacterDataHandler(_parser.get(), onText);
        XML_SetStartDoctypeDeclHandler(_parser.get(), onDocumentType);
        XML_SetUnknownEncodingHandler(_parser.get(), onUnknownEncoding, this);
    }

    bool run() {
        for (bool last = false; !last;) {
            void* const buffer = XML_GetBuffer(_parser.get(), static_cast<int>(kChunkBytes));
            if (buffer == nullptr) throw std::bad_alloc();
            const std::ptrdiff_t size = _source.read(static_cast<char*>(buffer), kChunkBytes);
            if (size < 0) return fail("the file cannot be read on from here");
            _lines.add({static_cast<const char*>(buffer), static_cast<std::size_t>(size)});
            last = size == 0;
            if (!take(static_cast<int>(size), last)) return false;
        }
        return true;
    }

private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    /// What is wrong is told at the current event, wherever the bytes fed may end.
    bool fail(std::string text) {
        if (!_failed) {
            _failed = true;
            _handler.failed(here(), std::move(text));
        }
        return false;
    }

    void stop(std::string text) {
        fail(std::move(text));
        XML_StopParser(_parser.get(), XML_FALSE);
    }

    bool take(int size, bool last) {
        const XML_Status status = XML_ParseBuffer(_parser.get(), size, last ? XML_TRUE : XML_FALSE);
        if (_thrown) std::rethrow_exception(_thrown);
        if (_failed) return false;
        if (status != XML_STATUS_OK) return fail(wordsFor(XML_GetErrorCode(_parser.get())));
        const XML_Index index = XML_GetCurrentByteIndex(_parser.get());
        const std::size_t reached = index < 0 ? 0 : static_cast<std::size_t>(index);
        (void)_lines.placeOf(reached);  // long texts hold lines without end
        const std::size_t pending = _lines.bytes() - reached;
        if (!last && pending > kMaxTagBytes + kChunkBytes)
            return fail(concat({"a tag or comment of more than ", std::to_string(kMaxTagBytes >> 20), " MB"}));
        return true;
    }

    Place here() {
        const XML_Index index = XML_GetCurrentByteIndex(_parser.get());
        if (_lines.wide())
            return {static_cast<std::uint32_t>(XML_GetCurrentLineNumber(_parser.get())),
                    static_cast<std::uint32_t>(XML_GetCurrentColumnNumber(_parser.get()) + 1)};
        return _lines.placeOf(index < 0 ? 0 : static_cast<std::size_t>(index));
    }

    std::string wordsFor(XML_Error error) {
        switch (error) {
            case XML_ERROR_NO_ELEMENTS:
            case XML_ERROR_UNCLOSED_TOKEN:
            case XML_ERROR_PARTIAL_CHAR:
            case XML_ERROR_UNCLOSED_CDATA_SECTION:
                return wordsForEnd();
            case XML_ERROR_TAG_MISMATCH:
                return concat({"the end tag does not close ", wordsForOpen()});
            case XML_ERROR_UNKNOWN_ENCODING:
                return "the encoding is not known; UTF-8, UTF-16, ISO-8859-1, US-ASCII and windows-1252 are";
            case XML_ERROR_INVALID_TOKEN:
                if (const auto byte = foreignByte(); byte)
                    return concat({"the byte ", inHex(*byte), " is not valid here in the file's encoding",
                                   _lines.wide() ? " (UTF-16)" : " (UTF-8 when the file names none)"});
                return "this is not well-formed XML";
            case XML_ERROR_NO_MEMORY:
                throw std::bad_alloc();
            default:
                return concat({"this is not well-formed XML: ", XML_ErrorString(error)});
        }
    }

    std::string wordsForOpen() const {
        const Open& open = _open[_depth - 1];
        return concat({"<", open.name, ">, which was opened in line ", std::to_string(open.line)});
    }

    std::string wordsForEnd() const {
        if (_lines.bytes() == 0) return "the file is empty";
        if (_depth == 0)
            return _anyElement ? "the file ends in the middle of XML" : "the file ends before its first element";
        return concat({"the file ends inside ", wordsForOpen()});
    }

    /// The byte that the parser stumbled over, when it is none of ASCII's printable ones.
    std::optional<unsigned char> foreignByte() {
        int offset = 0;
        int size = 0;
        const char* const context = XML_GetInputContext(_parser.get(), &offset, &size);
        if (context == nullptr || offset >= size) return std::nullopt;
        const auto byte = static_cast<unsigned char>(context[offset]);
        const bool isPlain = (byte >= 0x20 && byte < 0x7F) || byte == '\n' || byte == '\r' || byte == '\t';
        if (isPlain) return std::nullopt;
        return byte;
    }

    void open(const char* name, const char** attributes) {
        const Place place = here();
        const XmlName split = splitName(name);
        _anyElement = true;
        if (_depth == kMaxDepth)
            return stop(concat({"elements are nested more than ", std::to_string(kMaxDepth), " deep"}));
        if (_depth == _open.size()) _open.emplace_back();
        _open[_depth].name.assign(split.local.substr(0, kMaxNameInWords));
        _open[_depth++].line = place.line;
        _attributes.clear();
        for (; *attributes != nullptr; attributes += 2)
            _attributes.push_back({splitName(attributes[0]), attributes[1]});
        _handler.open({split, _attributes, place});
    }

    void close() {
        --_depth;
        _handler.close();
    }

    /// Exceptions must not run through the C library's frames.
    template <class Work>
    static void guarded(void* data, const Work& work) {
        auto& self = *static_cast<Reading*>(data);
        if (self._failed || self._thrown) return;
        try {
            work(self);
        } catch (...) {
            self._thrown = std::current_exception();
            XML_StopParser(self._parser.get(), XML_FALSE);
        }
    }

    static void XMLCALL onOpen(void* data, const XML_Char* name, const XML_Char** attributes) {
        guarded(data, [&](Reading& self) { self.open(name, attributes); });
    }
    static void XMLCALL onClose(void* data, const XML_Char*) {
        guarded(data, [](Reading& self) { self.close(); });
    }
    static void XMLCALL onText(void* data, const XML_Char* text, int size) {
        guarded(data, [&](Reading& self) { self._handler.text({text, static_cast<std::size_t>(size)}); });
    }
    static void XMLCALL onDocumentType(void* data, const XML_Char*, const XML_Char*, const XML_Char*, int) {
        guarded(data, [](Reading& self) {
            self.stop("a document type is not accepted: it could define entities without bound");
        });
    }
    static int XMLCALL onUnknownEncoding(void*, const XML_Char* name, XML_Encoding* encoding) {
        if (!sameIgnoringCase(name, "windows-1252") && !sameIgnoringCase(name, "cp1252")) return XML_STATUS_ERROR;
        for (int byte = 0; byte < 256; ++byte)
            encoding->map[byte] =
                byte >= 0x80 && byte < 0xA0 ? kWindows1252[static_cast<std::size_t>(byte - 0x80)] : byte;
        encoding->data = nullptr;
        encoding->convert = nullptr;
        encoding->release = nullptr;
        return XML_STATUS_OK;
    }

    struct Open {
        std::string name;
        std::uint32_t line = 0;
    };

    ByteSource& _source;
    XmlHandler& _handler;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> _parser;
    XmlLines _lines;
    std::vector<Open> _open;  // the first _depth of them; the others keep their room
    std::size_t _depth = 0;
    std::vector<XmlAttribute> _attributes;
    std::exception_ptr _thrown;
    bool _failed = false;
    bool _anyElement = false;
};

}  // namespace

bool readXml(ByteSource& source, XmlHandler& handler) { return Reading(source, handler).run(); }

}  // namespace qor::interchange::bpmn
