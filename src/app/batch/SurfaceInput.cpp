#include "app/batch/SurfaceInput.h"

#include "app/batch/ExitCode.h"
#include "app/batch/RunFailure.h"
#include "gis/GisLines.h"
#include "survey/check/SurfaceFindings.h"
#include "survey/import/Records.h"
#include "survey/import/TextSource.h"
#include "survey/surface/CodeLines.h"
#include "survey/surface/VerifySurface.h"
#include "util/NumberText.h"
#include "util/PathText.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace terravo {
namespace {

[[noreturn]] void RefuseList(const std::string& sentence) {
    throw RunFailure(ExitCode::kPointFile, sentence);
}

void AddName(std::string_view text, TextEncoding encoding, std::vector<std::string>& names) {
    if (std::string name = LabelText(Trimmed(text), encoding); !name.empty()) {
        names.push_back(std::move(name));
    }
}

std::vector<std::string> NamesInFile(const std::string& path) {
    TextSource source(path);
    std::vector<std::string> names;
    if (!source.Failure()) {
        const TextEncoding encoding = source.GuessEncoding();
        source.Begin(encoding);
        for (std::string_view line; source.NextLine(line);) {
            AddName(line, encoding, names);
        }
    }
    if (source.Failure()) {
        RefuseList(source.Failure()->Sentence());
    }
    if (names.empty()) {
        RefuseList(path + ": there are no names in it.");
    }
    return names;
}

std::vector<std::string> NamesOf(const std::string& exclude) {
    if (FileExists(exclude)) {
        return NamesInFile(exclude);
    }
    std::vector<std::string> names;
    std::istringstream list(exclude);
    for (std::string name; std::getline(list, name, ',');) {
        AddName(name, TextEncoding::Utf8, names);
    }
    return names;
}

// As much of a name as fits into a sentence.
std::string Quoted(std::string name) {
    constexpr std::size_t kMost = 60;
    const bool isLong = name.size() > kMost;
    name.resize(std::min(name.size(), kMost));
    std::replace_if(
        name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    return "\"" + name + (isLong ? "...\"" : "\"");
}

// A name that several points have stands for all of them.
std::vector<Index> PointsCalled(const std::vector<std::string>& names, const PointSet& points,
                                const std::string& pointFile) {
    std::unordered_map<std::string, std::vector<Index>> called;
    for (const std::string& name : names) {
        called.try_emplace(name);
    }
    for (Index i = 1; i <= points.count; ++i) {
        const auto wanted = called.find(points.labels.NameOrNumber(i));
        if (wanted != called.end()) {
            wanted->second.push_back(i);
        }
    }
    std::vector<Index> found;
    for (const std::string& name : names) {
        const std::vector<Index>& some = called[name];
        if (some.empty()) {
            RefuseList(pointFile + ": there is no point " + Quoted(name) + " to leave out.");
        }
        found.insert(found.end(), some.begin(), some.end());
    }
    return found;
}

void Exclude(const std::string& exclude, const std::string& pointFile, Survey& survey) {
    constexpr Index kFewest = 3;
    if (exclude.empty()) {
        return;
    }
    survey.SetExcluded(PointsCalled(NamesOf(exclude), survey.AllPoints(), pointFile), true);
    if (survey.Points().count < kFewest) {
        throw RunFailure(ExitCode::kNoTriangulation,
                         pointFile + ": with these points left out fewer than three remain.");
    }
}

void Share(std::vector<SurfaceLine> lines, std::vector<SharedLine>& shared) {
    for (SurfaceLine& line : lines) {
        shared.push_back(std::make_shared<const SurfaceLine>(std::move(line)));
    }
}

void AddFiles(const std::vector<std::string>& files, LineClosing closing,
              std::vector<SharedLine>& shared, std::vector<std::string>& remarks,
              const StopToken& stop) {
    for (const std::string& file : files) {
        LineReading reading = ReadSurfaceLines(file, closing, {}, stop);
        if (!reading.failure.empty()) {
            throw RunFailure(ExitCode::kPointFile, reading.failure);
        }
        Share(std::move(reading.lines), shared);
        remarks.insert(remarks.end(), reading.remarks.begin(), reading.remarks.end());
    }
}

void AddCodes(const std::vector<std::string>& codes, const std::string& pointFile,
              const PointSet& points, SurfacePlan& plan, std::vector<std::string>& remarks) {
    if (codes.empty()) {
        return;
    }
    CodeLineReading reading = LinesFromCodes(points, codes);
    if (reading.lines.empty()) {
        throw RunFailure(ExitCode::kPointFile,
                         pointFile + ": no points with these codes make a line.");
    }
    Share(std::move(reading.lines), plan.breaklines);
    remarks.insert(remarks.end(), reading.remarks.begin(), reading.remarks.end());
}

LongestSideProposal ProposalFor(const Survey& survey) {
    return ProposeLongestSide(PlacesOf(survey.Points()), survey.Triangulation().triangles);
}

std::string Number(double value) {
    return NumberText::FormatScreen(value, "#0.0##", '.');
}

std::string SentenceOf(const LongestSideProposal& proposal) {
    std::string text = "The longest side is " + Number(proposal.length) + ", three times " +
                       Number(proposal.step) +
                       ", the longest step that one needs to walk from any point to any other, "
                       "isolated leaps not counted.";
    if (!proposal.strays.empty()) {
        text += " Points behind an isolated leap: " + std::to_string(proposal.strays.size()) + ".";
    }
    if (proposal.sites > 1) {
        text += " Separate sites: " + std::to_string(proposal.sites) + ".";
    }
    return text;
}

} // namespace

void ApplySurfaceCall(const SurfaceCall& call, const std::string& pointFile, Survey& survey,
                      std::vector<std::string>& remarks, const StopToken& stop) {
    Exclude(call.exclude, pointFile, survey);
    SurfacePlan plan = survey.Plan();
    plan.crossings = call.crossings.value_or(plan.crossings);
    AddFiles(call.breaklineFiles, LineClosing::AsTheyAre, plan.breaklines, remarks, stop);
    AddCodes(call.codes, pointFile, survey.Points(), plan, remarks);
    AddFiles(call.boundaryFiles, LineClosing::Always, plan.boundary, remarks, stop);
    AddFiles(call.holeFiles, LineClosing::Always, plan.holes, remarks, stop);
    if (call.longestSide) {
        plan.longestSide = call.longestSide;
    }
    if (call.proposesLongestSide) {
        const LongestSideProposal proposal = ProposalFor(survey);
        plan.longestSide = proposal.length;
        remarks.push_back(SentenceOf(proposal));
    }
    survey.SetPlan(std::move(plan));
}

void TellOfLostLines(const Survey& survey, std::vector<std::string>& remarks) {
    constexpr std::size_t kMost = 20;
    const ShownSurface shown = survey.Surface();
    if (shown.shaped == nullptr) {
        return;
    }
    const PointSet& points = survey.Points();
    const std::vector<Finding> lost = LostLines(*shown.shaped, survey.Plan(), points);
    for (std::size_t i = 0; i < std::min(lost.size(), kMost); ++i) {
        remarks.push_back(SentenceOf(lost[i], points.labels, TextCatalogue()));
    }
    if (lost.size() > kMost) {
        remarks.push_back(std::to_string(lost.size() - kMost) +
                          " more; --check text tells of all.");
    }
}

std::optional<SurfaceSummary> SummariseSurface(const SurfaceCall& call,
                                               const std::string& pointFile, const Survey& survey) {
    SurfaceSummary summary;
    if (call.verify) {
        if (const std::optional<std::string> fault = VerifySurface(survey)) {
            throw RunFailure(ExitCode::kNumeric, pointFile + ": the surface is wrong: " + *fault);
        }
        summary.verified = true;
    }
    const ShownSurface shown = survey.Surface();
    if (shown.triangles.count == 0 && shown.shaped != nullptr) {
        throw RunFailure(ExitCode::kNoTriangulation,
                         pointFile + ": no triangle is visible: boundary, holes or longest side "
                                     "hide all.");
    }
    if (shown.shaped != nullptr) {
        summary.figures = FiguresOf(*shown.shaped);
        summary.longestSide = survey.Plan().longestSide;
    } else if (call.verify) {
        summary.figures.visibleTriangles = shown.triangles.count;
        summary.figures.planArea = PlanArea(shown.points, shown.triangles);
        summary.figures.rings = shown.triangles.count > 0 ? 1 : 0;
    } else {
        return std::nullopt;
    }
    return summary;
}

} // namespace terravo
