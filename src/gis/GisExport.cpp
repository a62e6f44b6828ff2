#include "gis/GisExport.h"

#include "gis/GisLibrary.h"
#include "util/AppError.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <random>
#include <string_view>
#include <system_error>

namespace terravo {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Throw(const std::string& path, const std::error_code& error) {
    throw AppError(ErrorNumber::kDeviceIo, path, path + ": " + error.message());
}

// Runs the library's work on a name that the user does not know, and says the one that he does.
template <class Work>
void InTheNameOf(const std::string& path, const std::string& written, Work work) {
    try {
        work();
    } catch (const AppError& error) {
        std::string sentence = error.what();
        for (std::size_t at = 0; (at = sentence.find(written, at)) != std::string::npos;) {
            sentence.replace(at, written.size(), path);
            at += path.size();
        }
        throw AppError(error.number(), path, sentence);
    }
}

const GisFunctions& GisFor(const std::string& path) {
    try {
        return LoadGis();
    } catch (const AppError& error) {
        throw AppError(error.number(), path, path + ": " + error.what());
    }
}

// A folder that is there while files are made in it, and its parent, where that had to be made and
// stays empty.
class WorkFolder {
public:
    explicit WorkFolder(const std::string& parent) : parent_(parent) {
        std::error_code error;
        madeParent_ = fs::create_directory(parent_, error);
        if (fs::exists(parent_) && !fs::is_directory(parent_)) {
            error = std::make_error_code(std::errc::not_a_directory);
        }
        if (error) {
            Throw(parent, error);
        }
        std::random_device source;
        bool isMade = false;
        while (!isMade && !error) {
            path_ = parent_ / ("terravo-" + std::to_string(source()) + ".tmp");
            isMade = fs::create_directory(path_, error);
        }
        if (error) {
            Throw(parent, error);
        }
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
        if (madeParent_) {
            fs::remove(parent_, ignored); // fails when something is in it
        }
    }

    [[nodiscard]] const fs::path& Path() const { return path_; }
    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    fs::path parent_;
    fs::path path_;
    bool madeParent_ = false;
};

// Indexes and coordinate systems that stand beside a set of files and would tell untruths of a new
// one.
constexpr std::array<std::string_view, 9> kSideFiles{".prj", ".qpj", ".cpg", ".qix",    ".sbn",
                                                     ".sbx", ".ain", ".aih", ".shp.xml"};

void RemoveSideFiles(const fs::path& folder, const std::vector<std::string>& names,
                     OutputGroup& group) {
    for (const std::string& name : names) {
        const fs::path set = fs::path(name).stem();
        if (set.string() + ".shp" != name) {
            continue;
        }
        for (const std::string_view ending : kSideFiles) {
            const std::string side = set.string() + std::string(ending);
            if (std::find(names.begin(), names.end(), side) == names.end()) {
                group.RemoveOnCommit((folder / side).string());
            }
        }
    }
}

void HandToGroup(const WorkFolder& work, const fs::path& folder, OutputGroup& group) {
    const std::vector<std::string> names = work.Names();
    for (const std::string& name : names) {
        const std::string path = (folder / name).string();
        OutputFile file({path, &group});
        file.Finish();
        if (file.FinishedPath().empty()) {
            Throw(path, std::make_error_code(std::errc::operation_not_supported));
        }
        std::error_code error;
        fs::rename(work.Path() / name, file.FinishedPath(), error);
        if (error) {
            Throw(path, error);
        }
        file.Commit();
    }
    RemoveSideFiles(folder, names, group);
}

} // namespace

VectorParts GisParts() {
    return {VectorPart::Contours,  VectorPart::IndexContours, VectorPart::Bands,
            VectorPart::Triangles, VectorPart::Points,        VectorPart::Numbers,
            VectorPart::Codes,     VectorPart::Heights,       VectorPart::Hull,
            VectorPart::Boundary,  VectorPart::Breaklines};
}

void WriteGeoPackage(OutputFile& out, const VectorContent& content,
                     std::vector<std::string>& remarks) {
    const GisFunctions& gis = GisFor(out.Path());
    out.Finish();
    const std::string path = out.FinishedPath();
    if (path.empty()) {
        throw AppError(ErrorNumber::kDeviceIo, out.Path(),
                       out.Path() + ": a GeoPackage can only be written to a plain file.");
    }
    fs::remove(path);
    InTheNameOf(out.Path(), path, [&] { gis.writeGeoPackage(path, content, remarks); });
}

void WriteGeoPackage(const OutputTarget& target, const VectorContent& content,
                     std::vector<std::string>& remarks) {
    OutputFile out(target);
    WriteGeoPackage(out, content, remarks);
    out.Commit();
}

void WriteShapefiles(const OutputTarget& folder, const VectorContent& content,
                     std::vector<std::string>& remarks) {
    const GisFunctions& gis = GisFor(folder.path);
    OutputGroup alone;
    OutputGroup& group = folder.group != nullptr ? *folder.group : alone;
    const WorkFolder work(folder.path);
    const std::string written = work.Path().string();
    InTheNameOf(folder.path, written,
                [&] { gis.writeShapefiles(written, content, kMostShapefileBytes, remarks); });
    HandToGroup(work, folder.path, group);
    alone.Commit();
}

std::vector<std::string> ShapefilePaths(const std::string& folder) {
    std::vector<std::string> paths;
    for (const VectorPart part : AllVectorParts()) {
        const std::string set = (fs::path(folder) / NameOf(part)).string();
        for (const char* const ending : {".shp", ".shx", ".dbf"}) {
            paths.push_back(set + ending);
        }
        for (const std::string_view ending : kSideFiles) {
            paths.push_back(set + std::string(ending));
        }
    }
    return paths;
}

} // namespace terravo
