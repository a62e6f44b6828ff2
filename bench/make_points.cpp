// Writes a point file to standard output: make_points random|grid|lines COUNT [full]
#include "BenchData.h"

#include <charconv>
#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    using namespace terravo;
    if (argc == 3 || (argc == 4 && std::strcmp(argv[3], "full") == 0)) {
        const auto survey = bench::SurveyFromName(argv[1]);
        const char* const end = argv[2] + std::strlen(argv[2]);
        Index count = 0;
        const auto read = std::from_chars(argv[2], end, count);
        if (survey && read.ec == std::errc{} && read.ptr == end && count > 0) {
            const auto digits = argc == 4 ? bench::Digits::Full : bench::Digits::Millimetres;
            const std::string text = bench::PointText(bench::MakeSurvey(*survey, count), digits);
            const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
            return whole && std::fflush(stdout) == 0 ? 0 : 1;
        }
    }
    std::fputs("usage: make_points random|grid|lines COUNT [full]\n", stderr);
    return 2;
}
