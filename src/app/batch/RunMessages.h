// What a run of terravo-batch says while it works.
//
// Data: messages of drawings, stages of the work. Method: a message is kept for whoever makes a
// sentence of it; progress goes to standard error.
#pragma once

#include "util/Services.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

namespace terravo {

inline std::string OnOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

/// Keeps the first message of a drawing, which becomes the cause of its failure.
class KeptMessages : public MessageService {
public:
    void ShowInformation(const std::string& /*text*/, const std::string& /*title*/) override {}
    void ShowCritical(const std::string& text, const std::string& title) override {
        if (!text_.empty()) {
            return;
        }
        text_ = OnOneLine(title.empty() ? text : title + ": " + text);
    }
    std::string Take() { return std::exchange(text_, {}); }

private:
    std::string text_;
};

/// One line on standard error, rewritten when the percentage changes.
class ProgressLine {
public:
    ~ProgressLine() {
        if (percent_ >= 0) {
            std::fputs("\n", stderr);
        }
    }
    void Show(std::string_view stage, double done) {
        const int percent = static_cast<int>(done * 100);
        if (percent != percent_ || stage != stage_) {
            percent_ = percent;
            stage_ = stage;
            std::fprintf(stderr, "\r%-12s%3d %%", stage_.c_str(), percent);
            std::fflush(stderr);
        }
    }

private:
    int percent_ = -1;
    std::string stage_;
};

} // namespace terravo
