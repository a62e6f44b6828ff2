#include "export/readback/XmlReader.h"

#include "util/AppError.h"
#include "util/FileHandle.h"

#include <expat.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <new>

namespace terravo {
namespace {

constexpr int kBlock = 1 << 16; // bytes, which stay in the cache

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserHandle = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

// What the library's calls are given.
struct Events {
    XML_Parser parser;
    XmlSink& sink;
    std::string text;
    bool ended = false; // by the sink

    // The library may have one more event to tell after it was stopped.
    template <class Tell>
    void Pass(Tell tell) {
        if (!ended && !tell()) {
            ended = true;
            XML_StopParser(parser, XML_FALSE);
        }
        text.clear();
    }
};

void OnStart(void* user, const char* name, const char** attributes) {
    auto& events = *static_cast<Events*>(user);
    events.Pass([&] { return events.sink.Start(name, XmlAttributes(attributes), events.text); });
}

void OnEnd(void* user, const char* name) {
    auto& events = *static_cast<Events*>(user);
    events.Pass([&] { return events.sink.End(name, events.text); });
}

void OnText(void* user, const char* text, int length) {
    static_cast<Events*>(user)->text.append(text, static_cast<std::size_t>(length));
}

void OnDocumentType(void* user, const char* /*name*/, const char* /*system*/,
                    const char* /*publicId*/, int /*hasInternal*/) {
    XML_StopParser(static_cast<Events*>(user)->parser, XML_FALSE);
}

[[noreturn]] void Throw(const std::string& path, int cause) {
    throw AppError(ErrorNumber::kDeviceIo, path, path + ": " + std::strerror(cause));
}

// Bytes read into the parser's buffer; 0 at the end of the file.
std::size_t FillBuffer(XML_Parser parser, std::FILE* file, const std::string& path) {
    void* buffer = XML_GetBuffer(parser, kBlock);
    if (buffer == nullptr) {
        throw std::bad_alloc();
    }
    errno = 0;
    const std::size_t got = std::fread(buffer, 1, kBlock, file);
    if (std::ferror(file) != 0) {
        Throw(path, errno);
    }
    return got;
}

} // namespace

std::optional<std::string> ReadXml(const std::string& path, XmlSink& sink) {
    errno = 0;
    const FileHandle file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        Throw(path, errno);
    }
    const ParserHandle parser(XML_ParserCreate("UTF-8"));
    if (!parser) {
        throw std::bad_alloc();
    }
    Events events{parser.get(), sink, {}};
    XML_SetUserData(parser.get(), &events);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser.get(), OnText);
    XML_SetStartDoctypeDeclHandler(parser.get(), OnDocumentType);
    for (;;) {
        const std::size_t got = FillBuffer(parser.get(), file.get(), path);
        const bool isLast = got == 0;
        if (XML_ParseBuffer(parser.get(), static_cast<int>(got), isLast) != XML_STATUS_OK) {
            break;
        }
        if (isLast) {
            return std::nullopt;
        }
    }
    if (events.ended) {
        return std::nullopt;
    }
    return "the file is no valid XML: line " +
           std::to_string(XML_GetCurrentLineNumber(parser.get())) + ", " +
           XML_ErrorString(XML_GetErrorCode(parser.get()));
}

} // namespace terravo
