// The vector files of a run, and what is told of them.
#pragma once

#include "app/batch/ExchangeOptions.h"
#include "app/session/SurveyContours.h"
#include "util/OutputFile.h"

#include <functional>
#include <string>
#include <vector>

namespace terravo {

/// What a vector file holds.
struct ExchangeFigures {
    std::string file;
    std::string format;
    bool verified = false;
    std::size_t contours = 0; // counts are 0 for what the file does not hold
    std::size_t labels = 0;
    std::size_t polygons = 0; // of bands
    std::size_t points = 0;
    std::size_t triangles = 0;
    std::vector<std::string> remarks; // sentences
    double writeMilliseconds = 0;     // with reading back
};

/// Writes one file; it appears with its group.
/// @param content  whose parts are those of the file.
/// Throws AppError.
ExchangeFigures WriteExchangeFile(const ExchangeFile& file, const VectorContent& content,
                                  const VectorOptions& options, bool verify, OutputGroup& group);

/// Writes the files of a call; they appear with their group.
/// @param contours    prepared by the rule, and by the smoothing of the call where it has one.
/// @param betweenTwo  asked before each file; may throw to end the run.
/// Throws AppError.
std::vector<ExchangeFigures> DeliverExchange(const ExchangeCall& call, const LevelRule& rule,
                                             const SurveyContours& contours, OutputGroup& group,
                                             const std::function<void()>& betweenTwo);

/// Those that a file holds, in words: "43 contours, 396 points", or "nothing".
std::string CountsOf(const ExchangeFigures& figures);

} // namespace terravo
