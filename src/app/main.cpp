// terravo: builds the objects, shows the windows, runs.
#include "app/project/ProjectSources.h"
#include "app/project/ProjectStore.h"
#include "app/session/Session.h"
#include "app/session/StartUpRules.h"
#include "app/settings/Configuration.h"
#include "app/settings/SettingsFiles.h"
#include "app/settings/SupportFolder.h"
#include "app/settings/UserFolders.h"
#include "app/windows/CheckWindow.h"
#include "app/windows/GisDialog.h"
#include "app/windows/ImportDialog.h"
#include "app/windows/MeasureDocuments.h"
#include "app/windows/ProgramStyle.h"
#include "app/windows/ProjectKeeper.h"
#include "app/windows/ProjectQuestionBoxes.h"
#include "app/windows/QtServices.h"
#include "app/windows/QtTexts.h"
#include "app/windows/SchemeStyle.h"
#include "app/windows/SheetWindow.h"
#include "app/windows/StatusPanel.h"
#include "app/windows/TerrainWindow.h"
#include "app/windows/frm3D.h"
#include "app/windows/frmOrografix.h"
#include "app/windows/frmProve.h"
#include "plot2d/SurfaceFont.h"
#include "util/StopSignals.h"
#include "util/SystemServices.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHashFunctions>
#include <QSocketNotifier>
#include <QWindow>

#include <algorithm>
#include <cstdio>

namespace {

using namespace terravo;

constexpr const char* kHelp = "Usage: terravo [FILE.qrw | PROJECT.terravo]\n"
                              "Draws contour maps of scattered survey points.\n\n"
                              "  FILE.qrw      point file to start with\n"
                              "  PROJECT.terravo  project to open\n"
                              "  --open FILE   the same for a point file of any extension\n"
                              "  --help        print this help\n"
                              "  --version     print the version\n\n"
                              "terravo-batch draws maps without a window.\n";

// Answers what needs no window; true when that was all.
bool AnswerAtOnce(const std::vector<std::string>& arguments) {
    if (arguments.empty()) {
        return false;
    }
    if (arguments.front() == "--help") {
        std::fputs(kHelp, stdout);
        return true;
    }
    if (arguments.front() == "--version") {
        std::fputs("terravo " TERRAVO_VERSION "\n", stdout);
        return true;
    }
    return false;
}

std::string NamedFile(const std::vector<std::string>& arguments) {
    if (!arguments.empty() && IsProjectFile(arguments.front())) {
        return arguments.front();
    }
    return arguments.size() >= 2 && arguments.front() == "--open" ? arguments[1] : std::string();
}

// Loading handles no events, so a window that is not on the screen before a large file would stay
// black until the end of it.
void WaitUntilPainted(const QWidget& window) {
    constexpr int kPatienceMilliseconds = 500;
    QElapsedTimer waited;
    waited.start();
    while (!window.windowHandle()->isExposed() && waited.elapsed() < kPatienceMilliseconds) {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, kPatienceMilliseconds);
    }
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

// A signal to end closes the window like its user would: positions and recent files are saved.
void CloseOnSignal(frmOrografix& parent) {
    StopSignals::Install();
    if (StopSignals::Descriptor() >= 0) {
        auto* notifier =
            new QSocketNotifier(StopSignals::Descriptor(), QSocketNotifier::Read, &parent);
        QObject::connect(notifier, &QSocketNotifier::activated, &parent, [notifier, &parent] {
            notifier->setEnabled(false);
            parent.Status().CloseAfterWork();
        });
    }
}

int RunWindows(const std::vector<std::string>& arguments) {
    RunState state;
    QtClipboard clipboard;
    QtMessages messages;
    QtFileDialogs dialogs;
    QtProgramEnd programEnd;
    QtSettingsStore settings;
    StderrLog log;
    SystemClock clock;
    UserFolders folders(FindSupportFolder(QApplication::applicationDirPath().toStdString()));
    state.decimalSeparator = QLocale().decimalPoint().front().toLatin1();

    StartUpConfiguration(state, folders);
    const std::unique_ptr<QTranslator> qtTexts = QtTextsIn(LanguageAtNextStart(state.userFolder));
    if (qtTexts) {
        QApplication::installTranslator(qtTexts.get());
    }
    const ColourScheme scheme = ReadColourScheme(state.userFolder);
    QApplication::setPalette(ApplicationPalette(scheme));
    QtImportDialogs imports(state);
    QtGisDialogs gis(state);
    ProjectStore projectFiles;
    ProjectQuestionBoxes projectQuestions(state);
    ProjectServices projects{projectFiles, projectQuestions};
    Session session(state, {messages, clipboard, dialogs, programEnd, log, clock, settings, imports,
                            gis, &projects});
    frmOrografix parent(scheme);
    auto* window = new frmProve(state, session, parent.Status());
    parent.AddMainWindow(window, RestoredBox(settings, "frmProve", QSize(960, 640)));
    parent.SetView3D([&] { return new frm3D(state, messages, scheme); }, settings);
    parent.SetSheet(
        [&] { return new SheetWindow(state, session, parent.Status(), settings, scheme); });
    parent.SetTerrain([&] { return new TerrainWindow(state, session, parent.Status(), scheme); });
    parent.SetCheck([&] { return new CheckWindow(state, session, scheme); });
    parent.SetMeasures(new MeasureDocuments(state, session, parent.Status(), scheme, &parent));
    ProjectKeeper keeper(session, *window, parent, projectQuestions,
                         SubFolder(state.userFolder, "recovery"));
    window->SetCaptions();
    window->SetColours(scheme);
    CloseOnSignal(parent);
    const ParentState parentState = ParentStateFor(clipboard.Text());
    parent.ShowIn(parentState);
    window->show();
    if (parentState != ParentState::Minimised) {
        WaitUntilPainted(parent);
    }
    // A signal may have closed the windows meanwhile, which deletes them: there is nothing to
    // start.
    if (!parent.isVisible()) {
        return 0;
    }
    window->Start(RawCommandLine(arguments), NamedFile(arguments));
    const int exitCode = QApplication::exec();
    // Where the clipboard dies with this program, the caller reads the path of the export here.
    if (!state.lastQrzExportPath.empty()) {
        std::printf("%s\n", state.lastQrzExportPath.c_str());
        std::fflush(stdout);
    }
    return exitCode;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (AnswerAtOnce(arguments)) {
        return 0;
    }
    QHashSeed::setDeterministicGlobalSeed(); // else the fonts of a PDF stand in any order
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Terravo Vortak"));
    QApplication::setApplicationVersion(QStringLiteral(TERRAVO_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("terravo"));
    LoadSurfaceFonts();
    QApplication::setStyle(new ProgramStyle);
    QApplication::setWindowIcon(ProgramIcon());
    return RunWindows(arguments);
}
