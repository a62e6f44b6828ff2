// The session's commands that measure: each answers one question, or changes beside what and within
// what is measured.
#include "app/project/ProjectSources.h"
#include "app/session/FileDialog.h"
#include "app/session/Session.h"
#include "app/session/WorkGuard.h"
#include "sheet/SheetLayout.h"
#include "util/AppError.h"
#include "util/OutputFile.h"
#include "util/PathText.h"

#include <algorithm>
#include <utility>

namespace terravo {
namespace {

PlanRing RingOf(const SpaceLine& line) {
    PlanRing ring;
    for (const SpacePoint& vertex : line.vertices) {
        ring.push_back(PlanOf(vertex));
    }
    return ring;
}

} // namespace

// Measures a surface as one command, which can be stopped, and tells why nothing came of it.
bool Session::AtMeasuring(const std::function<void()>& measure) {
    if (depth_ > 0) {
        return false;
    }
    bool hasSurface = false;
    {
        const WorkGuard guard(*this);
        hasSurface = measures_.HasSurface(stop_);
        if (hasSurface) {
            measure();
        }
    }
    const bool isStopped = stop_.IsStopRequested();
    if (isStopped) {
        view_->ShowNote(state_.texts[Text::MeasureStopped]);
    } else if (!hasSurface) {
        services_.messages.ShowInformation(state_.texts[Text::MeasureNoSurface], "");
    }
    if (redrawWanted_) {
        DrawContourMap();
    }
    return hasSurface && !isStopped;
}

MeasureAnswer Session::AnswerTo(const MeasureQuestion& question) {
    const MeasureReporter words(state_, measures_);
    switch (question.kind) {
    case MeasureKind::Areas:
        return {words.Areas(measures_.Areas(stop_)), {}};
    case MeasureKind::Hypsometry:
        return {words.Hypsometry(measures_.Hypsometry(
                    LevelValuesOf(SheetLevels(), survey_.ShownPoints().extentZ), stop_)),
                {}};
    case MeasureKind::ToDatum:
        return {words.ToDatum(measures_.VolumeToDatum(question.datum, stop_), question.datum), {}};
    case MeasureKind::ToSecond:
        return {words.ToSecond(measures_.VolumeToSecond(stop_)), {}};
    case MeasureKind::Place:
        return {words.Place(question.place, measures_.At(question.place),
                            measures_.Nearest(question.place)),
                {}};
    case MeasureKind::Cross:
        break;
    }
    CrossSectionFigures figures =
        measures_.CrossSections(question.plan, question.crossDatum, stop_);
    MeasureReport report = words.Cross(figures, question);
    return {std::move(report), std::move(figures)};
}

std::optional<MeasureAnswer> Session::Measure(const MeasureQuestion& question) {
    MeasureAnswer answer;
    const bool isMade = AtMeasuring([&] { answer = AnswerTo(question); });
    return isMade ? std::optional(std::move(answer)) : std::nullopt;
}

std::optional<AreaFigures> Session::MeasureAreas() {
    AreaFigures figures;
    const bool isMade = AtMeasuring([&] { figures = measures_.Areas(stop_); });
    return isMade ? std::optional(figures) : std::nullopt;
}

std::optional<SectionFigures> Session::MakeSection(std::vector<PlanPoint> line) {
    if (!HasLength(line)) {
        services_.messages.ShowInformation(state_.texts[Text::MeasureNoLength], "");
        return std::nullopt;
    }
    sectionLine_ = std::move(line);
    SectionFigures figures;
    const bool isMade = AtMeasuring([&] { figures = measures_.Section(sectionLine_); });
    return isMade ? std::optional(std::move(figures)) : std::nullopt;
}

std::optional<DifferenceSurface> Session::MakeDifference() {
    DifferenceSurface made;
    if (measures_.Second() == nullptr ||
        !AtMeasuring([&] { made = measures_.Difference(stop_); })) {
        return std::nullopt;
    }
    if (made.triangles.count == 0) {
        services_.messages.ShowInformation(state_.texts[Text::MeasureNotCommon], "");
        return std::nullopt;
    }
    return made;
}

// Like the sheet of the survey itself, where there is one.
std::optional<DifferencePicture> Session::MakeDifferenceSheet(const DifferenceSurface& difference,
                                                              const TextMeasure& measure) {
    const SheetPlan plan = DifferencePlan(project_.sheet.value_or(SheetPlan()));
    std::optional<SheetScene> scene;
    AtMeasuring([&] {
        const Survey* second = measures_.Second();
        DifferenceSource source{difference};
        source.firstName = survey_.Points().sourceName;
        if (second != nullptr) {
            source.secondName = second->Points().sourceName;
            source.volumes = measures_.VolumeToSecond(stop_);
        }
        scene = terravo::MakeDifferenceSheet(
            plan, source, {state_.texts, measure, state_.decimalSeparator}, stop_);
    });
    if (!scene) {
        return std::nullopt;
    }
    return DifferencePicture{*std::move(scene), LayOut(plan, difference.points).view};
}

// It is read with the same care as a file that is opened; one that cannot be read leaves the one
// before.
bool Session::CompareWithFile() {
    const FileQuestion question{.mode = "Open",
                                .description = "Files ",
                                .pattern = std::string("*.dat;*.txt;*.csv;*.qrw") +
                                           (services_.projects != nullptr ? ";*.terravo" : ""),
                                .initialFolder = survey_.Points().sourceFolder,
                                .defaultName = {},
                                .title = state_.texts[Text::MeasureSecond],
                                .extension = {}};
    try {
        const std::string path = FileDialog(services_.dialogs, question, state_);
        std::shared_ptr<Survey> second = ReadSecond(path);
        if (second == nullptr || !HasSurface(*second, path)) {
            return false;
        }
        measures_.SetSecond(std::move(second));
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.messages.ShowCritical(error.what(), "");
        }
        return false;
    }
    ++secondRevision_;
    return true;
}

// Makes it, too, since it may take long; what is wrong is told.
bool Session::HasSurface(const Survey& survey, const std::string& path) {
    Index triangles = 0;
    {
        const WorkGuard work(*this);
        triangles = survey.Surface(stop_).triangles.count;
    }
    if (stop_.IsStopRequested()) {
        view_->ShowNote(state_.texts[Text::MeasureStopped]);
        return false;
    }
    if (triangles == 0) {
        services_.messages.ShowCritical(path + ": " + state_.texts[Text::MeasureNoSurface], "");
    }
    return triangles > 0;
}

std::shared_ptr<Survey> Session::ReadSecond(const std::string& path) {
    if (services_.projects != nullptr && IsProjectFile(path)) {
        return ReadSecondProject(path);
    }
    PointSet points;
    const std::optional<UserReading> reading =
        IsGisFile(path) ? ReadGisFile(path, false, points) : ReadTextFile(path, false, points);
    if (!reading) {
        return nullptr;
    }
    if (reading->outcome.failure) {
        TellOfFailure(*reading->outcome.failure);
        return nullptr;
    }
    auto second = std::make_shared<Survey>();
    second->Replace(std::move(points), wish_);
    return second;
}

// With what its user has laid over the points.
std::shared_ptr<Survey> Session::ReadSecondProject(const std::string& path) {
    ProjectReading reading = services_.projects->files.Read(path);
    if (!reading.project) {
        TellOfProject(reading.fault, Text::ProjectNotOpened);
        return nullptr;
    }
    Project& project = *reading.project;
    const std::optional<std::string> file = LookForSource(project.source, AbsolutePath(path));
    if (!file || !MayTake(project.source, *file)) {
        return nullptr;
    }
    PointSet points;
    const ImportOutcome outcome = [&] {
        const WorkGuard work(*this);
        return ReadAsBefore(*file, project.source.howRead, points, stop_);
    }();
    if (outcome.failure) {
        TellOfFailure(*outcome.failure);
        return nullptr;
    }
    DropBeyond(project.surface, points.count);
    points.sourceName = SplitPath(path).name;
    auto second = std::make_shared<Survey>();
    second->Replace(std::move(points), project.triangulation);
    second->SetPlan(project.surface);
    return second;
}

void Session::ForgetSecond() {
    measures_.SetSecond(nullptr);
    ++secondRevision_;
}

bool Session::SetMeasuredPolygon(std::vector<PlanRing> rings) {
    const bool hasRings = !rings.empty();
    if (const std::optional<Text> fault = measures_.SetPolygon(std::move(rings))) {
        services_.messages.ShowCritical(
            state_.texts[Text::MeasurePolygonRefused] + "\r\n" + state_.texts[*fault], "");
        return false;
    }
    ++polygonRevision_;
    if (hasRings) {
        view_->ShowNote(state_.texts[Text::MeasurePolygonTaken]);
    }
    return true;
}

bool Session::OpenMeasuredPolygon() {
    const std::optional<LineReading> reading = AskForLines(LineClosing::InPlan);
    if (!reading) {
        return false;
    }
    TellRemarks(reading->remarks);
    std::vector<PlanRing> rings;
    for (const SurfaceLine& line : reading->lines) {
        rings.push_back(RingOf(line.line));
    }
    return !rings.empty() && SetMeasuredPolygon(std::move(rings));
}

void Session::SaveTable(const std::string& proposedName,
                        const std::function<void(OutputFile&)>& write) {
    const FileQuestion question{.mode = "Save",
                                .description = "CSV ",
                                .pattern = "*.csv",
                                .initialFolder = survey_.Points().sourceFolder,
                                .defaultName = proposedName + ".csv",
                                .title = state_.texts[Text::ChooseFile],
                                .extension = "csv"};
    try {
        const std::string path = FileDialog(services_.dialogs, question, state_);
        OutputFile file(path);
        write(file);
        file.Commit();
        view_->ShowNote(state_.texts[Text::SavedAs] + " " + path);
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.log.Write(error.what());
            services_.messages.ShowCritical(
                state_.texts[Text::MeasureNotSaved] + "\r\n" + error.what(), "");
        }
    }
}

void Session::SaveCsv(const std::string& csv, const std::string& proposedName) {
    SaveTable(proposedName, [&](OutputFile& file) { file.Append(csv); });
}

void Session::SaveSections(const std::vector<TableSection>& sections) {
    SaveTable("section", [&](OutputFile& file) { WriteSectionTable(file, sections); });
}

} // namespace terravo
