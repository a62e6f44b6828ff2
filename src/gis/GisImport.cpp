#include "gis/GisImport.h"

#include "gis/GisLibrary.h"
#include "survey/import/FileKind.h"
#include "util/AppError.h"
#include "util/FileHandle.h"
#include "util/PathText.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

namespace terravo {
namespace {

namespace fs = std::filesystem;

std::string EndingOf(const fs::path& path) {
    std::string ending = path.extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return ending;
}

bool HasShapefiles(const std::string& folder) {
    std::error_code unknown;
    fs::directory_iterator entries(folder, unknown);
    return !unknown && std::any_of(begin(entries), end(entries), [](const auto& entry) {
        return EndingOf(entry.path()) == ".shp";
    });
}

// Formats without a mark at their beginning.
bool IsGisEnding(const std::string& ending) {
    static constexpr std::array<std::string_view, 4> kEndings{".hgt", ".bil", ".flt", ".kmz"};
    return std::find(kEndings.begin(), kEndings.end(), ending) != kEndings.end();
}

bool HasGisHead(const std::string& path) {
    const FileHandle file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        return false;
    }
    std::array<char, 1 << 14> head{};
    const std::size_t size = std::fread(head.data(), 1, head.size(), file.get());
    return IsGisFormat({head.data(), size});
}

// The library's sentence without the path in front of it and the full stop.
ReadFailure FailureFrom(const std::string& path, std::string sentence) {
    const std::string head = AbsolutePath(path) + ": ";
    if (sentence.starts_with(head)) {
        sentence.erase(0, head.size());
    }
    if (sentence.ends_with('.')) {
        sentence.pop_back();
    }
    return FailureOf(path, sentence);
}

ReadFailure StopOf(const std::string& path) {
    ReadFailure failure = FailureOf(path, "reading was stopped");
    failure.isStop = true;
    return failure;
}

template <class Work>
std::optional<ReadFailure> FailureIn(const std::string& path, Work work) {
    try {
        work();
        return std::nullopt;
    } catch (const AppError& error) {
        return FailureFrom(path, error.what());
    } catch (const std::bad_alloc&) {
        return FailureOf(path, "there is not enough memory");
    }
}

void HandOut(const std::string& path, GisContent content, PointSet& points, GisOutcome& outcome) {
    outcome.lines = std::move(content.lines);
    outcome.rings = std::move(content.rings);
    outcome.repeatedVertices = content.repeatedVertices;
    outcome.import.report.records = content.points.count + content.withoutHeight;
    outcome.import.report.voidHeights = content.withoutHeight;
    content.points.sourceName = SplitPath(path).name;
    content.points.sourceFolder = std::move(points.sourceFolder);
    points = std::move(content.points);
}

} // namespace

bool IsGisFile(const std::string& path) {
    std::error_code unknown;
    const fs::file_status status = fs::status(path, unknown);
    if (fs::is_directory(status)) {
        return HasShapefiles(path);
    }
    return fs::is_regular_file(status) && (IsGisEnding(EndingOf(path)) || HasGisHead(path));
}

GisListing ListGisFile(const std::string& path, const StopToken& stop) {
    GisListing listing;
    listing.failure =
        FailureIn(path, [&] { listing.source = LoadGis().list(AbsolutePath(path), stop); });
    if (!listing.failure && listing.source.isStopped) {
        listing.failure = StopOf(path);
    }
    return listing;
}

GisOutcome ImportGis(const std::string& path, const GisSource& source, const GisPlan& plan,
                     PointSet& points, const StopToken& stop) {
    GisOutcome outcome;
    ImportOutcome& import = outcome.import;
    import.inspection.certain = true;
    const GisVerdict verdict = Judge(source, plan);
    if (verdict.fault != GisFault::None) {
        import.failure = FailureOf(path, SentenceOf(verdict, source, plan));
        import.needsChoice = true;
        return outcome;
    }
    import.inspection.readAs = NameOf(source, plan);
    import.failure = FailureIn(path, [&] {
        GisContent content = LoadGis().read(AbsolutePath(path), WishOf(source, plan), stop);
    if (content.isStopped) {
        import.failure = StopOf(path);
    } else {
        HandOut(path, std::move(content), points, outcome);
    }
});
return outcome;
} // namespace terravo

GisOutcome ImportGis(const std::string& path, const GisPlan& plan, PointSet& points,
                     const StopToken& stop) {
    const GisListing listing = ListGisFile(path, stop);
    if (!listing.failure) {
        return ImportGis(path, listing.source, plan, points, stop);
    }
    GisOutcome outcome;
    outcome.import.failure = listing.failure;
    return outcome;
}

} // namespace terravo
