#include "survey/PointFile.h"

#include "util/PathText.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

namespace terravo {
namespace {

constexpr Index kProgressStride = 65536;
constexpr Index kSample = 4096; // points from whose lines the count of all points is estimated

// False when the reading is to end.
bool ReportProgress(const StopToken& stop, const NumberListReader& reader) {
    // The size of a pipe is not known.
    const double done = reader.FileSize() > 0 ? static_cast<double>(reader.BytesRead()) /
                                                    static_cast<double>(reader.FileSize())
                                              : 0.0;
    return stop.GoesOn("read", done);
}

// The first point of a file drops the arrays of the file before.
void ClearArrays(PointSet& points) {
    points.labels = {};
    points.x.Clear();
    points.y.Clear();
    points.z.Clear();
}

} // namespace

void MakeRoomForAll(PointSet& points, std::uint64_t bytesRead, std::uint64_t fileSize) {
    constexpr double kMargin = 1.01;
    constexpr double kMostRoom = 1 << 24; // a file may be far longer than what it holds
    if (points.count == 0) {
        return;
    }
    const double bytesPerPoint = static_cast<double>(bytesRead) / points.count;
    const double estimate = kMargin * static_cast<double>(fileSize) / bytesPerPoint;
    const auto expected = static_cast<Index>(std::min(estimate, kMostRoom));
    if (expected > points.count) {
        for (Array1<double>* values : {&points.x, &points.y, &points.z}) {
            values->Reserve(expected);
        }
        points.labels.Reserve(expected);
    }
}

std::optional<ReadFailure> ReadPoints(const std::string& path, PointSet& points,
                                      const StopToken& stop) {
    NumberListReader reader(path);
    points.sourceName = SplitPath(path).name;
    points.count = 0;
    points.extentX = points.extentY = points.extentZ = Extent{};
    while (!reader.AtEnd()) {
        double x = 0;
        double y = 0;
        double z = 0;
        if (!reader.Read(x) || !reader.Read(y) || !reader.Read(z)) {
            break;
        }
        if (points.count == kMostPoints) {
            return FailureOf(path, "the file holds more points than can be triangulated");
        }
        if (points.count == 0) {
            ClearArrays(points);
        }
        points.Append(x, y, z);
        if (points.count == kSample) {
            MakeRoomForAll(points, reader.BytesRead(), reader.FileSize());
        }
        if (points.count % kProgressStride == 0 && !ReportProgress(stop, reader)) {
            PointSet none;
            none.sourceFolder = std::move(points.sourceFolder);
            points = std::move(none);
            ReadFailure failure = FailureOf(path, "reading was stopped");
            failure.isStop = true;
            return failure;
        }
    }
    if (reader.HasFailed()) {
        return reader.Failure();
    }
    return std::nullopt;
}

std::optional<ReadFailure> RefuseDevice(const std::string& path) {
    std::error_code unknown;
    return std::filesystem::is_other(std::filesystem::status(path, unknown))
               ? std::optional(FailureOf(path, "a pipe or a device cannot be opened here"))
               : std::nullopt;
}

std::optional<ReadFailure> ReadPointFile(const std::string& path, PointSet& points,
                                         const StopToken& stop) {
    if (std::optional<ReadFailure> refused = RefuseDevice(path)) {
        return refused;
    }
    try {
        return ReadPoints(path, points, stop);
    } catch (const std::bad_alloc&) {
        return FailureOf(path, "there is not enough memory");
    }
}

std::string Explain(const ReadFailure& failure, const TextCatalogue& texts) {
    const auto cause = [&] {
        switch (failure.kind) {
        case ReadFailure::Kind::NotANumber:
            return failure.content + " " + texts[Text::FailureNotANumber];
        case ReadFailure::Kind::TooLarge:
            return failure.content + " " + texts[Text::FailureTooLarge];
        case ReadFailure::Kind::EndsEarly:
            return texts[Text::FailureEndsEarly];
        case ReadFailure::Kind::Other:
            break;
        }
        return failure.cause;
    };
    std::string text = failure.file;
    if (failure.line > 0) {
        text += ", " + texts[Text::FailureLine] + " " + std::to_string(failure.line);
    }
    if (failure.field > 0) {
        text += ", " + texts[Text::FailureField] + " " + std::to_string(failure.field);
    }
    return text + ": " + cause() + ".";
}

bool LoadPointFile(const std::string& path, PointSet& points, const RunState& state,
                   const LoadServices& services, const StopToken& stop) {
    const std::optional<ReadFailure> failure = ReadPointFile(path, points, stop);
    if (!failure) {
        return true;
    }
    if (failure->isStop) {
        return false;
    }
    services.log.Write(failure->Sentence());
    services.messages.ShowCritical(
        state.texts[Text::BadPointFile] + "\r\n" + Explain(*failure, state.texts), ".....");
    services.clipboard.Clear();
    services.programEnd.EndAtOnce();
    return false;
}

} // namespace terravo
