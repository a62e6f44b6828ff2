// terravo-batch: contour maps without a window or a display.
#include "app/batch/BatchRun.h"

#include <QGuiApplication>
#include <QHashFunctions>

#include <cstdio>

namespace {

// Standard error carries this program's own sentences; Qt's remarks about a missing session or
// folder mean nothing to a program without windows.
void PassFatalMessagesOnly(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "terravo-batch: %s\n", qPrintable(message));
    }
}

} // namespace

int main(int argc, char** argv) {
    QHashSeed::setDeterministicGlobalSeed(); // else the fonts of a PDF stand in any order
    qInstallMessageHandler(PassFatalMessagesOnly);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const terravo::BatchCall call = terravo::ParseBatchCall(QGuiApplication::arguments());
    if (call.run) {
        return terravo::RunBatch(call.options);
    }
    if (call.exitCode != 0) {
        std::fprintf(stderr, "terravo-batch: %s\n", call.text.c_str());
    } else {
        std::fputs(call.text.c_str(), stdout);
    }
    return call.exitCode;
}
