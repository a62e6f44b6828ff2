// StopSignals on systems with POSIX calls.
#include "util/StopSignals.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>

namespace terravo::StopSignals {
namespace {

std::atomic<int> receivedSignal{0};
std::array<int, 2> pipeEnds{-1, -1};

static_assert(std::atomic<int>::is_always_lock_free, "a handler may not wait for a lock");

extern "C" void NoteSignal(int signal) {
    receivedSignal = signal;
    const char byte = 0;
    // A full pipe is readable already.
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
}

} // namespace

void Install() {
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        pipeEnds = {-1, -1};
    }
    // Without these the system ends the program at the write, and its temporary files stay.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    struct sigaction action {};
    action.sa_handler = NoteSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND); // no restart: waiting for a pipe ends too
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        // What the caller ignores (nohup does) stays ignored.
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

int Received() {
    return receivedSignal;
}

int Descriptor() {
    return pipeEnds[0];
}

} // namespace terravo::StopSignals
