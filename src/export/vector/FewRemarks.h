// Sentences on what had to be changed, as many as somebody reads.
//
// Data: the list of remarks of an export. Method: of one kind the first twenty are kept, then their
// number alone.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace terravo {

class FewRemarks {
public:
    /// @param remarks  outlives this.
    /// @param rest     what follows "The same holds for 3": "more texts."
    FewRemarks(std::vector<std::string>& remarks, std::string rest)
        : remarks_(remarks), rest_(std::move(rest)) {}

    void Add(std::string sentence) {
        if (++count_ <= kMost) {
            remarks_.push_back(std::move(sentence));
        }
    }
    /// Tells of those that were left out.
    void Finish() {
        if (count_ > kMost) {
            remarks_.push_back("The same holds for " + std::to_string(count_ - kMost) + " " +
                               rest_);
        }
    }

private:
    static constexpr std::size_t kMost = 20;
    std::vector<std::string>& remarks_;
    std::string rest_;
    std::size_t count_ = 0;
};

} // namespace terravo
