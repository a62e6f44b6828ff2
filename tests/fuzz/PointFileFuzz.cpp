// Point files of any bytes, read by the program's reader and by a slow one.
//
// Data: the input is the file. Method: the slow reader splits the whole text in memory and leaves
// the numbers to the standard library. Both must give the same numbers to the bit and fail at the
// same place, however small the buffer of the first is.
#include "fuzz/FuzzInput.h"
#include "support/TemporaryFolder.h"
#include "survey/PointFile.h"
#include "util/NumberListReader.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace terravo {
namespace {

using fuzz::Require;

bool IsLineEnd(char c) {
    return c == '\n' || c == '\r';
}
bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

// The rules of the list format, on a whole text.
class SlowReader {
public:
    explicit SlowReader(std::string text) : text_(std::move(text)) {
        if (text_.starts_with("\xEF\xBB\xBF")) {
            text_.erase(0, 3);
        }
        if (!text_.empty() && !IsLineEnd(text_.back())) {
            text_ += '\n';
        }
    }

    [[nodiscard]] bool AtEnd() const { return place_ == text_.size(); }

    bool Read(double& value) {
        SkipBlanks();
        if (AtEnd()) {
            return false;
        }
        const std::size_t end = text_.find_first_of(", \t\r\n", place_);
        const std::string field = text_.substr(place_, end - place_);
        place_ = end;
        value = 0;
        if (!field.empty() && !Convert(field, value)) {
            return false;
        }
        if (!field.empty()) {
            SkipBlanks();
        }
        TakeEnd();
        return true;
    }

private:
    void SkipBlanks() {
        while (place_ < text_.size() && IsBlank(text_[place_])) {
            ++place_;
        }
    }

    void TakeEnd() {
        if (text_.compare(place_, 2, "\r\n") == 0) {
            place_ += 2;
        } else if (place_ < text_.size() && (text_[place_] == ',' || IsLineEnd(text_[place_]))) {
            ++place_;
        }
    }

    static bool Convert(const std::string& field, double& value) {
        const bool hasSign = field[0] == '-' || field[0] == '+';
        const std::string digits = field.substr(hasSign ? 1 : 0);
        if (digits.empty() || digits.find_first_not_of("0123456789.eE+-") != std::string::npos ||
            digits[0] == '+' || digits[0] == '-' || digits[0] == 'e' || digits[0] == 'E') {
            return false;
        }
        const char* const end = digits.data() + digits.size();
        const auto read = std::from_chars(digits.data(), end, value);
        if (read.ptr != end || read.ec == std::errc::invalid_argument) {
            return false;
        }
        if (read.ec == std::errc::result_out_of_range) {
            value = std::strtod(digits.c_str(), nullptr);
            if (std::isinf(value)) {
                return false;
            }
            value = 0;
        }
        value = field[0] == '-' ? -value : value;
        return true;
    }

    std::string text_;
    std::size_t place_ = 0;
};

bool AreSameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// A small buffer may refuse a long field; nothing after that is compared.
void Compare(NumberListReader& reader, SlowReader slow, bool mayRefuse) {
    for (;;) {
        double value = 0;
        double expected = 0;
        const bool atEnd = reader.AtEnd();
        Require(reader.HasFailed() || atEnd == slow.AtEnd(), "both readers end together");
        const bool done = reader.Read(value);
        if (!done && mayRefuse && reader.Failure().cause.ends_with("too long for a number")) {
            return;
        }
        Require(done == slow.Read(expected),
                "both readers fail together: " +
                    (done ? "no failure" : reader.Failure().Sentence()));
        if (!done) {
            return;
        }
        Require(AreSameBits(value, expected), "both readers give the same number");
    }
}

void ReadLines(NumberListReader& reader, std::size_t size) {
    std::string line;
    std::size_t lines = 0;
    while (reader.ReadLine(line)) {
        Require(line.find_first_of("\r\n") == std::string::npos, "a line holds no line end");
        Require(++lines <= size, "every line takes a byte at least");
    }
}

void CheckPoints(const PointSet& points) {
    for (Index i = 1; i <= points.count; ++i) {
        Require(std::isfinite(points.x[i]) && std::isfinite(points.y[i]) &&
                    std::isfinite(points.z[i]),
                "every coordinate is finite");
    }
    Require(points.count == 0 || points.z.UpperBound() == points.count, "the count is that of z");
}

} // namespace
} // namespace terravo

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace terravo;
    static const test::TemporaryFolder folder;
    const std::string text = fuzz::TextOf(data, size);
    const std::string path = folder.Write("points.dat", text);

    PointSet points;
    const std::optional<ReadFailure> failure = ReadPoints(path, points);
    Require(!failure || !failure->Sentence().empty(), "a failure says what happened");
    CheckPoints(points);

    NumberListReader usual(path, 4096);
    Compare(usual, SlowReader(text), true);
    NumberListReader narrow(path, 16 + size % 61);
    Compare(narrow, SlowReader(text), true);
    NumberListReader lines(path, 16 + size % 7);
    ReadLines(lines, size);
    return 0;
}
