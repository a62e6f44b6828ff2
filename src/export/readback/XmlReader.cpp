#include "export/readback/XmlReader.h"

#include "export/readback/LineBlocks.h"

#include <expat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>

namespace terravo {
namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

// Bytes that the library is given at a time: its sizes are of type int.
constexpr std::size_t kMostAtOnce = std::size_t{1} << 20;

std::string Invalid(std::string_view what) {
    std::string sentence = "the file is no valid XML: ";
    sentence += what;
    return sentence;
}

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserHandle = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

class Parser {
public:
    explicit Parser(XmlSink& sink) : sink_(sink), parser_(XML_ParserCreate("UTF-8")) {
        if (!parser_) {
            throw std::bad_alloc();
        }
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(parser_.get(), OnStart, OnEnd);
        XML_SetCharacterDataHandler(parser_.get(), OnText);
        XML_SetStartDoctypeDeclHandler(parser_.get(), OnDocumentType);
    }

    /// False when the text is not valid, or the sink has ended the reading.
    bool Feed(std::string_view text, bool isLast = false) {
        while (text.size() > kMostAtOnce) {
            if (!FeedSome(text.substr(0, kMostAtOnce), false)) {
                return false;
            }
            text.remove_prefix(kMostAtOnce);
        }
        return FeedSome(text, isLast);
    }

    /// How many elements have started.
    [[nodiscard]] std::int64_t Starts() const { return starts_; }

    /// What was not valid, where anything was.
    [[nodiscard]] std::optional<std::string> Fault() const {
        const XML_Error error = XML_GetErrorCode(parser_.get());
        if (ended_ || error == XML_ERROR_NONE) {
            return std::nullopt;
        }
        return Invalid(XML_ErrorString(error));
    }

private:
    static Parser& Of(void* user) { return *static_cast<Parser*>(user); }
    static void OnStart(void* user, const char* name, const char** attributes) {
        Parser& self = Of(user);
        ++self.starts_;
        self.Pass([&] { return self.sink_.Start(name, XmlAttributes(attributes), self.text_); });
    }
    static void OnEnd(void* user, const char* name) {
        Parser& self = Of(user);
        self.Pass([&] { return self.sink_.End(name, self.text_); });
    }
    static void OnText(void* user, const char* text, int length) {
        Of(user).text_.append(text, static_cast<std::size_t>(length));
    }

    static void OnDocumentType(void* user, const char* /*name*/, const char* /*system*/,
                               const char* /*publicId*/, int /*hasInternal*/) {
        XML_StopParser(Of(user).parser_.get(), XML_FALSE);
    }

    // The library may have one more event to tell after it was stopped.
    template <class Tell>
    void Pass(Tell tell) {
        if (!ended_ && !tell()) {
            ended_ = true;
            XML_StopParser(parser_.get(), XML_FALSE);
        }
        text_.clear();
    }

    bool FeedSome(std::string_view text, bool isLast) {
        return XML_Parse(parser_.get(), text.data(), static_cast<int>(text.size()), isLast) ==
               XML_STATUS_OK;
    }

    XmlSink& sink_;
    ParserHandle parser_;
    std::string text_;
    std::int64_t starts_ = 0;
    bool ended_ = false; // by the sink
};

class FileReader {
public:
    explicit FileReader(XmlSink& sink) : sink_(sink), parser_(sink) {}

    std::optional<std::string> Read(LineBlocks& blocks) {
        std::string_view block = blocks.Next();
        if (!block.starts_with(kDeclaration)) {
            return Invalid("another first line");
        }
        bool goesOn = true;
        while (goesOn && !block.empty()) {
            goesOn = ReadBlock(block);
            block = blocks.Next();
        }
        if (goesOn) {
            parser_.Feed({}, true);
        }
        return parser_.Fault();
    }

private:
    bool ReadBlock(std::string_view block) {
        while (!block.empty()) {
            const std::size_t end = std::min(block.find('\n'), block.size() - 1) + 1;
            if (!ReadLine(block.substr(0, end))) {
                return false;
            }
            block.remove_prefix(end);
        }
        return true;
    }

    bool ReadLine(std::string_view line) {
        if (isOffered_ && sink_.TakeLine(line)) {
            return true;
        }
        const std::int64_t starts = parser_.Starts();
        const bool goesOn = parser_.Feed(line);
        // One bracket, at the front, that has started an element: the line is nothing but its tag.
        isOffered_ = parser_.Starts() == starts + 1 && line.front() == '<' &&
                     line.find('<', 1) == std::string_view::npos && line.ends_with(">\n");
        return goesOn;
    }

    XmlSink& sink_;
    Parser parser_;
    bool isOffered_ = false; // the next line, to the sink
};

} // namespace

std::optional<std::string> ReadXml(const std::string& path, XmlSink& sink) {
    LineBlocks blocks(path);
    return FileReader(sink).Read(blocks);
}

} // namespace terravo
