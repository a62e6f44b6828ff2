// The session's commands that read point files and write points.
#include "app/project/ProjectSources.h"
#include "app/session/FileDialog.h"
#include "app/session/Session.h"
#include "app/session/WorkGuard.h"
#include "gis/GisMemory.h"
#include "survey/PointFile.h"
#include "survey/PointWriter.h"
#include "survey/import/ImportMemory.h"
#include "survey/import/PointImport.h"
#include "util/AppError.h"
#include "util/PathText.h"

namespace terravo {
namespace {

constexpr const char* kSection = "Lettura";
constexpr const char* kFreeListKey = "ListaLibera";

} // namespace

void Session::LoadNamedFile(const std::string& path, bool isRecent) {
    state_.lastDrawError.clear();
    const PathParts parts = SplitPath(path);
    survey_.RememberFolder(parts.folder);
    if (parts.exists) {
        if (!AskToSave()) {
            return;
        }
        LoadAndShow(path, isRecent);
    } else {
        services_.log.Write(path + ": there is no such file.");
        services_.messages.ShowCritical(state_.texts[Text::FileMissing] + "\r\n" + path, "");
    }
}

void Session::OpenPointFile() {
    state_.lastDrawError.clear();
    const FileQuestion question{.mode = "Open",
                                .description = "Files ",
                                .pattern = std::string("*.dat;*.txt;*.qrw") +
                                           (services_.projects != nullptr ? ";*.terravo" : ""),
                                .initialFolder = survey_.Points().sourceFolder,
                                .defaultName = {},
                                .title = state_.texts[Text::ChooseFile],
                                .extension = {}};
    try {
        LoadNamedFile(FileDialog(services_.dialogs, question, state_));
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.messages.ShowCritical("Error " + std::to_string(error.number()) + "\r\n" +
                                                error.what(),
                                            " Files/" + error.source());
            ShowResultViews(false);
        }
    }
}

void Session::OpenRecentFile(std::size_t position) {
    LoadNamedFile(recent_.Paths().at(position - 1), true);
}

void Session::LoadReadingHabit() {
    readsFreeLists_ = services_.settings.Get(kSection, kFreeListKey) == "1";
}

void Session::SetReadsFreeLists(bool on) {
    readsFreeLists_ = on;
    services_.settings.Set(kSection, kFreeListKey, on ? "1" : "0");
}

bool Session::ReadUserFile(const std::string& path, bool isRecent) {
    if (services_.projects != nullptr && IsProjectFile(path)) {
        return OpenProject(path);
    }
    PointSet points;
    points.sourceFolder = survey_.Points().sourceFolder;
    const std::optional<UserReading> reading = IsGisFile(path)
                                                   ? ReadGisFile(path, isRecent, points)
                                                   : ReadTextFile(path, isRecent, points);
    return reading && TakeReading(path, reading->outcome, reading->how, std::move(points));
}

// A file that is not certain is asked about, again when records beyond its head do not fit; one
// that cannot be read, is not chosen for or is stopped leaves the points and all that is made of
// them.
std::optional<Session::UserReading> Session::ReadTextFile(const std::string& path, bool isRecent,
                                                          PointSet& points) {
    ImportWish wish;
    wish.freeList = readsFreeLists_;
    ImportOutcome outcome = [&] {
        const WorkGuard work(*this);
        if (const std::optional<ReadFailure> refused = RefuseDevice(path)) {
            ImportOutcome none;
            none.failure = refused;
            return none;
        }
        return ImportPoints(path, wish, BadRecords::Refuse, points, stop_);
    }();
    Inspection inspection = outcome.inspection;
    std::optional<ImportPlan> chosen;
    BadRecords bad = BadRecords::Refuse;
    while (outcome.failure && outcome.needsChoice) {
        std::optional<ImportChoice> choice;
        if (isRecent && !chosen) {
            choice = ChoiceOfBefore(path, inspection);
        }
        if (!choice) {
            choice = AskAbout(path, inspection, *outcome.failure, chosen);
        }
        if (!choice) {
            return std::nullopt;
        }
        const WorkGuard work(*this);
        outcome = ImportByPlan(path, choice->plan, choice->bad, points, stop_);
        chosen = choice->plan;
        bad = choice->bad;
        inspection.doubt.clear(); // the next one is what did not fit
        inspection.doubtKind = DoubtKind::None;
    }
    const HowRead how = HowItWasRead(outcome, bad);
    return UserReading{std::move(outcome), how};
}

// What came of a reading: new points, or a message and everything as it was.
bool Session::TakeReading(const std::string& path, const ImportOutcome& outcome, const HowRead& how,
                          PointSet points) {
    if (outcome.failure) {
        TellOfFailure(*outcome.failure);
        return false;
    }
    readAs_ = TextOfReading(outcome);
    TakePoints(std::move(points), path);
    review_.Begin(outcome.report);
    BeginProject(path, how);
    return true;
}

void Session::TellOfFailure(const ReadFailure& failure) {
    if (failure.isStop) {
        view_->ShowNote(state_.texts[Text::ReadingStopped]);
        return;
    }
    services_.log.Write(failure.Sentence());
    services_.messages.ShowCritical(
        state_.texts[Text::FileNotRead] + "\r\n" + Explain(failure, state_.texts), "");
}

// What is read of such a file is always chosen; of a recent one as it was then, while that can be.
std::optional<Session::UserReading> Session::ReadGisFile(const std::string& path, bool isRecent,
                                                         PointSet& points) {
    const GisListing listing = [&] {
        const WorkGuard work(*this);
        return ListGisFile(path, stop_);
    }();
    if (listing.failure) {
        TellOfFailure(*listing.failure);
        return std::nullopt;
    }
    const GisSource& source = listing.source;
    const GisPlan proposed = ProposedPlan(source);
    const GisVerdict verdict = Judge(source, proposed);
    if (verdict.fault == GisFault::Empty || verdict.fault == GisFault::Picture) {
        TellOfFailure(FailureOf(path, SentenceOf(verdict, source, proposed)));
        return std::nullopt;
    }
    const std::optional<GisPlan> plan = PlanFor(path, source, isRecent);
    if (!plan) {
        return std::nullopt;
    }
    ImportOutcome outcome = [&] {
        const WorkGuard work(*this);
        return ImportGis(path, source, *plan, points, stop_).import;
    }();
    HowRead how;
    how.reader = SourceReader::Gis;
    how.gis = *plan;
    return UserReading{std::move(outcome), how};
}

std::optional<GisPlan> Session::PlanFor(const std::string& path, const GisSource& source,
                                        bool isRecent) {
    GisMemory memory(services_.settings);
    std::optional<GisPlan> kept = memory.Recall(path);
    if (kept && Judge(source, *kept).fault != GisFault::None) {
        kept.reset();
    }
    if (kept && isRecent) {
        return kept;
    }
    std::optional<GisPlan> chosen =
        services_.gis.Ask(path, source, kept ? *kept : ProposedPlan(source));
    if (chosen) {
        memory.Remember(path, *chosen);
    }
    return chosen;
}

// What does not fit is not left out unasked, whatever was chosen then.
std::optional<ImportChoice> Session::ChoiceOfBefore(const std::string& path,
                                                    const Inspection& inspection) const {
    const std::optional<ImportPlan> plan =
        ImportMemory(services_.settings).RecallOwn(path, inspection);
    return plan ? std::optional(ImportChoice{*plan, BadRecords::Refuse}) : std::nullopt;
}

// Where the head left no doubt, what does not fit is said above the choice. The memory knows files
// by what the inspection has found, not by what was chosen.
std::optional<ImportChoice> Session::AskAbout(const std::string& path, Inspection inspection,
                                              const ReadFailure& failure,
                                              const std::optional<ImportPlan>& chosen) {
    inspection.certain = false;
    if (inspection.doubt.empty()) {
        inspection.doubt = Explain(failure, state_.texts);
    }
    ImportMemory memory(services_.settings);
    std::optional<ImportChoice> choice =
        services_.imports.Ask(path, inspection, chosen ? chosen : memory.Recall(path, inspection));
    if (choice) {
        memory.Remember(path, inspection, choice->plan);
    }
    return choice;
}

// How the file was read, in the user's language.
std::string Session::TextOfReading(const ImportOutcome& outcome) const {
    std::string text = outcome.inspection.plan.freeList ? state_.texts[Text::FreeListWord]
                                                        : NameOfReading(outcome.inspection);
    const auto add = [&text](std::int64_t count, const std::string& what) {
        if (count > 0) {
            text += "; " + std::to_string(count) + " " + what;
        }
    };
    add(outcome.report.voidHeights, state_.texts[Text::WithoutHeight]);
    add(outcome.report.badRecords, state_.texts[Text::RecordsLeftOut]);
    return text;
}

void Session::SavePoints() {
    SavePointSet(survey_.Points(), "points.txt");
}

void Session::SavePointSet(const PointSet& points, const std::string& proposedName) {
    const FileQuestion question{.mode = "Save",
                                .description = "Files ",
                                .pattern = "*.txt;*.dat",
                                .initialFolder = survey_.Points().sourceFolder,
                                .defaultName = proposedName,
                                .title = state_.texts[Text::ChooseFile],
                                .extension = "txt"};
    try {
        const std::string path = FileDialog(services_.dialogs, question, state_);
        WritePoints(path, points);
        view_->ShowNote(state_.texts[Text::SavedAs] + " " + path);
    } catch (const AppError& error) {
        if (error.number() != kDialogCancelled) {
            services_.log.Write(error.what());
            services_.messages.ShowCritical(
                state_.texts[Text::PointsNotSaved] + "\r\n" + error.what(), "");
        }
    }
}

} // namespace terravo
