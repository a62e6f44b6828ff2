// Runs a fuzz target without a fuzzer: every file of its corpus, and a burst of mutations of them.
//
// Data: the folder of the corpus and the number of mutations. Method: the mutations come from a
// seeded generator, so that a failure comes back. To get hold of its input, name a file as well:
// each input is written to it before its run.
#include "fuzz/FuzzInput.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Input = std::vector<std::uint8_t>;

Input ReadInput(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// In the order of their names, which no file system promises.
std::vector<Input> ReadCorpus(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    std::vector<Input> inputs;
    std::transform(paths.begin(), paths.end(), std::back_inserter(inputs), ReadInput);
    return inputs;
}

class Runner {
public:
    explicit Runner(std::string keptAs) : keptAs_(std::move(keptAs)) {}

    void Run(const Input& input) const {
        if (!keptAs_.empty()) {
            std::ofstream(keptAs_, std::ios::binary)
                .write(reinterpret_cast<const char*>(input.data()),
                       static_cast<std::streamsize>(input.size()));
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }

private:
    std::string keptAs_;
};

// The generator alone is the same everywhere; the standard distributions are not.
class Mutator {
public:
    Input Mutate(const std::vector<Input>& corpus) {
        Input input = Pick(corpus);
        for (std::size_t changes = 1 + Below(4); changes > 0; --changes) {
            Change(input, Pick(corpus));
        }
        return input;
    }

private:
    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }
    const Input& Pick(const std::vector<Input>& corpus) { return corpus[Below(corpus.size())]; }
    Input::difference_type Place(const Input& input) {
        return static_cast<Input::difference_type>(Below(input.size() + 1));
    }

    void Change(Input& input, const Input& other) {
        const auto place = Place(input);
        switch (Below(input.empty() ? 2 : 5)) {
        case 0:
            input.insert(input.begin() + place, static_cast<std::uint8_t>(Below(256)));
            break;
        case 1: {
            const auto from = Place(other);
            const auto to = std::min(from + Place(other), std::ssize(other));
            input.insert(input.begin() + place, other.begin() + from, other.begin() + to);
            break;
        }
        case 2:
            input[Below(input.size())] = static_cast<std::uint8_t>(Below(256));
            break;
        case 3:
            input[Below(input.size())] ^= static_cast<std::uint8_t>(1U << Below(8));
            break;
        default:
            input.erase(input.begin() + place,
                        input.begin() + std::min(place + Place(input), std::ssize(input)));
        }
    }

    std::mt19937 random_{20240229};
};

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 3) {
        std::fprintf(stderr, "usage: %s CORPUS-FOLDER MUTATIONS [KEEP-INPUT-AS]\n", arguments[0]);
        return 2;
    }
    const std::vector<Input> corpus = ReadCorpus(arguments[1]);
    if (corpus.empty()) {
        std::fprintf(stderr, "%s: no files\n", arguments[1]);
        return 2;
    }
    const Runner runner(argumentCount > 3 ? arguments[3] : "");
    for (const Input& input : corpus) {
        runner.Run(input);
    }
    Mutator mutator;
    for (int i = std::atoi(arguments[2]); i > 0; --i) {
        runner.Run(mutator.Mutate(corpus));
    }
    return 0;
}
