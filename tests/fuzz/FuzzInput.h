// What the fuzz targets share: values out of the bytes of an input, and the word on what must hold.
//
// Data: the bytes of one input, taken from the front; when they run out, zeros follow. Method: a
// rule that does not hold ends the process, which the fuzzer and the corpus runner both report.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

/// One run of a target.
/// @return 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace terravo::fuzz {

/// Ends the process with a message when a rule does not hold.
inline void Require(bool holds, const std::string& rule) {
    if (!holds) {
        std::fprintf(stderr, "Broken rule: %s\n", rule.c_str());
        std::abort();
    }
}

/// The input as text.
inline std::string TextOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// The parts of a text between separators; at least one.
inline std::vector<std::string> SplitAt(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

class InputBytes {
public:
    InputBytes(const std::uint8_t* data, std::size_t size) : next_(data), left_(size) {}

    [[nodiscard]] bool IsEmpty() const { return left_ == 0; }

    int Byte() {
        if (left_ == 0) {
            return 0;
        }
        --left_;
        return *next_++;
    }
    int SignedByte() { return static_cast<std::int8_t>(Byte()); }
    int Short() {
        const int high = SignedByte();
        return high * 256 + Byte();
    }
    std::uint64_t Word() {
        std::uint64_t word = 0;
        for (int i = 0; i < 8; ++i) {
            word = word << 8 | static_cast<std::uint64_t>(Byte());
        }
        return word;
    }
    /// Any double, not-a-number and the infinities included.
    double Double() { return std::bit_cast<double>(Word()); }

private:
    const std::uint8_t* next_;
    std::size_t left_;
};

} // namespace terravo::fuzz
